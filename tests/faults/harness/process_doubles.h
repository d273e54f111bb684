// Answers in the system's place: the program's own process, its memory, and the way to switch the machine
// off.
#pragma once

#include "tests/faults/harness/doubles_base.h"

#include <windows.h>

#include <cstdlib>
#include <string>

struct ProcessDoubles : DoublesBase {
    // The program as it is installed

    static HANDLE WINAPI CreateMutexW(LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR /*name*/) {
        const HANDLE mutex = ::CreateMutexW(security, owned, nullptr);  // of nobody else's concern
        ::SetLastError(Current().anotherCopyRuns ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
        return mutex;
    }

    static DWORD WINAPI GetModuleFileNameW(HMODULE /*module*/, LPWSTR path, DWORD size) {
        const std::wstring program = Current().File(L"Talvenor.exe");
        ::lstrcpynW(path, program.c_str(), static_cast<int>(size));
        return static_cast<DWORD>(program.size());
    }

    static BOOL WINAPI SetDefaultDllDirectories(DWORD /*flags*/) { return TRUE; }  // ours stay as they are

    static FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) {
        const FARPROC found = ::GetProcAddress(module, name);
        void* const real = reinterpret_cast<void*>(found);
        return found ? reinterpret_cast<FARPROC>(CurrentHost().WrapFoundFunction(name, real)) : found;
    }

    static void WINAPI ExitProcess(UINT code) { CurrentHost().ProcessEnds(code); }

    // Memory

    static void* __cdecl Allocate(std::size_t size) {
        void* const block = std::malloc(size);
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        if (block) self.m_blocks.insert(block);
        return block;
    }

    static void __cdecl Free(void* block) {
        {
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            self.m_blocks.erase(block);
        }
        std::free(block);
    }

    static void* WINAPI AllocateOnHeap(HANDLE heap, DWORD flags, SIZE_T size) {
        void* const block = ::HeapAlloc(heap, flags, size);
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        if (block) self.m_blocks.insert(block);
        return block;
    }

    static BOOL WINAPI FreeOnHeap(HANDLE heap, DWORD flags, LPVOID block) {
        {
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            self.m_blocks.erase(block);
        }
        return ::HeapFree(heap, flags, block);
    }

    // The four calls that end in the machine going down. None of them is ever passed on.

    static BOOL WINAPI OpenProcessToken(HANDLE /*process*/, DWORD /*access*/, PHANDLE token) {
        Current().Note(Request::Shutdown, "open token");
        *token = reinterpret_cast<HANDLE>(0x7001);
        return TRUE;
    }

    static BOOL WINAPI LookupPrivilegeValueW(LPCWSTR /*system*/, LPCWSTR name, PLUID luid) {
        Current().Note(Request::Shutdown, "look up " + Text(name));
        luid->HighPart = 0;
        luid->LowPart = 19;
        return TRUE;
    }

    // As the system: a success that adjusts nothing leaves an error.
    static BOOL WINAPI AdjustTokenPrivileges(HANDLE /*token*/, BOOL /*all*/, PTOKEN_PRIVILEGES privileges,
                                             DWORD /*size*/, PTOKEN_PRIVILEGES /*previous*/,
                                             PDWORD /*needed*/) {
        const LUID_AND_ATTRIBUTES& entry = privileges->Privileges[0];
        Current().Note(Request::Shutdown, entry.Attributes == SE_PRIVILEGE_ENABLED ? "enable" : "disable");
        ::SetLastError(entry.Luid.LowPart == 19 ? ERROR_SUCCESS : ERROR_NOT_ALL_ASSIGNED);
        return TRUE;
    }

    static BOOL WINAPI InitiateSystemShutdownW(LPWSTR, LPWSTR, DWORD /*seconds*/, BOOL force, BOOL reboot) {
        Current().Note(Request::Shutdown, force || reboot ? "request of another kind" : "request");
        return TRUE;
    }
};
