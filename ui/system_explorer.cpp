#include "ui/system_explorer.h"

#include "base/program_folder.h"

#include <windows.h>
#include <shlwapi.h>

namespace {

constexpr wchar_t kName[] = L"explorer.exe";

using GetSystemFolder = UINT(WINAPI*)(LPWSTR, UINT);

// Empty when there is none.
std::wstring InSystemFolder(GetSystemFolder getFolder) {
    wchar_t path[MAX_PATH] = {};
    if (getFolder(path, MAX_PATH) == 0 || !::PathAppendW(path, kName)) return {};
    return path;
}

bool IsSame(const std::wstring& one, const std::wstring& other) {
    return ::CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_EQUAL;
}

// Wine has a second one, in its system folder.
bool IsSystems(const std::wstring& path) {
    return IsSame(path, InSystemFolder(&::GetSystemWindowsDirectoryW)) ||
           IsSame(path, InSystemFolder(&::GetSystemDirectoryW));
}

// `folder` null: on the search path. Empty when there is none.
std::wstring FoundIn(const wchar_t* folder) {
    wchar_t path[MAX_PATH] = {};
    const DWORD length = ::SearchPathW(folder, kName, nullptr, MAX_PATH, path, nullptr);
    return length < MAX_PATH ? path : L"";
}

bool LeadsToSystems() {
    // The two folders are asked on their own: whether the search path has them, and where, is a setting.
    const std::wstring besideProgram = FileInProgramFolder(kName);
    if (::PathFileExistsW(besideProgram.c_str()) && !IsSystems(besideProgram)) return false;
    const std::wstring current = FoundIn(L".");
    if (!current.empty() && !IsSystems(current)) return false;
    return IsSystems(FoundIn(nullptr));
}

}  // namespace

std::wstring SystemExplorer() {
    const std::wstring own = InSystemFolder(&::GetSystemWindowsDirectoryW);
    return own.empty() || LeadsToSystems() ? kName : own;
}
