// How long the window lets a person wait: a message every 50 ms during a batch, and during a drop. A second
// window, of the bare dialog, is asked by turns: it has nothing to do, so what it shows is the machine.

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/batch_window.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/result.h"
#include "benchmarks/support/samples.h"
#include "benchmarks/support/stopwatch.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/program.h"
#include "tests/equipment/window_driver.h"

#include <windows.h>

namespace {

constexpr DWORD kPeriodMs = 50;
constexpr double kFrameMs = 16;
constexpr double kWorstMs = 50;
constexpr int kDropped = 10'000;

double RoundTrip(HWND window) {
    const Stopwatch stopwatch;
    driver::Ask(window, WM_NULL);
    return stopwatch.Milliseconds();
}

// The bare dialog in a process of its own.
class IdleWindow {
public:
    explicit IdleWindow(const Installation& installation)
        : m_program(installation.Add(L"bare_window.exe")), m_window(m_program) {}
    [[nodiscard]] HWND Window() const noexcept { return m_window.Window(); }

private:
    const driver::Program m_program;
    const driver::MainWindow m_window;
};

struct Answers {
    Samples talvenor;
    Samples idle;
};

void AskBoth(HWND talvenor, HWND idle, Answers& answers) {
    answers.talvenor.Add(RoundTrip(talvenor));
    answers.idle.Add(RoundTrip(idle));
    ::Sleep(kPeriodMs);
}

void MeasureBatch(const Installation& installation, const IdleWindow& idle, Consoles consoles, int files) {
    const BatchWindow batch(installation.Program(), PdfPaths(files), consoles);
    Answers answers;
    batch.Convert();
    do {
        AskBoth(batch.Window(), idle.Window(), answers);
    } while (!batch.IsFinished());
    batch.Dismiss();
    batch.Quit();

    const auto text = [](const Samples& samples) {
        return "worst " + WithUnit(samples.Worst(), "ms") + ", median " + WithUnit(samples.Median(), "ms", 2);
    };
    const char* const how = consoles == Consoles::Hidden ? "hidden" : "visible";
    Print({.what = std::string("window round trip every 50 ms in a batch, ") + how + ", " +
                   std::to_string(answers.talvenor.Count()) + " messages",
           .limit = "one frame, " + WithUnit(kFrameMs, "ms", 0) + "; beside it: an idle window",
           .talvenor = text(answers.talvenor),
           .bare = text(answers.idle),
           .ratio = Times(answers.talvenor.Worst() / kFrameMs) + " a frame",
           .goal = "worst ≤ " + WithUnit(kWorstMs, "ms", 0),
           .met = answers.talvenor.Worst() <= kWorstMs});
}

// The whole drop is one message: whoever asks while it is served waits for its end.
void MeasureDrop(const Installation& installation, int rounds) {
    Samples waits;
    for (int round = 0; round < rounds; ++round) {
        const driver::Program program(installation.Program());
        const driver::MainWindow window(program);
        const HWND list = window.Control(driver::id::kFileList);
        driver::DropFiles(list, PdfPaths(kDropped));
        // The first messages may overtake the drop.
        Samples answers;
        do {
            answers.Add(RoundTrip(window.Window()));
        } while (driver::RowCount(list) != kDropped);
        waits.Add(answers.Worst());
        static_cast<void>(window.Quit());
    }
    Print({.what = "the same during a drop of 10,000 paths, the message that meets it",
           .limit = "one frame, " + WithUnit(kFrameMs, "ms", 0),
           .talvenor = WithUnit(waits.Median(), "ms", 0),
           .bare = "",
           .ratio = Times(waits.Median() / kFrameMs) + " a frame",
           .goal = "",
           .met = true});
}

void Benchmark(const Arguments& arguments) {
    const Installation installation;
    const int files = arguments.Get("files", 200);
    {
        const IdleWindow idle(installation);
        MeasureBatch(installation, idle, Consoles::Hidden, files);
        MeasureBatch(installation, idle, Consoles::Visible, files);
    }
    MeasureDrop(installation, arguments.Get("rounds", 5));
}

}  // namespace

int main(int argc, char** argv) {
    return RunBenchmark(argc, argv, &Benchmark);
}
