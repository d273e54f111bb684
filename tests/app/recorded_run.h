// Reads what the stand-ins wrote down about their runs.
#pragma once
#include <windows.h>
#include <shellapi.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tests/app/installed_program.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

// The lines of one run by their names. One is missing when the run has not come so far, or was cut short.
using RecordedRun = std::map<std::wstring, std::wstring>;

// The command line as a program takes it apart.
inline std::vector<std::wstring> ArgumentsOf(const RecordedRun& run) {
    int count = 0;
    wchar_t** const parts = ::CommandLineToArgvW(run.at(L"command").c_str(), &count);
    std::vector<std::wstring> arguments(parts, parts + count);
    ::LocalFree(parts);
    return arguments;
}

// What the converter gets for this PDF while no option is chosen.
inline std::vector<std::wstring> PlainArgumentsFor(const std::wstring& pdf) {
    return {L"pdf2djvu.exe", L"-o", DjvuBeside(pdf), L"-v", pdf};
}

// The runs in the order of their starts. None when the file is not there.
inline std::vector<RecordedRun> ReadRuns(const std::wstring& path) {
    std::vector<RecordedRun> runs;
    if (!driver::FileExists(path)) return runs;
    std::wistringstream lines(driver::FromUtf8(driver::ReadFileBytes(path)));
    for (std::wstring line; std::getline(lines, line);) {
        const std::size_t equals = line.find(L'=');
        const std::wstring name = line.substr(0, equals);
        if (name == L"command") runs.emplace_back();
        if (!runs.empty() && equals != std::wstring::npos) runs.back()[name] = line.substr(equals + 1);
    }
    return runs;
}
