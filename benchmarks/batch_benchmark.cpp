// What a batch costs beyond the converters: 200 conversions that take no time, against a loop that starts the
// interpreter with the same lines. Both start the same console programs, which is nearly all there is to wait
// for. A third loop has a window that shows as much of it as Talvenor's: painting it is not free, and
// starting a process costs more from one that has windows.

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/bare_batch.h"
#include "benchmarks/support/batch_tries.h"
#include "benchmarks/support/batch_window.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/linux_process.h"
#include "benchmarks/support/result.h"
#include "benchmarks/support/samples.h"
#include "benchmarks/support/stopwatch.h"

namespace {

constexpr double kWallGoal = 1.03;
constexpr double kCpuGoal = 1.10;

struct Costs {
    Samples wall;  // milliseconds of a batch
    Samples cpu;   // milliseconds of the process's own in a batch
};

// A folder with everything that all sides need.
struct Bench {
    explicit Bench(int files) : paths(PdfPaths(files)), bareBatch(installation.Add(L"bare_batch.exe")) {}

    const Installation installation;
    const std::vector<std::wstring> paths;
    const std::wstring bareBatch;
};

void MeasureTalvenor(const Bench& bench, Consoles consoles, Costs& costs) {
    const BatchWindow window(bench.installation.Program(), bench.paths, consoles);
    const LinuxProcess process(bench.installation.Program());
    const double cpuBefore = process.CpuMilliseconds();
    const Stopwatch stopwatch;
    window.Convert();
    window.WaitUntilFinished();
    const double wall = stopwatch.Milliseconds();
    const double cpu = process.CpuMilliseconds() - cpuBefore;
    window.Dismiss();
    window.Quit();
    costs.wall.Add(wall);
    costs.cpu.Add(cpu);
}

void MeasureBare(const Bench& bench, Consoles consoles, BareWindow window, Costs& costs) {
    const BareBatch batch(bench.installation, bench.bareBatch, bench.paths, consoles, window);
    const BareBatch::Cost cost = batch.Finish();
    costs.wall.Add(cost.wallMs);
    costs.cpu.Add(cost.cpuMs);
}

void Compare(const Bench& bench, Consoles consoles, int rounds) {
    Costs talvenor;
    Costs bare;
    Costs shown;
    for (int round = 0; round < rounds; ++round) {
        MeasureBatch([&] { MeasureTalvenor(bench, consoles, talvenor); });
        MeasureBatch([&] { MeasureBare(bench, consoles, BareWindow::None, bare); });
        MeasureBatch([&] { MeasureBare(bench, consoles, BareWindow::Shown, shown); });
    }
    const int files = static_cast<int>(bench.paths.size());
    const std::string batch = "a batch of " + std::to_string(files) + " instant conversions, " +
                              (consoles == Consoles::Hidden ? "hidden" : "visible");
    const auto print = [&](const char* what, const char* against, double ours, double theirs, double goal) {
        Print({.what = batch + what,
               .limit = against,
               .talvenor = WithUnit(ours / files, "ms a file", 2),
               .bare = WithUnit(theirs / files, "ms a file", 2),
               .ratio = Times(ours / theirs),
               .goal = goal > 0 ? "≤ " + Times(goal) : "",
               .met = goal <= 0 || ours <= theirs * goal});
    };
    constexpr double kNoGoal = 0;
    print(", wall time", "a bare loop of `CreateProcessW` with the same lines", talvenor.wall.Median(),
          bare.wall.Median(), kNoGoal);
    print(", wall time", "the same loop, shown in the bare dialog", talvenor.wall.Median(),
          shown.wall.Median(), kWallGoal);
    print(", own processor time", "the bare loop", talvenor.cpu.Median(), bare.cpu.Median(), kNoGoal);
    print(", own processor time", "the loop shown in the bare dialog", talvenor.cpu.Median(),
          shown.cpu.Median(), kCpuGoal);
}

void Benchmark(const Arguments& arguments) {
    const Bench bench(arguments.Get("files", 200));
    const int rounds = arguments.Get("rounds", 5);
    Compare(bench, Consoles::Hidden, rounds);
    Compare(bench, Consoles::Visible, rounds);
}

}  // namespace

int main(int argc, char** argv) {
    return RunBenchmark(argc, argv, &Benchmark);
}
