// The open dialog's buffer against what was read from it, put together again.
#include "tests/fuzz/fuzz_targets.h"

#include "ui/open_file_selection.h"

// Lines: the texts of the buffer, which have nulls between them.
void FuzzOpenFileSelection(FuzzInput input) {
    std::wstring text = input.Text();
    while (!input.AtEnd()) (text += L'\0') += input.Text();
    const UnterminatedText unterminated(text);
    const std::wstring_view buffer = unterminated.View();

    // It must be the front of the buffer, and what follows it an empty name or the end.
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
