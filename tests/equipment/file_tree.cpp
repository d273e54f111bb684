#include "tests/equipment/file_tree.h"

#include <windows.h>

#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"

namespace driver {
namespace {

DWORD Attributes(const std::wstring& path) {
    return ::GetFileAttributesW(OfAnyLength(path).c_str());
}

bool IsFolder(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

std::wstring OfAnyLength(const std::wstring& path) {
    return L"\\\\?\\" + path;
}

void MakeFolders(const std::wstring& path) {
    if (IsFolder(Attributes(path))) return;
    const std::wstring above = path.substr(0, path.find_last_of(L'\\'));
    constexpr std::size_t kDrive = 2;
    if (above.size() > kDrive) MakeFolders(above);
    if (!::CreateDirectoryW(OfAnyLength(path).c_str(), nullptr)) {
        const DWORD error = ::GetLastError();
        FailCall("CreateDirectoryW(" + ToUtf8(path) + ")", error);
    }
}

std::vector<std::wstring> NamesIn(const std::wstring& folder) {
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

bool RemoveTree(const std::wstring& path) {
    const DWORD attributes = Attributes(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) return true;
    if (attributes & FILE_ATTRIBUTE_READONLY)
        ::SetFileAttributesW(OfAnyLength(path).c_str(), FILE_ATTRIBUTE_NORMAL);
    if (!IsFolder(attributes)) return ::DeleteFileW(OfAnyLength(path).c_str()) != FALSE;
    bool removed = true;
    for (const std::wstring& name : NamesIn(path)) removed = RemoveTree(path + L'\\' + name) && removed;
    return ::RemoveDirectoryW(OfAnyLength(path).c_str()) && removed;
}

}  // namespace driver
