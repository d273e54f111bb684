// What a batch costs beyond the converters: 200 conversions that take no time, against a loop that starts the
// interpreter with the same lines. Both start the same console programs, which is nearly all there is to wait
// for.

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/batch_window.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/linux_process.h"
#include "benchmarks/support/result.h"
#include "benchmarks/support/samples.h"
#include "benchmarks/support/stopwatch.h"

#include "engine/command_line.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/program.h"

#include <windows.h>

#include <filesystem>
#include <sstream>

namespace {

constexpr double kWallGoal = 1.05;
constexpr double kCpuGoal = 1.50;
constexpr driver::Milliseconds kBatchLimit{600'000};

struct Cost {
    Samples wall;  // milliseconds of a batch
    Samples cpu;   // milliseconds of the process's own in a batch
};

// A folder with everything that both sides need.
struct Bench {
    explicit Bench(int files) : paths(PdfPaths(files)), bareBatch(installation.Add(L"bare_batch.exe")) {}

    const Installation installation;
    const std::vector<std::wstring> paths;
    const std::wstring bareBatch;
};

void MeasureTalvenor(const Bench& bench, Consoles consoles, Cost& cost) {
    const BatchWindow window(bench.installation.Program(), bench.paths, consoles);
    const LinuxProcess process(bench.installation.Program());
    const double cpuBefore = process.CpuMilliseconds();
    const Stopwatch stopwatch;
    window.Convert();
    window.WaitUntilFinished();
    cost.wall.Add(stopwatch.Milliseconds());
    cost.cpu.Add(process.CpuMilliseconds() - cpuBefore);
    window.Dismiss();
    window.Quit();
}

// The lines that Talvenor starts the interpreter with, and the titles that it gives the consoles.
std::wstring InterpreterLines(const std::vector<std::wstring>& paths, Consoles consoles) {
    std::wstring lines;
    for (const std::filesystem::path path : paths) {
        std::filesystem::path djvu = path;
        djvu.replace_extension(L".djvu");
        const std::wstring line = BuildConverterCommandLine({}, djvu.wstring(), path.wstring());
        lines += BuildInterpreterArguments(line, consoles == Consoles::Hidden) + L'\n';
        lines += path.filename().wstring() + L'\n';
    }
    return lines;
}

void MeasureBare(const Bench& bench, Consoles consoles, Cost& cost) {
    const std::wstring lines = InterpreterLines(bench.paths, consoles);
    driver::WriteFileBytes(bench.installation.File(L"lines.txt"),
                           {reinterpret_cast<const char*>(lines.data()), lines.size() * sizeof(wchar_t)});
    ::DeleteFileW(bench.installation.File(L"TalvenorLog.txt").c_str());  // Talvenor begins without it too

    driver::StartOptions options;
    options.directory = bench.installation.Folder();
    options.arguments =
        consoles == Consoles::Hidden ? L"lines.txt hidden result.txt" : L"lines.txt visible result.txt";
    const driver::Program program(bench.bareBatch, options);
    if (program.WaitForExit(kBatchLimit) != 0u) throw driver::Failure("the bare batch failed");
    double wall = 0;
    double cpu = 0;
    std::istringstream(driver::ReadFileBytes(bench.installation.File(L"result.txt"))) >> wall >> cpu;
    cost.wall.Add(wall);
    cost.cpu.Add(cpu);
}

void Compare(const Bench& bench, Consoles consoles, int rounds) {
    Cost talvenor;
    Cost bare;
    for (int round = 0; round < rounds; ++round) {
        MeasureTalvenor(bench, consoles, talvenor);
        MeasureBare(bench, consoles, bare);
    }
    const int files = static_cast<int>(bench.paths.size());
    const std::string batch = "a batch of " + std::to_string(files) + " instant conversions, " +
                              (consoles == Consoles::Hidden ? "hidden" : "visible");
    const double wallRatio = talvenor.wall.Median() / bare.wall.Median();
    Print({.what = batch + ", wall time, median of " + std::to_string(rounds),
           .limit = "a bare loop of `CreateProcessW` with the same lines",
           .talvenor = WithUnit(talvenor.wall.Median() / files, "ms a file", 2),
           .bare = WithUnit(bare.wall.Median() / files, "ms a file", 2),
           .ratio = Times(wallRatio),
           .goal = "≤ " + Times(kWallGoal),
           .met = wallRatio <= kWallGoal});
    const double cpuRatio = talvenor.cpu.Median() / bare.cpu.Median();
    Print({.what = batch + ", own processor time",
           .limit = "the same",
           .talvenor = WithUnit(talvenor.cpu.Median() / files, "ms a file", 2),
           .bare = WithUnit(bare.cpu.Median() / files, "ms a file", 2),
           .ratio = Times(cpuRatio),
           .goal = "≤ " + Times(kCpuGoal),
           .met = cpuRatio <= kCpuGoal});
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
