// Answers in the system's place: the program's own process, its memory, and the way to switch the machine
// off.
#include "tests/faults/harness/platform.h"
#include "tests/faults/harness/program_host.h"

void Platform::AnswerProcess() {
    // The program as it is installed

    m_answers.push_back(
        REPLACE_IMPORT(CreateMutexW, [this](LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR) {
            const HANDLE mutex = ::CreateMutexW(security, owned, nullptr);  // of nobody else's concern
            ::SetLastError(anotherCopyRuns ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
            return mutex;
        }));
    m_answers.push_back(REPLACE_IMPORT(GetModuleFileNameW, [this](HMODULE, LPWSTR path, DWORD size) {
        const std::wstring program = File(L"Talvenor.exe");
        ::lstrcpynW(path, program.c_str(), static_cast<int>(size));
        return static_cast<DWORD>(program.size());
    }));
    // Ours stay as they are.
    m_answers.push_back(REPLACE_IMPORT(SetDefaultDllDirectories, [](DWORD) { return TRUE; }));
    m_answers.push_back(REPLACE_IMPORT(GetProcAddress, [](HMODULE module, LPCSTR name) {
        const FARPROC found = ::GetProcAddress(module, name);
        void* const real = reinterpret_cast<void*>(found);
        return found ? reinterpret_cast<FARPROC>(CurrentHost().Wrap(name, real)) : found;
    }));
    m_answers.push_back(
        Replace<void WINAPI(UINT)>("ExitProcess", [](UINT code) { CurrentHost().ProcessEnds(code); }));

    // Memory

    m_answers.push_back(REPLACE_IMPORT(malloc, HandsOut(m_blocks)));
    m_answers.push_back(REPLACE_IMPORT(free, TakesBack(m_blocks)));
    m_answers.push_back(REPLACE_IMPORT(HeapAlloc, HandsOut(m_blocks)));
    m_answers.push_back(REPLACE_IMPORT(HeapFree, TakesBack(m_blocks)));

    // The four calls that end in the machine going down. None of them is ever passed on.

    m_answers.push_back(REPLACE_IMPORT(OpenProcessToken, [this](HANDLE, DWORD, PHANDLE token) {
        Note("shutdowns", "open token");
        *token = reinterpret_cast<HANDLE>(0x7001);
        return TRUE;
    }));
    m_answers.push_back(REPLACE_IMPORT(LookupPrivilegeValueW, [this](LPCWSTR, LPCWSTR name, PLUID luid) {
        Note("shutdowns", "look up " + TextOf(name));
        luid->HighPart = 0;
        luid->LowPart = 19;
        return TRUE;
    }));
    // As the system: a success that adjusts nothing leaves an error.
    m_answers.push_back(
        REPLACE_IMPORT(AdjustTokenPrivileges,
                       [this](HANDLE, BOOL, PTOKEN_PRIVILEGES privileges, DWORD, PTOKEN_PRIVILEGES, PDWORD) {
                           const LUID_AND_ATTRIBUTES& entry = privileges->Privileges[0];
                           Note("shutdowns", entry.Attributes == SE_PRIVILEGE_ENABLED ? "enable" : "disable");
                           ::SetLastError(entry.Luid.LowPart == 19 ? ERROR_SUCCESS : ERROR_NOT_ALL_ASSIGNED);
                           return TRUE;
                       }));
    m_answers.push_back(
        REPLACE_IMPORT(InitiateSystemShutdownW, [this](LPWSTR, LPWSTR, DWORD, BOOL force, BOOL reboot) {
            Note("shutdowns", force || reboot ? "request of another kind" : "request");
            return TRUE;
        }));
}
