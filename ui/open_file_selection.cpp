#include "ui/open_file_selection.h"

namespace {

// Takes the text up to the next null off the front of `rest`.
std::wstring_view TakeText(std::wstring_view& rest) {
    const std::wstring_view text = rest.substr(0, rest.find(L'\0'));
    rest.remove_prefix(text.size() < rest.size() ? text.size() + 1 : text.size());
    return text;
}

}  // namespace

OpenFileSelection ParseOpenFileBuffer(std::span<const wchar_t> buffer) {
    std::wstring_view rest(buffer.data(), buffer.size());
    const std::wstring_view first = TakeText(rest);
    OpenFileSelection selection;
    std::wstring_view name = TakeText(rest);
    if (name.empty()) {
        selection.files.push_back(first);
        return selection;
    }
    selection.folder = first;
    for (; !name.empty(); name = TakeText(rest)) selection.files.push_back(name);
    return selection;
}
