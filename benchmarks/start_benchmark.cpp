// How long a start takes until the window is there, painted, and answers. Measured from outside: from the
// call that creates the process to the answer, Talvenor and the bare dialog by turns.

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/result.h"
#include "benchmarks/support/samples.h"
#include "benchmarks/support/stopwatch.h"

#include "base/unique_resource.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/wait_until.h"
#include "tests/equipment/window_driver.h"

#include <windows.h>

namespace {

constexpr DWORD kLimitMs = 60'000;
constexpr double kGoal = 1.10;

BOOL CALLBACK FindVisibleWindow(HWND window, LPARAM found) {
    if (!::IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND VisibleWindow(DWORD threadId) {
    HWND found = nullptr;
    ::EnumThreadWindows(threadId, FindVisibleWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

// Starts the program, waits for its window, closes it and waits for its end: the next start must not meet it.
double MeasureStart(const std::wstring& program) {
    std::wstring commandLine = L'"' + program + L'"';
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    const Stopwatch stopwatch;
    if (!::CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &started)) {
        driver::FailCall("CreateProcessW", ::GetLastError());
    }
    const UniqueHandle process(started.hProcess);
    const UniqueHandle thread(started.hThread);
    // Waited for without asking again and again, which would slow the start down.
    if (::WaitForInputIdle(process.Get(), kLimitMs) != 0) throw driver::Failure("the program never got idle");
    const HWND window = VisibleWindow(started.dwThreadId);
    if (!window) throw driver::Failure("the program is idle and shows no window");
    driver::Ask(window, WM_NULL);
    const double milliseconds = stopwatch.Milliseconds();

    ::PostMessageW(window, WM_CLOSE, 0, 0);
    if (::WaitForSingleObject(process.Get(), kLimitMs) != WAIT_OBJECT_0)
        throw driver::Failure("the program does not end");
    return milliseconds;
}

void Benchmark(const Arguments& arguments) {
    const int rounds = arguments.Get("rounds", 61);
    const Installation installation;
    const std::wstring bareWindow = installation.Add(L"bare_window.exe");
    MeasureStart(installation.Program());  // both into the file cache
    MeasureStart(bareWindow);

    Samples talvenor;
    Samples bare;
    for (int round = 0; round < rounds; ++round) {
        talvenor.Add(MeasureStart(installation.Program()));
        bare.Add(MeasureStart(bareWindow));
    }
    const double ratio = talvenor.Median() / bare.Median();
    Print({.what = "process start to visible, answering window, median of " + std::to_string(rounds),
           .limit = "the bare dialog: same template, icons and list columns",
           .talvenor = WithUnit(talvenor.Median(), "ms"),
           .bare = WithUnit(bare.Median(), "ms"),
           .ratio = Times(ratio),
           .goal = "≤ " + Times(kGoal),
           .met = ratio <= kGoal});
}

}  // namespace

int main(int argc, char** argv) {
    return RunBenchmark(argc, argv, &Benchmark);
}
