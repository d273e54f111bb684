#include "tests/app/recorded_run.h"

#include <windows.h>

#include <shellapi.h>

#include <sstream>

#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace {

void Take(RecordedRun& run, const std::wstring& name, const std::wstring& value) {
    if (name == L"directory") run.directory = value;
    if (name == L"console") run.console = value;
    if (name == L"title") run.title = value;
    if (name == L"closed") run.closed = value;
    if (name == L"ended") run.ended = std::stoi(value);
}

}  // namespace

std::vector<std::wstring> RecordedRun::Arguments() const {
    int count = 0;
    wchar_t** const parts = ::CommandLineToArgvW(command.c_str(), &count);
    std::vector<std::wstring> arguments(parts, parts + count);
    ::LocalFree(parts);
    return arguments;
}

std::vector<RecordedRun> ReadRuns(const std::wstring& path) {
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
            Take(runs.back(), name, value);
        }
    }
    return runs;
}
