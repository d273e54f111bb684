// Memory inside the process that owns a window. Messages with pointers of a control (the list's) or with a
// memory handle (dropped files) are not carried over by the system: what they point to must lie over there.
#pragma once
#include <windows.h>

#include <cstddef>

#include "tests/equipment/handle.h"

namespace driver {

class RemoteMemory {
public:
    // Throws Failure, as every operation does, when the other process does not allow it.
    RemoteMemory(HWND window, std::size_t bytes);
    ~RemoteMemory();
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    [[nodiscard]] void* Address() const noexcept { return m_address; }
    void Write(std::size_t offset, const void* source, std::size_t bytes) const;
    void Read(std::size_t offset, void* target, std::size_t bytes) const;

    // Leaves the memory to the other process for the rest of its life and returns its address.
    void* GiveAway() noexcept;

private:
    [[nodiscard]] BYTE* At(std::size_t offset) const noexcept {
        return static_cast<BYTE*>(m_address) + offset;
    }

    UniqueHandle m_process;
    void* m_address = nullptr;
};

}  // namespace driver
