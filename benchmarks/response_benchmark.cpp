// How long the window lets a person wait: a message every 50 ms during a batch, and during a drop. The same
// is asked of a bare dialog that shows the same batch: a window waits for its system, too, while consoles
// come and go above it.

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/bare_batch.h"
#include "benchmarks/support/batch_tries.h"
#include "benchmarks/support/batch_window.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/result.h"
#include "benchmarks/support/samples.h"
#include "benchmarks/support/stopwatch.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/program.h"
#include "tests/equipment/wait_until.h"
#include "tests/equipment/window_driver.h"

#include <windows.h>

namespace {

constexpr DWORD kPeriodMs = 50;
constexpr double kFrameMs = 16;
constexpr int kDropped = 10'000;

double RoundTrip(HWND window) {
    const Stopwatch stopwatch;
    driver::Ask(window, WM_NULL);
    return stopwatch.Milliseconds();
}

// The answers of all batches, and the longest of each.
struct Answers {
    Samples all;
    Samples longest;

    void Add(const Samples& batch) {
        for (const double answer : batch.Values()) all.Add(answer);
        longest.Add(batch.Worst());
    }
};

// The answers of a window whose batch runs, from now until `isFinished` holds. Throws driver::Failure when
// it never does.
Samples AnswersOf(HWND window, auto&& isFinished) {
    constexpr ULONGLONG kLimitMs = 180'000;
    const ULONGLONG end = ::GetTickCount64() + kLimitMs;
    Samples answers;
    do {
        // One whose converter fails ends without the message that is waited for.
        if (::GetTickCount64() >= end) throw driver::Failure("the batch does not end well");
        answers.Add(RoundTrip(window));
        ::Sleep(kPeriodMs);
    } while (!isFinished());
    return answers;
}

void MeasureTalvenor(const Installation& installation, int files, Consoles consoles, Answers& answers) {
    const BatchWindow batch(installation.Program(), PdfPaths(files), consoles);
    batch.Convert();
    const Samples ofBatch = AnswersOf(batch.Window(), [&] { return batch.IsFinished(); });
    batch.Dismiss();
    batch.Quit();
    answers.Add(ofBatch);
}

void MeasureBare(const Installation& installation, const std::wstring& program, int files, Consoles consoles,
                 Answers& answers) {
    const BareBatch batch(installation, program, PdfPaths(files), consoles, BareWindow::Shown);
    const driver::MainWindow window(batch.Process());
    const HWND status = window.Control(IDC_STATUS);
    // Until then the dialog for files is opened, which Talvenor has done before its batch.
    driver::Await("the bare dialog shows its first file", [&] { return !driver::Text(status).empty(); });
    const Samples ofBatch = AnswersOf(window.Window(), [&] { return batch.IsFinished(); });
    static_cast<void>(batch.Finish());
    answers.Add(ofBatch);
}

void CompareBatches(Consoles consoles, int files, int rounds) {
    const Installation installation;
    const std::wstring bareBatch = installation.Add(L"bare_batch.exe");
    Answers talvenor;
    Answers bare;
    for (int round = 0; round < rounds; ++round) {
        MeasureBatch([&] { MeasureTalvenor(installation, files, consoles, talvenor); });
        MeasureBatch([&] { MeasureBare(installation, bareBatch, files, consoles, bare); });
    }
    const auto text = [](const Answers& answers) {
        return "a batch's longest " + WithUnit(answers.longest.Median(), "ms") + ", the longest of all " +
               WithUnit(answers.longest.Worst(), "ms") + ", median " +
               WithUnit(answers.all.Median(), "ms", 2) + " of " + std::to_string(answers.all.Count());
    };
    const char* const how = consoles == Consoles::Hidden ? "hidden" : "visible";
    Print({.what = std::string("window round trip every 50 ms in a batch, ") + how,
           .limit = "one frame, 16 ms; beside it the bare dialog that shows the same",
           .talvenor = text(talvenor),
           .bare = text(bare),
           .ratio = Times(talvenor.longest.Median() / kFrameMs) + " a frame",
           .goal = "a batch's longest ≤ " + WithUnit(kFrameMs, "ms", 0),
           .met = talvenor.longest.Median() <= kFrameMs});
}

// The whole drop is one message: whoever asks while it is served waits for its end.
void MeasureDrop(int rounds) {
    const Installation installation;
    Samples waits;
    for (int round = 0; round < rounds; ++round) {
        const driver::Program program(installation.Program());
        const driver::MainWindow window(program);
        const HWND list = window.Control(IDC_FILE_LIST);
        driver::DropFiles(list, PdfPaths(kDropped));
        // The first messages may overtake the drop.
        Samples answers;
        int rows = 0;
        do {
            const Stopwatch stopwatch;
            rows = driver::RowCount(list);
            answers.Add(stopwatch.Milliseconds());
        } while (rows != kDropped);
        waits.Add(answers.Worst());
        static_cast<void>(window.Quit());
    }
    Print({.what = "the same during a drop of 10,000 paths, the message that meets it",
           .limit = "one frame, 16 ms",
           .talvenor = WithUnit(waits.Median(), "ms", 0),
           .bare = "",
           .ratio = Times(waits.Median() / kFrameMs) + " a frame",
           .goal = "",
           .met = true});
}

void Benchmark(const Arguments& arguments) {
    const int files = arguments.Get("files", 200);
    CompareBatches(Consoles::Hidden, files, arguments.Get("rounds", 5));
    CompareBatches(Consoles::Visible, files, arguments.Get("rounds", 5));
    MeasureDrop(arguments.Get("drops", 5));
}

}  // namespace

int main(int argc, char** argv) {
    return RunBenchmark(argc, argv, &Benchmark);
}
