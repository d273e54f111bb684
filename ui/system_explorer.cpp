#include "ui/system_explorer.h"

#include "base/program_folder.h"

#include <windows.h>
#include <shlwapi.h>

namespace {

constexpr wchar_t kName[] = L"explorer.exe";

using GetSystemFolder = UINT(WINAPI*)(LPWSTR, UINT);

struct Path {
    wchar_t text[MAX_PATH] = {};  // empty: there is none
};

Path InSystemFolder(GetSystemFolder getFolder) {
    Path path;
    if (getFolder(path.text, MAX_PATH) == 0 || !::PathAppendW(path.text, kName)) path.text[0] = L'\0';
    return path;
}

bool IsSame(const wchar_t* one, const Path& other) {
    return ::CompareStringOrdinal(one, -1, other.text, -1, TRUE) == CSTR_EQUAL;
}

// Wine has a second one, in its system folder.
bool IsSystems(const wchar_t* path) {
    return IsSame(path, InSystemFolder(&::GetSystemWindowsDirectoryW)) ||
           IsSame(path, InSystemFolder(&::GetSystemDirectoryW));
}

// `folder` null: on the search path.
Path FoundIn(const wchar_t* folder) {
    Path path;
    if (::SearchPathW(folder, kName, nullptr, MAX_PATH, path.text, nullptr) >= MAX_PATH) {
        path.text[0] = L'\0';
    }
    return path;
}

bool LeadsToSystems() {
    // The two folders are asked on their own: whether the search path has them, and where, is a setting.
    const std::wstring besideProgram = FileInProgramFolder(kName);
    if (::PathFileExistsW(besideProgram.c_str()) && !IsSystems(besideProgram.c_str())) return false;
    const Path current = FoundIn(L".");
    if (current.text[0] != L'\0' && !IsSystems(current.text)) return false;
    return IsSystems(FoundIn(nullptr).text);
}

}  // namespace

std::wstring SystemExplorer() {
    const Path own = InSystemFolder(&::GetSystemWindowsDirectoryW);
    return own.text[0] == L'\0' || LeadsToSystems() ? kName : own.text;
}
