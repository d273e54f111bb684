#include "tests/faults/harness/scenario_run.h"

#include "tests/faults/harness/bare_windows.h"
#include "tests/faults/harness/leak_counts.h"
#include "tests/support/utf8.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace {

constexpr std::chrono::seconds kEndLimit{15};

using Request = Platform::Request;

// The log as text: it is written in the system's code page.
std::string ReadLog(const Platform& platform) {
    const std::filesystem::path log = platform.File(L"TalvenorLog.txt");
    if (!std::filesystem::exists(log)) return "none";
    std::ifstream file(log, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::wstring text(bytes.size(), L'\0');
    text.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, bytes.data(),
                                                               static_cast<int>(bytes.size()), text.data(),
                                                               static_cast<int>(text.size()))));
    return Utf8(text);
}

void AddFactsOfTheRun(const Platform& platform, const ProgramHost& program, Facts& facts) {
    facts["messages"] = Lines(platform.Requests(Request::Message));
    facts["beeps"] = Lines(platform.Requests(Request::Beep));
    facts["starts"] = Lines(platform.Requests(Request::Start));
    facts["shell"] = Lines(platform.Requests(Request::Shell));
    facts["shutdowns"] = Lines(platform.Requests(Request::Shutdown));
    facts["awakeCalls"] = Lines(platform.Requests(Request::Awake));
    facts["awake"] = std::to_string(platform.AwakeThreads());
    facts["jobs"] = Lines(platform.Requests(Request::Job));
    facts["outsideJob"] = platform.ConvertersOutsideJob();
    facts["searches"] = Lines(platform.Requests(Request::Search));
    facts["taskbar"] = Lines(platform.Requests(Request::Taskbar));
    facts["shown"] = platform.TaskbarShows();
    facts["names"] = platform.Names();
    facts["closing"] = Lines(platform.Requests(Request::Close));
    facts["log"] = ReadLog(platform);
    facts["strays"] = Lines(platform.StrayFiles());
    facts["timers"] = platform.Timers();
    facts["exit"] = std::to_string(program.ExitCode());
}

// All that one run needs. Kept for good when the program hangs: its threads still use it.
struct Stage {
    Platform platform;
    CallWatch watch;
    ProgramHost program{platform, watch};
    User user{program};
};

}  // namespace

ScenarioRun RunScenario(const Scenario& scenario, const std::optional<CallKey>& failing) {
    ScenarioRun run;
    const int keptByTheSystem = GdiObjectsKeptByTheSystem();
    const int windowsBefore = WindowCount();
    const int gdiBefore = GdiObjectCount();
    const int handlesBefore = HandleCount();
    auto stage = std::make_unique<Stage>();
    if (failing) stage->watch.FailAt(*failing);
    scenario.prepare(stage->platform);
    try {
        scenario.use(stage->user, stage->watch, run.facts);
        if (!scenario.spendsItsProcess) {
            stage->user.WaitForWorkers();
            stage->user.WaitForPosted();
        }
        stage->user.Quit();
        if (!stage->program.WaitForEnd(kEndLimit)) throw Hang("the program does not end");
        stage->watch.End();
        run.processIsSpent = stage->program.State() != ProgramHost::Life::Ended;
    } catch (const Hang& hang) {
        run.facts["hang"] = hang.what();
        run.processIsSpent = true;
    }
    run.calls = stage->watch.Counted();
    run.reached = stage->watch.Failed();
    AddFactsOfTheRun(stage->platform, stage->program, run.facts);
    if (run.processIsSpent) {
        static_cast<void>(stage.release());
        return run;
    }
    run.facts["blocks"] = std::to_string(stage->platform.Blocks());
    run.facts["icons"] = std::to_string(stage->platform.Icons());
    run.facts["objects"] = std::to_string(stage->platform.ComObjects());
    const int keptOfDialogs = keptByTheSystem * stage->platform.ModelessDialogs();
    stage.reset();
    run.facts["handles"] = std::to_string(HandleCount() - handlesBefore);
    run.facts["gdi"] = std::to_string(GdiObjectCount() - gdiBefore - keptOfDialogs);
    run.facts["windows"] = std::to_string(WindowCount() - windowsBefore);
    return run;
}
