// What the user chose in the open dialog. Rules only: the joining of folder and name is the caller's.
#pragma once

#include <span>
#include <string_view>
#include <vector>

struct OpenFileSelection {
    std::wstring_view folder;              // empty when one file was chosen
    std::vector<std::wstring_view> files;  // names in `folder`, or the one full path
};

// Reads the buffer that the multi-select open dialog filled: one full path, or a folder and the names in it,
// each ended by a null and the last by two. The views point into `buffer`. A buffer without the final nulls
// ends where it ends.
[[nodiscard]] OpenFileSelection ParseOpenFileBuffer(std::span<const wchar_t> buffer);
