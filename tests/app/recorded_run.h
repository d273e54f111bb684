// Reads what the stand-ins wrote down about their runs.
#pragma once
#include <windows.h>
#include <shellapi.h>

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

struct RecordedRun {
    std::wstring command;  // the command line as it arrived
    std::wstring program;  // the file that ran
    std::wstring directory;
    std::wstring console;      // converter only
    std::wstring title;        // of the console; converter only
    std::wstring closed;       // interpreter only: "1" when it was asked to close
    std::optional<int> ended;  // none: still running, or cut short

    void Take(const std::wstring& name, const std::wstring& value) {
        if (name == L"program") program = value;
        if (name == L"directory") directory = value;
        if (name == L"console") console = value;
        if (name == L"title") title = value;
        if (name == L"closed") closed = value;
        if (name == L"ended") ended = std::stoi(value);
    }
    // The command line as a program takes it apart.
    [[nodiscard]] std::vector<std::wstring> Arguments() const {
        int count = 0;
        wchar_t** const parts = ::CommandLineToArgvW(command.c_str(), &count);
        std::vector<std::wstring> arguments(parts, parts + count);
        ::LocalFree(parts);
        return arguments;
    }
};

// The runs in the order of their starts. None when the file is not there.
inline std::vector<RecordedRun> ReadRuns(const std::wstring& path) {
    std::vector<RecordedRun> runs;
    if (!driver::FileExists(path)) return runs;
    std::wistringstream lines(driver::FromUtf8(driver::ReadFileBytes(path)));
    for (std::wstring line; std::getline(lines, line);) {
        const std::size_t equals = line.find(L'=');
        if (equals == std::wstring::npos) continue;
        const std::wstring name = line.substr(0, equals);
        const std::wstring value = line.substr(equals + 1);
        if (name == L"command") {
            runs.emplace_back();
            runs.back().command = value;
        } else if (!runs.empty()) {
            runs.back().Take(name, value);
        }
    }
    return runs;
}
