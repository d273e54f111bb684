// Owns a kernel handle of the kinds whose empty value is null: processes, threads, jobs, events.
#pragma once
#include <windows.h>

#include <utility>

namespace driver {

class UniqueHandle {
public:
    UniqueHandle() = default;
    explicit UniqueHandle(HANDLE handle) noexcept : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~UniqueHandle() {
        if (m_handle) ::CloseHandle(m_handle);
    }

    [[nodiscard]] HANDLE Get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != nullptr; }

private:
    HANDLE m_handle = nullptr;
};

}  // namespace driver
