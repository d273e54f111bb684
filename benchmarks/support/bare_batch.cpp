#include "benchmarks/support/bare_batch.h"

#include "engine/command_line.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"

#include <windows.h>

#include <filesystem>
#include <sstream>

namespace {

constexpr driver::Milliseconds kBatchLimit{600'000};
constexpr wchar_t kLines[] = L"lines.txt";
constexpr wchar_t kResult[] = L"result.txt";

// The lines that Talvenor starts the interpreter with, and the titles that it gives the consoles.
std::wstring InterpreterLines(const std::vector<std::wstring>& paths, Consoles consoles) {
    std::wstring lines;
    for (const std::filesystem::path path : paths) {
        std::filesystem::path djvu = path;
        djvu.replace_extension(L".djvu");
        const std::wstring line = BuildConverterCommandLine({}, djvu.wstring(), path.wstring());
        lines += BuildInterpreterArguments(line, consoles == Consoles::Hidden) + L'\n';
        lines += path.filename().wstring() + L'\n' + path.wstring() + L'\n';
    }
    return lines;
}

driver::StartOptions Prepare(const Installation& installation, const std::vector<std::wstring>& paths,
                             Consoles consoles, BareWindow window) {
    const std::wstring lines = InterpreterLines(paths, consoles);
    driver::WriteFileBytes(installation.File(kLines),
                           {reinterpret_cast<const char*>(lines.data()), lines.size() * sizeof(wchar_t)});
    ::DeleteFileW(installation.File(kResult).c_str());
    ::DeleteFileW(installation.File(L"TalvenorLog.txt").c_str());  // Talvenor begins without it too
    driver::StartOptions options;
    options.directory = installation.Folder();
    options.arguments = std::wstring(kLines) + (consoles == Consoles::Hidden ? L" hidden" : L" visible") +
                        (window == BareWindow::Shown ? L" window " : L" alone ") + kResult;
    return options;
}

}  // namespace

BareBatch::BareBatch(const Installation& installation, const std::wstring& program,
                     const std::vector<std::wstring>& paths, Consoles consoles, BareWindow window)
    : m_installation(installation), m_program(program, Prepare(installation, paths, consoles, window)) {}

bool BareBatch::IsFinished() const {
    return driver::FileExists(m_installation.File(kResult)) || m_program.HasEnded();
}

BareBatch::Cost BareBatch::Finish() const {
    if (m_program.WaitForExit(kBatchLimit) != 0u) throw driver::Failure("the bare batch failed");
    Cost cost;
    std::istringstream(driver::ReadFileBytes(m_installation.File(kResult))) >> cost.wallMs >> cost.cpuMs;
    return cost;
}
