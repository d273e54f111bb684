#include "tests/window/scripted_version.h"

#include "tests/support/utf8.h"

#include <algorithm>
#include <string_view>

namespace {

// By way of void*: the two function types have nothing in common.
template <class Function>
FARPROC AsProcedure(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

}  // namespace

ScriptedVersion::ScriptedVersion() {
    s_current = this;
}

HMODULE WINAPI ScriptedVersion::Load(LPCWSTR path) {
    s_current->calls.Add("LoadLibraryW " + Utf8(path));
    if (s_current->failing == "LoadLibraryW") return nullptr;
    return s_current->m_library = s_current->m_load.Original<decltype(::LoadLibraryW)>()(path);
}

BOOL WINAPI ScriptedVersion::Unload(HMODULE library) {
    if (library == s_current->m_library)
        s_current->calls.Add(library ? "FreeLibrary" : "FreeLibrary of none");
    return s_current->m_unload.Original<decltype(::FreeLibrary)>()(library);
}

FARPROC WINAPI ScriptedVersion::Find(HMODULE library, LPCSTR name) {
    if (s_current->failing == "GetProcAddress " + std::string(name)) return nullptr;
    const std::string_view wanted = name;
    if (wanted == "GetFileVersionInfoSizeW") return AsProcedure(&GetSize);
    if (wanted == "GetFileVersionInfoW") return AsProcedure(&GetInfo);
    if (wanted == "VerQueryValueW") return AsProcedure(&QueryValue);
    return s_current->m_find.Original<decltype(::GetProcAddress)>()(library, name);
}

LPVOID WINAPI ScriptedVersion::Allocate(HANDLE heap, DWORD flags, SIZE_T size) {
    const auto allocate = s_current->m_allocate.Original<decltype(::HeapAlloc)>();
    if (size != s_current->size) return allocate(heap, flags, size);
    s_current->calls.Add("HeapAlloc " + std::to_string(size) + ((flags & HEAP_ZERO_MEMORY) ? " zeroed" : "") +
                         (heap == ::GetProcessHeap() ? "" : " of another heap"));
    s_current->m_block = s_current->failing == "HeapAlloc" ? nullptr : allocate(heap, flags, size);
    return s_current->m_block;
}

BOOL WINAPI ScriptedVersion::Free(HANDLE heap, DWORD flags, LPVOID block) {
    if (block && block == s_current->m_block) {
        s_current->calls.Add(flags == 0 ? "HeapFree" : "HeapFree with flags");
        s_current->m_block = nullptr;
    }
    return s_current->m_free.Original<decltype(::HeapFree)>()(heap, flags, block);
}

DWORD WINAPI ScriptedVersion::ModuleFileName(HMODULE /*module*/, LPWSTR path, DWORD size) {
    s_current->calls.Add("GetModuleFileNameW " + std::to_string(size));
    ::lstrcpynW(path, L"C:\\Outils\\Talvenor.exe", static_cast<int>(size));
    return 22;
}

DWORD WINAPI ScriptedVersion::GetSize(LPCWSTR path, LPDWORD /*handle*/) {
    s_current->calls.Add("GetFileVersionInfoSizeW " + Utf8(path));
    return s_current->failing == "GetFileVersionInfoSizeW" ? 0 : s_current->size;
}

BOOL WINAPI ScriptedVersion::GetInfo(LPCWSTR path, DWORD handle, DWORD size, LPVOID block) {
    s_current->calls.Add("GetFileVersionInfoW " + Utf8(path) + ' ' + std::to_string(size) +
                         (handle == 0 ? "" : " with a handle"));
    if (!block) return FALSE;  // reading nothing into a block succeeds
    // The block is zeroed when it comes here.
    const auto* const bytes = static_cast<const char*>(block);
    if (!std::all_of(bytes, bytes + size, [](char byte) { return byte == 0; })) {
        s_current->calls.Add("not zeroed");
    }
    return s_current->failing != "GetFileVersionInfoW";
}

BOOL WINAPI ScriptedVersion::QueryValue(LPCVOID block, LPCWSTR path, LPVOID* value, PUINT length) {
    s_current->calls.Add("VerQueryValueW " + Utf8(path) +
                         (block == s_current->m_block ? "" : " of another block"));
    if (!block || s_current->failing == "VerQueryValueW") return FALSE;
    *value = &s_current->fixed;
    *length = s_current->fixedSize;
    return TRUE;
}
