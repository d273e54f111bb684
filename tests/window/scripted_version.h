// A version resource of the test's own, behind the three calls that the program looks up in version.dll.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <string>

// While one lives, the functions of version.dll are these: they answer with `fixed`, or fail where `failing`
// says. Records, in `calls`:
//   LoadLibraryW C:\windows\system32\version.dll
//   GetFileVersionInfoSizeW C:\...\Talvenor.exe
//   HeapAlloc 640 zeroed, HeapFree        (of a block of the resource's size)
//   GetFileVersionInfoW C:\...\Talvenor.exe 640
//   VerQueryValueW \                      (of that block)
//   FreeLibrary                           (of the library that was loaded)
class ScriptedVersion {
public:
    // By whatever the product calls: a name here makes that call fail, or that function absent.
    std::string failing;
    // The size of the resource, and what the query says of the fixed part.
    DWORD size = 640;
    UINT fixedSize = sizeof(VS_FIXEDFILEINFO);
    VS_FIXEDFILEINFO fixed = {};
    CallRecord calls;

    ScriptedVersion();
    ScriptedVersion(const ScriptedVersion&) = delete;
    ScriptedVersion& operator=(const ScriptedVersion&) = delete;

private:
    static HMODULE WINAPI Load(LPCWSTR path);
    static BOOL WINAPI Unload(HMODULE library);
    static FARPROC WINAPI Find(HMODULE library, LPCSTR name);
    static LPVOID WINAPI Allocate(HANDLE heap, DWORD flags, SIZE_T size);
    static BOOL WINAPI Free(HANDLE heap, DWORD flags, LPVOID block);
    static DWORD WINAPI ModuleFileName(HMODULE module, LPWSTR path, DWORD size);
    static DWORD WINAPI GetSize(LPCWSTR path, LPDWORD handle);
    static BOOL WINAPI GetInfo(LPCWSTR path, DWORD handle, DWORD size, LPVOID block);
    static BOOL WINAPI QueryValue(LPCVOID block, LPCWSTR path, LPVOID* value, PUINT length);

    static inline ScriptedVersion* s_current = nullptr;

    LPVOID m_block = nullptr;     // the product's
    HMODULE m_library = nullptr;  // the product's
    ReplacedImport m_load{"LoadLibraryW", &Load};
    ReplacedImport m_unload{"FreeLibrary", &Unload};
    ReplacedImport m_find{"GetProcAddress", &Find};
    ReplacedImport m_allocate{"HeapAlloc", &Allocate};
    ReplacedImport m_free{"HeapFree", &Free};
    ReplacedImport m_moduleFileName{"GetModuleFileNameW", &ModuleFileName};
};
