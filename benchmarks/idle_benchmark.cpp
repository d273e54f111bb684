// What the window does while nobody uses it, and while a converter runs: how often a thread of the process is
// woken, and how much processor time that takes. Counted by the kernel.

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/batch_window.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/linux_process.h"
#include "benchmarks/support/result.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/program.h"
#include "tests/equipment/main_window.h"

#include <windows.h>

namespace {

constexpr DWORD kSettleMs = 3'000;  // what a start or the beginning of a batch leaves behind
constexpr DWORD kSampleMs = 50;     // changes nearer than this are one wake-up
constexpr double kWakeUpsGoal = 1.0;

void MeasureIdle(const Installation& installation, int seconds) {
    const driver::Program program(installation.Program());
    const driver::MainWindow window(program);
    ::Sleep(kSettleMs);
    const LinuxProcess process(installation.Program());
    const auto switchesBefore = process.ContextSwitches();
    const auto ticksBefore = process.CpuTicks();
    ::Sleep(static_cast<DWORD>(seconds) * 1000);
    const auto switches = process.ContextSwitches() - switchesBefore;
    const auto ticks = process.CpuTicks() - ticksBefore;
    Print({.what = "idle window, " + std::to_string(seconds) + " s",
           .limit = "nothing",
           .talvenor =
               std::to_string(switches) + " context switches, " + std::to_string(ticks) + " processor ticks",
           .bare = "",
           .ratio = "",
           .goal = "0 and 0",
           .met = switches == 0 && ticks == 0});
    static_cast<void>(window.Quit());
}

// The stand-in runs as long as its file's name says.
std::wstring LongConversion(int seconds) {
    return L"C:\\Users\\Marie\\Documents\\wait" + std::to_wstring(seconds * 1000) + L".pdf";
}

void MeasureConversion(int seconds) {
    const Installation installation(StandInConverter());
    const DWORD durationMs = static_cast<DWORD>(seconds) * 1000;
    const BatchWindow window(installation.Program(), {LongConversion(seconds + 2 * 3)}, Consoles::Hidden);
    window.Convert();
    ::Sleep(kSettleMs);
    const LinuxProcess process(installation.Program());
    const auto switchesBefore = process.ContextSwitches();
    const auto ticksBefore = process.CpuTicks();
    int wakeUps = 0;
    bool inWakeUp = false;
    auto last = switchesBefore;
    const ULONGLONG begin = ::GetTickCount64();
    while (::GetTickCount64() - begin < durationMs) {
        ::Sleep(kSampleMs);
        const auto now = process.ContextSwitches();
        // One that goes on past the end of its sample is still the same; one past the next is another.
        inWakeUp = now != last && !inWakeUp;
        if (inWakeUp) ++wakeUps;
        last = now;
    }
    const double elapsed = static_cast<double>(::GetTickCount64() - begin) / 1000;
    const double rate = wakeUps / elapsed;
    if (window.IsFinished()) throw driver::Failure("the conversion ended too early");
    Print({.what = "wake-ups while a converter runs, " + std::to_string(seconds) + " s",
           .limit = "one a second, for the elapsed time",
           .talvenor = WithUnit(rate, "a second", 2) + ", " +
                       Number(static_cast<double>(last - switchesBefore) / elapsed) +
                       " context switches and " +
                       Number(static_cast<double>(process.CpuTicks() - ticksBefore) / elapsed, 2) +
                       " processor ticks a second",
           .bare = "",
           .ratio = "",
           .goal = "1 a second",
           // One more when the time measured begins and ends at one.
           .met = wakeUps <= static_cast<int>(elapsed * kWakeUpsGoal) + 1});
    window.WaitUntilFinished();
    window.Dismiss();
    window.Quit();
}

void Benchmark(const Arguments& arguments) {
    const int seconds = arguments.Get("seconds", 60);
    {
        const Installation installation;
        MeasureIdle(installation, seconds);
    }
    MeasureConversion(seconds);
}

}  // namespace

int main(int argc, char** argv) {
    return RunBenchmark(argc, argv, &Benchmark);
}
