// Memory inside the process that owns a window. Messages with pointers of a control (the list's) or with a
// memory handle (dropped files) are not carried over by the system: what they point to must lie over there.
#pragma once
#include <windows.h>

#include <cstddef>
#include <utility>

#include "base/unique_resource.h"
#include "tests/equipment/failure.h"

namespace driver {

class RemoteMemory {
public:
    // Throws Failure, as every operation does, when the other process does not allow it.
    RemoteMemory(HWND window, std::size_t bytes) {
        DWORD processId = 0;
        if (!::GetWindowThreadProcessId(window, &processId))
            FailCall("GetWindowThreadProcessId", ::GetLastError());
        constexpr DWORD kAccess = PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE;
        m_process = UniqueHandle(::OpenProcess(kAccess, FALSE, processId));
        if (!m_process) FailCall("OpenProcess", ::GetLastError());
        m_address =
            ::VirtualAllocEx(m_process.Get(), nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
        if (!m_address) FailCall("VirtualAllocEx", ::GetLastError());
    }
    ~RemoteMemory() {
        // May fail when the process has ended meanwhile; then there is nothing left to free.
        if (m_address) ::VirtualFreeEx(m_process.Get(), m_address, 0, MEM_RELEASE);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    [[nodiscard]] void* Address() const noexcept { return m_address; }
    void Write(const void* source, std::size_t bytes) const {
        if (!::WriteProcessMemory(m_process.Get(), m_address, source, bytes, nullptr))
            FailCall("WriteProcessMemory", ::GetLastError());
    }
    void Read(std::size_t offset, void* target, std::size_t bytes) const {
        if (!::ReadProcessMemory(m_process.Get(), static_cast<BYTE*>(m_address) + offset, target, bytes,
                                 nullptr))
            FailCall("ReadProcessMemory", ::GetLastError());
    }

    // Leaves the memory to the other process for the rest of its life and returns its address.
    void* GiveAway() noexcept { return std::exchange(m_address, nullptr); }

private:
    UniqueHandle m_process;
    void* m_address = nullptr;
};

}  // namespace driver
