#include "tests/portable/test_run.h"

#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <sstream>

#include "tests/equipment/failure.h"
#include "tests/equipment/process_start.h"
#include "tests/equipment/text.h"
#include "tests/portable/interruption.h"

namespace {

// What has been ended takes a moment to be gone.
constexpr driver::Milliseconds kGoneLimit{10'000};

// For a process of ours to read or write.
driver::UniqueHandle OpenInherited(const std::wstring& path, DWORD access, DWORD disposition, DWORD flags) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = ::CreateFileW(path.c_str(), access, kShare, &inherited, disposition, flags, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        driver::FailCall("CreateFileW(" + driver::ToUtf8(path) + ")", error);
    }
    return driver::UniqueHandle(file);
}

// A file of the temporary folder, which is gone when it is closed. Each has a name of its own: a scanner may
// hold the last one for a moment.
driver::UniqueHandle CreateOutput() {
    static int s_count = 0;
    const auto path = std::filesystem::temp_directory_path() / ("output-" + std::to_string(++s_count));
    return OpenInherited(path, GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE);
}

std::string ReadAll(HANDLE file) {
    std::string bytes(::GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    ::SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    if (!::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        driver::FailCall("ReadFile", ::GetLastError());
    bytes.resize(read);
    return bytes;
}

driver::ProcessTree Start(const std::wstring& program, const std::vector<std::string>& arguments,
                          HANDLE output) {
    const driver::UniqueHandle input = OpenInherited(L"NUL", GENERIC_READ, OPEN_EXISTING, 0);
    // The arguments are names and options of ours: none has a quotation mark in it or ends in a backslash.
    std::wstring line = L'"' + program + L'"';
    for (const std::string& argument : arguments) line += L" \"" + driver::FromUtf8(argument) + L'"';
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.Get();
    startup.hStdOutput = output;
    startup.hStdError = output;
    return driver::StartProcessTree(driver::ToUtf8(program), [&](PROCESS_INFORMATION* started) {
        return ::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED,
                                nullptr, nullptr, &startup, started);
    });
}

struct ProcessEnd {
    std::optional<DWORD> code;  // none: it ran too long, or a person has had enough, and was ended
    std::string output;         // with its errors
    int leftRunning = 0;        // processes that it had started and left behind; they are ended too
};

// Throws driver::Failure when the program cannot be started.
ProcessEnd RunProcess(const std::wstring& program, const std::vector<std::string>& arguments,
                      driver::Milliseconds limit) {
    const driver::UniqueHandle output = CreateOutput();
    const driver::ProcessTree tree = Start(program, arguments, output.Get());
    const auto isOver = [&] { return ::WaitForSingleObject(tree.process.Get(), 0) == WAIT_OBJECT_0; };
    const auto allGone = [&] { return tree.Running() == 0; };
    ProcessEnd end;
    if (driver::WaitUntil([&] { return isOver() || Interruption::HasCome(); }, limit) && isOver()) {
        DWORD code = 0;
        if (!::GetExitCodeProcess(tree.process.Get(), &code))
            driver::FailCall("GetExitCodeProcess", ::GetLastError());
        end.code = code;
        if (!driver::WaitUntil(allGone, kGoneLimit)) end.leftRunning = tree.Running();
    }
    tree.End();
    if (!driver::WaitUntil(allGone, kGoneLimit))
        throw driver::Failure("a process of the tests cannot be ended");
    end.output = ReadAll(output.Get());
    return end;
}

constexpr driver::Milliseconds kListLimit{60'000};
// How a test program ends after a test that failed; anything else, other than 0, is its own trouble.
constexpr DWORD kFailed = 1;
constexpr char kFilter[] = "--gtest_filter=";

std::string Code(DWORD code) {
    char text[16] = {};
    std::snprintf(text, sizeof text, code > 0xFFFF ? "0x%08lX" : "%lu", static_cast<unsigned long>(code));
    return text;
}

std::string UpToBlank(const std::string& text) {
    return text.substr(0, text.find_first_of(" \r"));
}

Outcome OutcomeOf(const ProcessEnd& end) {
    if (!end.code) return Outcome::TooLong;
    if (*end.code == kFailed) return Outcome::Failed;
    if (*end.code != 0) return Outcome::Crashed;
    // What GoogleTest says in the end; the test may have printed something without ending its line.
    if (end.output.find("[  SKIPPED ] 1 test.") != std::string::npos) return Outcome::Skipped;
    return end.output.find("[  PASSED  ] 1 test.") != std::string::npos ? Outcome::Passed : Outcome::NotRun;
}

}  // namespace

std::vector<std::string> TestsOf(const Suite& suite, const std::vector<LeftOut>& leftOut) {
    std::string filter = kFilter + (suite.filter.empty() ? "*" : suite.filter) + "-";
    for (const LeftOut& one : leftOut) filter += one.pattern + ':';
    const ProcessEnd end = RunProcess(suite.program, {"--gtest_list_tests", filter}, kListLimit);
    if (end.code != DWORD{0})
        throw driver::Failure(driver::ToUtf8(suite.program) + " does not list its tests: " + end.output);
    // "Suite." and below it, indented, "Name", either with a comment behind it.
    std::vector<std::string> names;
    std::istringstream lines(end.output);
    std::string group;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  ")) {
            names.push_back(group + UpToBlank(line.substr(2)));
        } else {
            group = UpToBlank(line);
        }
    }
    return names;
}

TestResult RunTest(const Suite& suite, const std::string& name) {
    std::vector<std::string> arguments = suite.arguments;
    arguments.push_back("--gtest_brief=1");
    arguments.push_back(kFilter + name);
    const ProcessEnd end = RunProcess(suite.program, arguments, suite.limit);
    TestResult result{name, OutcomeOf(end), end.output.substr(0, end.output.find("[==========] ")),
                      end.leftRunning};
    if (result.outcome == Outcome::Crashed)
        result.output += "the program ended with " + Code(*end.code) + "\n";
    if (result.outcome == Outcome::TooLong)
        result.output += "not over after " + std::to_string(suite.limit.count() / 1000) + " s\n";
    return result;
}
