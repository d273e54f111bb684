// Reads what the stand-ins wrote down about their runs.
#pragma once
#include <optional>
#include <string>
#include <vector>

struct RecordedRun {
    std::wstring command;  // the command line as it arrived
    std::wstring directory;
    std::wstring console;      // converter only
    std::wstring title;        // of the console; converter only
    std::wstring closed;       // interpreter only: "1" when it was asked to close
    std::optional<int> ended;  // none: still running, or cut short

    // The command line as a program takes it apart.
    [[nodiscard]] std::vector<std::wstring> Arguments() const;
};

// The runs in the order of their starts. None when the file is not there.
std::vector<RecordedRun> ReadRuns(const std::wstring& path);
