#include "tests/equipment/remote_memory.h"

#include <utility>

#include "tests/equipment/failure.h"

namespace driver {

RemoteMemory::RemoteMemory(HWND window, std::size_t bytes) {
    DWORD processId = 0;
    if (!::GetWindowThreadProcessId(window, &processId))
        FailCall("GetWindowThreadProcessId", ::GetLastError());
    constexpr DWORD kAccess = PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE;
    m_process = UniqueHandle(::OpenProcess(kAccess, FALSE, processId));
    if (!m_process) FailCall("OpenProcess", ::GetLastError());
    m_address = ::VirtualAllocEx(m_process.Get(), nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (!m_address) FailCall("VirtualAllocEx", ::GetLastError());
}

RemoteMemory::~RemoteMemory() {
    // May fail when the process has ended meanwhile; then there is nothing left to free.
    if (m_address) ::VirtualFreeEx(m_process.Get(), m_address, 0, MEM_RELEASE);
}

void RemoteMemory::Write(std::size_t offset, const void* source, std::size_t bytes) const {
    if (!::WriteProcessMemory(m_process.Get(), At(offset), source, bytes, nullptr))
        FailCall("WriteProcessMemory", ::GetLastError());
}

void RemoteMemory::Read(std::size_t offset, void* target, std::size_t bytes) const {
    if (!::ReadProcessMemory(m_process.Get(), At(offset), target, bytes, nullptr))
        FailCall("ReadProcessMemory", ::GetLastError());
}

void* RemoteMemory::GiveAway() noexcept {
    return std::exchange(m_address, nullptr);
}

}  // namespace driver
