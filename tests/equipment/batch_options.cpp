#include "tests/equipment/batch_options.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <map>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/text.h"

const char kBatchUsage[] =
    "batch_driver Talvenor.exe [options] PDF... | @LIST\n"
    "  LIST               a UTF-8 file with one path a line\n"
    "  --hide             check \"Masquer la sortie\"\n"
    "  --no-metadata, --no-outline, --no-hyperlinks, --no-text, --lines, --monochrome\n"
    "                     check the box of that option\n"
    "  --output DIR       convert into this folder\n"
    "  --pages PAGES      convert these pages only\n"
    "  --resolution N     at N dots per inch\n"
    "  --picture-ready F  make F when a picture may be taken, and wait until F is removed\n"
    "  --limit SECONDS    for the whole batch (600)\n";

namespace {

// Options that are one check box and nothing else.
const std::map<std::wstring, int> kCheckBoxes = {
    {L"--hide", IDC_HIDE_OUTPUT},      {L"--no-metadata", IDC_NO_METADATA},
    {L"--no-outline", IDC_NO_OUTLINE}, {L"--no-hyperlinks", IDC_NO_HYPERLINKS},
    {L"--no-text", IDC_NO_TEXT},       {L"--lines", IDC_LINES},
    {L"--monochrome", IDC_MONOCHROME},
};

const std::map<std::wstring, std::wstring BatchOptions::*> kTexts = {
    {L"--output", &BatchOptions::outputFolder},
    {L"--pages", &BatchOptions::pages},
    {L"--resolution", &BatchOptions::resolution},
    {L"--picture-ready", &BatchOptions::pictureFile},
};

std::vector<std::wstring> ReadList(const std::wstring& path) {
    const std::wstring text = driver::FromUtf8(driver::ReadFileBytes(path));
    std::vector<std::wstring> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        if (end > begin) lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

driver::Milliseconds ParseSeconds(const std::wstring& text) {
    wchar_t* end = nullptr;
    const unsigned long seconds = std::wcstoul(text.c_str(), &end, 10);
    if (text.empty() || *end || seconds == 0) throw driver::Failure(L"not a number of seconds: " + text);
    return std::chrono::seconds(seconds);
}

}  // namespace

BatchOptions ParseBatchOptions(const std::vector<std::wstring>& arguments) {
    BatchOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::wstring& argument = arguments[i];
        const auto value = [&]() -> const std::wstring& {
            if (i + 1 == arguments.size()) throw driver::Failure(L"a value must follow " + argument);
            return arguments[++i];
        };
        if (const auto box = kCheckBoxes.find(argument); box != kCheckBoxes.end()) {
            options.checkBoxes.push_back(box->second);
        } else if (const auto text = kTexts.find(argument); text != kTexts.end()) {
            options.*text->second = value();
        } else if (argument == L"--limit") {
            options.limit = ParseSeconds(value());
        } else if (argument.starts_with(L"--")) {
            throw driver::Failure(L"unknown option " + argument);
        } else if (options.program.empty()) {
            options.program = argument;
        } else if (argument.starts_with(L"@")) {
            for (std::wstring& path : ReadList(argument.substr(1))) options.pdfs.push_back(std::move(path));
        } else {
            options.pdfs.push_back(argument);
        }
    }
    if (options.pdfs.empty()) throw driver::Failure("a program and at least one PDF are needed");
    return options;
}
