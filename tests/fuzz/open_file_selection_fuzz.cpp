// The open dialog's buffer: names written into one and read back, and buffers of anything.
#include "tests/fuzz/fuzz_targets.h"

#include "tests/fuzz/fuzz_input.h"
#include "ui/open_file_selection.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

// A dialog that writes `texts`: one path, or a folder and names. Behind them, what was in the buffer before.
void RequireReadBack(const std::vector<std::wstring>& texts) {
    std::wstring buffer;
    for (const std::wstring& text : texts) buffer += text + L'\0';
    const std::size_t terminated = buffer.size();
    buffer += L'\0';
    buffer += L"from before";

    const bool single = texts.size() == 1;
    const std::wstring folder = single ? L"" : texts[0];
    const std::vector<std::wstring> files(texts.begin() + (single ? 0 : 1), texts.end());
    // All of it; without what follows; without the second null; without any.
    for (const std::size_t size : {buffer.size(), terminated + 1, terminated, terminated - 1}) {
        const UnterminatedText exact(std::wstring_view(buffer).substr(0, size));
        const OpenFileSelection selection = ParseOpenFileBuffer(exact.View());
        Require(selection.folder == folder, "another folder");
        Require(std::ranges::equal(selection.files, files), "other files");
    }
}

// What was read must be the front of the buffer, and what follows it an empty name or the end.
void RequireFrontOf(std::wstring_view buffer) {
    const OpenFileSelection selection = ParseOpenFileBuffer(buffer);
    Require(!selection.files.empty(), "no file at all");
    std::wstring read;
    const bool single = selection.files.size() == 1 && selection.files[0].data() == buffer.data();
    if (!single) (read += selection.folder) += L'\0';
    for (const std::wstring_view file : selection.files) {
        Require(single || !file.empty(), "an empty name");
        Require(file.find(L'\0') == std::wstring_view::npos, "a null in a name");
        (read += file) += L'\0';
    }
    Require(selection.folder.find(L'\0') == std::wstring_view::npos, "a null in the folder");
    Require(!single || selection.folder.empty(), "a folder of one file");
    // The last null may be missing from the buffer.
    if (read.size() > buffer.size()) read.pop_back();
    Require(buffer.starts_with(read), "what was read is not in the buffer");
    Require(buffer.size() == read.size() || buffer[read.size()] == L'\0', "names were left out");
}

}  // namespace

// Lines: names. The same once more as a buffer in which "|", which no name has, stands for a null.
void FuzzOpenFileSelection(std::string_view input) {
    std::vector<std::wstring> texts;
    std::wstring buffer;
    for (FuzzInput values(input); !values.AtEnd();) {
        std::wstring text = values.Text();
        buffer += text;
        std::erase(text, L'\0');
        if (!text.empty()) texts.push_back(text);
    }
    if (!texts.empty()) RequireReadBack(texts);
    std::ranges::replace(buffer, L'|', L'\0');
    RequireFrontOf(UnterminatedText(buffer).View());
}
