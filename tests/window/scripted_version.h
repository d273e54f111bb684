// A version resource of the test's own, behind the three calls that the program looks up in version.dll.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

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

    ScriptedVersion() { s_current = this; }
    ScriptedVersion(const ScriptedVersion&) = delete;
    ScriptedVersion& operator=(const ScriptedVersion&) = delete;

private:
    bool Fails(std::string_view name) const { return failing == name; }

    static DWORD WINAPI GetSize(LPCWSTR path, LPDWORD /*handle*/) {
        s_current->calls.Add("GetFileVersionInfoSizeW " + Utf8(path));
        return s_current->Fails("GetFileVersionInfoSizeW") ? 0 : s_current->size;
    }
    static BOOL WINAPI GetInfo(LPCWSTR path, DWORD handle, DWORD size, LPVOID block) {
        s_current->calls.Add("GetFileVersionInfoW " + Utf8(path) + ' ' + std::to_string(size) +
                             (handle == 0 ? "" : " with a handle"));
        if (!block) return FALSE;  // reading nothing into a block succeeds
        const auto* const bytes = static_cast<const char*>(block);
        if (!std::all_of(bytes, bytes + size, [](char byte) { return byte == 0; })) {
            s_current->calls.Add("not zeroed");
        }
        return !s_current->Fails("GetFileVersionInfoW");
    }
    static BOOL WINAPI QueryValue(LPCVOID block, LPCWSTR path, LPVOID* value, PUINT length) {
        s_current->calls.Add("VerQueryValueW " + Utf8(path) +
                             (block == s_current->m_block ? "" : " of another block"));
        if (!block || s_current->Fails("VerQueryValueW")) return FALSE;
        *value = &s_current->fixed;
        *length = s_current->fixedSize;
        return TRUE;
    }
    // By way of void*: the two function types have nothing in common.
    template <class Function>
    static FARPROC AsProcedure(Function* function) {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
    }

    static inline ScriptedVersion* s_current = nullptr;

    LPVOID m_block = nullptr;     // the product's
    HMODULE m_library = nullptr;  // the product's
    Replaced m_load = REPLACE_IMPORT(LoadLibraryW, [this](auto original, LPCWSTR path) {
        calls.Add("LoadLibraryW " + Utf8(path));
        return m_library = Fails("LoadLibraryW") ? nullptr : original(path);
    });
    Replaced m_unload = REPLACE_IMPORT(FreeLibrary, [this](auto original, HMODULE library) {
        if (library == m_library) calls.Add(library ? "FreeLibrary" : "FreeLibrary of none");
        return original(library);
    });
    Replaced m_find = REPLACE_IMPORT(GetProcAddress, [this](auto original, HMODULE library, LPCSTR name) {
        const std::string_view wanted = name;
        if (Fails("GetProcAddress " + std::string(wanted))) return FARPROC{nullptr};
        if (wanted == "GetFileVersionInfoSizeW") return AsProcedure(&GetSize);
        if (wanted == "GetFileVersionInfoW") return AsProcedure(&GetInfo);
        if (wanted == "VerQueryValueW") return AsProcedure(&QueryValue);
        return original(library, name);
    });
    Replaced m_allocate =
        REPLACE_IMPORT(HeapAlloc, [this](auto original, HANDLE heap, DWORD flags, SIZE_T bytes) {
            if (bytes != size) return original(heap, flags, bytes);
            calls.Add("HeapAlloc " + std::to_string(bytes) + ((flags & HEAP_ZERO_MEMORY) ? " zeroed" : "") +
                      (heap == ::GetProcessHeap() ? "" : " of another heap"));
            return m_block = Fails("HeapAlloc") ? nullptr : original(heap, flags, bytes);
        });
    Replaced m_free = REPLACE_IMPORT(HeapFree, [this](auto original, HANDLE heap, DWORD flags, LPVOID block) {
        if (block && block == m_block) {
            calls.Add(flags == 0 ? "HeapFree" : "HeapFree with flags");
            m_block = nullptr;
        }
        return original(heap, flags, block);
    });
    Replaced m_moduleFileName =
        REPLACE_IMPORT(GetModuleFileNameW, [this](HMODULE, LPWSTR path, DWORD length) -> DWORD {
            calls.Add("GetModuleFileNameW " + std::to_string(length));
            ::lstrcpynW(path, L"C:\\Outils\\Talvenor.exe", static_cast<int>(length));
            return 22;
        });
};
