// Folders with everything in them, at paths of any length: the standard library asks the C run-time of
// Windows, which takes the "?" in the prefix of a long path for a wildcard and finds nothing.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"

namespace driver {

// A full path as the system takes it at any length.
inline std::wstring OfAnyLength(const std::wstring& path) {
    return L"\\\\?\\" + path;
}

inline bool IsFolder(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(OfAnyLength(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Makes a folder and those above it. Throws Failure when it cannot.
inline void MakeFolders(const std::wstring& path) {
    if (IsFolder(path)) return;
    const std::wstring above = path.substr(0, path.find_last_of(L'\\'));
    constexpr std::size_t kDrive = 2;
    if (above.size() > kDrive) MakeFolders(above);
    if (!::CreateDirectoryW(OfAnyLength(path).c_str(), nullptr)) {
        const DWORD error = ::GetLastError();
        FailCall("CreateDirectoryW(" + ToUtf8(path) + ")", error);
    }
}

// The contents of a folder, by name.
inline std::vector<std::wstring> NamesIn(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found = {};
    const HANDLE search = ::FindFirstFileW(OfAnyLength(folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") names.push_back(name);
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
    return names;
}

// Removes a file or a folder with everything in it, read-only files too. True when it is gone.
[[nodiscard]] inline bool RemoveTree(const std::wstring& path) {
    const std::wstring longPath = OfAnyLength(path);
    const DWORD attributes = ::GetFileAttributesW(longPath.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return true;
    if (attributes & FILE_ATTRIBUTE_READONLY) ::SetFileAttributesW(longPath.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (!IsFolder(path)) return ::DeleteFileW(longPath.c_str()) != FALSE;
    bool removed = true;
    for (const std::wstring& name : NamesIn(path)) removed = RemoveTree(path + L'\\' + name) && removed;
    return ::RemoveDirectoryW(longPath.c_str()) && removed;
}

}  // namespace driver
