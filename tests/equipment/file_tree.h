// Folders with everything in them, at paths of any length: the standard library asks the C run-time of
// Windows, which takes the "?" in the prefix of a long path for a wildcard and finds nothing.
#pragma once
#include <string>
#include <vector>

namespace driver {

// A full path as the system takes it at any length.
std::wstring OfAnyLength(const std::wstring& path);

// Makes a folder and those above it. Throws Failure when it cannot.
void MakeFolders(const std::wstring& path);

// The contents of a folder, by name.
std::vector<std::wstring> NamesIn(const std::wstring& folder);

// Removes a file or a folder with everything in it, read-only files too. True when it is gone.
[[nodiscard]] bool RemoveTree(const std::wstring& path);

}  // namespace driver
