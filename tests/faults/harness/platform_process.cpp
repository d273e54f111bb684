// Answers in the system's place: the program's own process, its memory, and the way to switch the machine
// off.
#include "tests/faults/harness/doubles.h"

#include <cstdlib>

void Platform::AddProcess(Doubles& doubles) {
    // The program as it is installed

    doubles["CreateMutexW"] =
        Answer<decltype(::CreateMutexW)>([](LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR) {
            const HANDLE mutex = ::CreateMutexW(security, owned, nullptr);  // of nobody else's concern
            ::SetLastError(Current().anotherCopyRuns ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
            return mutex;
        });
    doubles["GetModuleFileNameW"] =
        Answer<decltype(::GetModuleFileNameW)>([](HMODULE, LPWSTR path, DWORD size) {
            const std::wstring program = Current().File(L"Talvenor.exe");
            ::lstrcpynW(path, program.c_str(), static_cast<int>(size));
            return static_cast<DWORD>(program.size());
        });
    // Ours stay as they are.
    doubles["SetDefaultDllDirectories"] =
        Answer<decltype(::SetDefaultDllDirectories)>([](DWORD) { return TRUE; });
    doubles["GetProcAddress"] = Answer<decltype(::GetProcAddress)>([](HMODULE module, LPCSTR name) {
        const FARPROC found = ::GetProcAddress(module, name);
        void* const real = reinterpret_cast<void*>(found);
        return found ? reinterpret_cast<FARPROC>(CurrentHost().WrapFoundFunction(name, real)) : found;
    });
    doubles["ExitProcess"] = Answer<void WINAPI(UINT)>([](UINT code) { CurrentHost().ProcessEnds(code); });

    // Memory

    doubles["malloc"] = Answer<decltype(::malloc)>([](std::size_t size) {
        void* const block = std::malloc(size);
        if (block) Current().m_blocks.Add(block);
        return block;
    });
    doubles["free"] = Answer<decltype(::free)>([](void* block) {
        Current().m_blocks.Remove(block);
        std::free(block);
    });
    doubles["HeapAlloc"] = Answer<decltype(::HeapAlloc)>([](HANDLE heap, DWORD flags, SIZE_T size) {
        void* const block = ::HeapAlloc(heap, flags, size);
        if (block) Current().m_blocks.Add(block);
        return block;
    });
    doubles["HeapFree"] = Answer<decltype(::HeapFree)>([](HANDLE heap, DWORD flags, LPVOID block) {
        Current().m_blocks.Remove(block);
        return ::HeapFree(heap, flags, block);
    });

    // The four calls that end in the machine going down. None of them is ever passed on.

    doubles["OpenProcessToken"] = Answer<decltype(::OpenProcessToken)>([](HANDLE, DWORD, PHANDLE token) {
        Current().Note("shutdowns", "open token");
        *token = reinterpret_cast<HANDLE>(0x7001);
        return TRUE;
    });
    doubles["LookupPrivilegeValueW"] =
        Answer<decltype(::LookupPrivilegeValueW)>([](LPCWSTR, LPCWSTR name, PLUID luid) {
            Current().Note("shutdowns", "look up " + TextOf(name));
            luid->HighPart = 0;
            luid->LowPart = 19;
            return TRUE;
        });
    // As the system: a success that adjusts nothing leaves an error.
    doubles["AdjustTokenPrivileges"] = Answer<decltype(::AdjustTokenPrivileges)>(
        [](HANDLE, BOOL, PTOKEN_PRIVILEGES privileges, DWORD, PTOKEN_PRIVILEGES, PDWORD) {
            const LUID_AND_ATTRIBUTES& entry = privileges->Privileges[0];
            Current().Note("shutdowns", entry.Attributes == SE_PRIVILEGE_ENABLED ? "enable" : "disable");
            ::SetLastError(entry.Luid.LowPart == 19 ? ERROR_SUCCESS : ERROR_NOT_ALL_ASSIGNED);
            return TRUE;
        });
    doubles["InitiateSystemShutdownW"] =
        Answer<decltype(::InitiateSystemShutdownW)>([](LPWSTR, LPWSTR, DWORD, BOOL force, BOOL reboot) {
            Current().Note("shutdowns", force || reboot ? "request of another kind" : "request");
            return TRUE;
        });
}
