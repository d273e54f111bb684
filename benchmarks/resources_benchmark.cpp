// What the process holds: memory of its own, kernel handles and graphic objects, after its start and after
// each of ten batches. The bare program has the same window, COM, a mutex and the tool tips.

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/batch_window.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/linux_process.h"
#include "benchmarks/support/process_resources.h"
#include "benchmarks/support/result.h"
#include "benchmarks/support/samples.h"

#include "tests/equipment/main_window.h"
#include "tests/equipment/program.h"

#include <windows.h>

namespace {

constexpr DWORD kSettleMs = 1'000;
constexpr int kFiles = 5;
constexpr int kBatches = 10;
constexpr double kStartGoal = 1.10;
// A few pages more or less are the allocator's affair.
constexpr double kSameMemory = 1.01;

struct Held {
    Samples kilobytes;
    Samples handles;
    Samples gdiObjects;
};

void Count(const std::wstring& path, DWORD processId, HANDLE process, Held& held) {
    ::Sleep(kSettleMs);
    held.kilobytes.Add(static_cast<double>(LinuxProcess(path).PrivateKilobytes()));
    held.handles.Add(CountHandles(processId));
    held.gdiObjects.Add(CountGdiObjects(process));
}

void MeasureStart(const std::wstring& path, Held& held) {
    const driver::Program program(path);
    const driver::MainWindow window(program);
    Count(path, program.Id(), program.Process(), held);
    static_cast<void>(window.Quit());
}

void MeasureBatches(const Installation& installation, Held (&held)[kBatches]) {
    const BatchWindow window(installation.Program(), PdfPaths(kFiles), Consoles::Hidden);
    for (Held& after : held) {
        window.Convert();
        window.WaitUntilFinished();
        window.Dismiss();
        Count(installation.Program(), window.ProcessId(), window.Process(), after);
    }
    window.Quit();
}

void CompareStarts(const Held& talvenor, const Held& bare) {
    const auto print = [](const char* what, const Samples& ours, const Samples& theirs, const char* unit) {
        const double ratio = ours.Median() / theirs.Median();
        Print({.what = std::string(what) + " after the start",
               .limit = "the bare dialog with COM, mutex and tool tips",
               .talvenor = WithUnit(ours.Median(), unit, 0),
               .bare = WithUnit(theirs.Median(), unit, 0),
               .ratio = Times(ratio),
               .goal = "≤ " + Times(kStartGoal),
               .met = ratio <= kStartGoal});
    };
    print("private bytes", talvenor.kilobytes, bare.kilobytes, "kB");
    print("handles", talvenor.handles, bare.handles, "");
    print("GDI objects", talvenor.gdiObjects, bare.gdiObjects, "");
}

void CompareBatches(const Held (&held)[kBatches]) {
    const auto print = [&](const char* what, Samples Held::*which, const char* unit, double tolerance) {
        const auto after = [&](int batch) { return (held[batch - 1].*which).Median(); };
        Print({.what = std::string(what) + " after a second, a third and a tenth batch",
               .limit = "after the first batch",
               .talvenor =
                   Number(after(2), 0) + ", " + Number(after(3), 0) + ", " + WithUnit(after(10), unit, 0),
               .bare = WithUnit(after(1), unit, 0),
               .ratio = Times(after(3) / after(1)),
               .goal = "no more",
               .met = after(3) <= after(1) * tolerance});
    };
    print("private bytes", &Held::kilobytes, "kB", kSameMemory);
    print("handles", &Held::handles, "", 1);
    print("GDI objects", &Held::gdiObjects, "", 1);
}

void Benchmark(const Arguments& arguments) {
    const Installation installation;
    const std::wstring bareProgram = installation.Add(L"bare_program.exe");
    Held talvenor;
    Held bare;
    Held batches[kBatches];
    for (int round = 0; round < arguments.Get("rounds", 5); ++round) {
        MeasureStart(installation.Program(), talvenor);
        MeasureStart(bareProgram, bare);
        MeasureBatches(installation, batches);
    }
    CompareStarts(talvenor, bare);
    CompareBatches(batches);
}

}  // namespace

int main(int argc, char** argv) {
    return RunBenchmark(argc, argv, &Benchmark);
}
