// The two ends of a sweep: the process of the test, and those in which the program runs. Their temporary
// folder is one that the test makes for them, so that what a run leaves behind that its process does not
// survive goes with it. What they exchange are files there.
#include "tests/faults/sweep/sweep.h"

#include "tests/equipment/failure.h"
#include "tests/faults/harness/child_process.h"
#include "tests/faults/harness/leak_counts.h"
#include "tests/faults/scenarios/scenarios.h"
#include "tests/support/call_text.h"
#include "tests/support/temporary_folder.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <stdexcept>

namespace {

using std::filesystem::path;

constexpr char kSweepArgument[] = "--sweep";
constexpr int kDone = 0;
constexpr int kProcessSpent = 10;  // the last run left something behind: go on in a new process

// The calls that were recorded, or are to fail, in their order.
constexpr char kCallsFile[] = "calls";
// One for each run, written when it has ended: its process did not survive a run without one. That of a
// recorded run is how it differs from the usual.
constexpr char kVerdictsFile[] = "verdicts";

constexpr char kEndOfText = '\x1F';

void AddText(const path& file, const std::string& text) {
    // Opened and closed for each: what comes next may be the end of this process.
    std::ofstream(file, std::ios::binary | std::ios::app) << text << kEndOfText;
}

std::vector<std::string> ReadTexts(const path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::vector<std::string> texts;
    for (std::string text; std::getline(stream, text, kEndOfText);) texts.push_back(text);
    return texts;
}

// In the process of the test.

DWORD RunProcess(const Scenario& scenario, const TemporaryFolder& folder) {
    // Such a process watches its own runs; this is for one that does not even get there.
    constexpr std::chrono::minutes kLongestSweep{30};
    const std::string arguments = kSweepArgument + (' ' + scenario.name);
    return RunChildProcess("fault_test.exe", {arguments.begin(), arguments.end()}, kLongestSweep,
                           folder.Path());
}

RecordedCalls Record(const Scenario& scenario) {
    const TemporaryFolder folder;
    const DWORD code = RunProcess(scenario, folder);
    if (code != kDone) throw std::runtime_error(scenario.name + " cannot be recorded: " + EndOfProcess(code));
    return {ReadTexts(folder.Path() / kCallsFile), ReadTexts(folder.Path() / kVerdictsFile).at(0)};
}

// In a process of the program.

// Longer than all deadlines of a run together that can follow each other.
constexpr ULONGLONG kLongestRunMs = 60'000;

std::atomic<ULONGLONG> g_runBegan{0};

// Ends the process when one run takes longer than any may.
DWORD WINAPI Watchdog(void* /*unused*/) {
    for (;;) {
        ::Sleep(1000);  // how often the watch is looked at; nothing waits for it
        if (::GetTickCount64() - g_runBegan > kLongestRunMs) {
            ::TerminateProcess(::GetCurrentProcess(), kEndedForTime);
        }
    }
}

// A crash inside a window procedure may be swallowed on its way out by the system, which called the
// procedure: it is seen here before anybody can. At no address when the program calls a method of an object
// that the platform's objects do not have.
LONG CALLBACK EndAtCrash(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    const bool isTheProgram = !record.ExceptionAddress || IsInProgram(record.ExceptionAddress);
    const bool crashed = record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && isTheProgram;
    if (crashed) ::TerminateProcess(::GetCurrentProcess(), record.ExceptionCode);
    return EXCEPTION_CONTINUE_SEARCH;
}

struct ScenarioRun {
    Facts facts;
    std::vector<std::string> calls;  // that counted, in their order
    bool reached = false;            // the call that was to fail was made
    bool processIsSpent = false;     // something of the program is left that no other run should meet
};

// With the call `failing` as a failure. A program that hangs has the fact "hang".
ScenarioRun RunScenario(const Scenario& scenario, const std::string& failing = {}) {
    ScenarioRun run;
    const Counts before = HeldOfTheSystem();
    auto stage = std::make_unique<Stage>();  // kept for good when the program hangs: its threads still use it
    stage->watch.FailAt(failing);
    scenario.prepare(stage->platform);
    try {
        scenario.use(stage->user, stage->watch, run.facts);
        if (!scenario.spendsItsProcess) {
            stage->user.WaitForWorkers();
            stage->user.WaitForPosted();
        }
        stage->user.Quit();
        if (!stage->program.WaitForEnd()) throw driver::Failure("the program does not end");
        stage->watch.End();
        run.processIsSpent = stage->program.State() != ProgramHost::Life::Ended;
    } catch (const driver::Failure& hang) {
        run.facts["hang"] = hang.what();
        run.processIsSpent = true;
    }
    run.calls = stage->watch.Counted();
    run.reached = stage->watch.Failed();
    run.facts.merge(stage->platform.State());
    run.facts["exit"] = std::to_string(stage->program.ExitCode());
    if (run.processIsSpent) {
        static_cast<void>(stage.release());
        return run;
    }
    for (const auto& [what, count] : stage->platform.Held()) run.facts[what] = std::to_string(count);
    stage.reset();
    for (const auto& [what, count] : HeldOfTheSystem()) {
        run.facts[what] = std::to_string(count - before.at(what));
    }
    return run;
}

// How many messages a window gets is up to the system, and with it the number of some calls. And the system
// keeps some things that it needs for the first time; what leaks leaks every time.
ScenarioRun RunUntilSettled(const Scenario& scenario, const std::string& call = {}) {
    constexpr int kTries = 3;
    ScenarioRun run;
    const auto isLeft = [&](const char* fact) { return run.facts[fact] != "0"; };
    for (int tries = 0; tries < kTries; ++tries) {
        run = RunScenario(scenario, call);
        if (run.processIsSpent) break;
        const bool leavesSomething = isLeft("handles") || isLeft("gdi") || isLeft("windows");
        if ((run.reached || call.empty()) && !leavesSomething) break;
    }
    return run;
}

int RunToRecord(const Scenario& scenario, const path& folder) {
    ScenarioRun run = RunScenario(scenario);
    // The second run: what the system takes once in a process for all windows to come is not a run's.
    if (!run.processIsSpent) run = RunUntilSettled(scenario);
    for (const std::string& call : run.calls) AddText(folder / kCallsFile, call);
    AddText(folder / kVerdictsFile, Lines(Judge(scenario, {}, run.facts)));
    return kDone;
}

int RunToFail(const Scenario& scenario, const path& folder) {
    const std::vector<std::string> calls = ReadTexts(folder / kCallsFile);
    // First a run that does not count, unless each spends its process; in such nothing is counted anyway.
    if (!scenario.spendsItsProcess && RunScenario(scenario).processIsSpent) return kProcessSpent;
    for (std::size_t i = ReadTexts(folder / kVerdictsFile).size(); i < calls.size(); ++i) {
        g_runBegan = ::GetTickCount64();
        const ScenarioRun run = RunUntilSettled(scenario, calls[i]);
        AddText(folder / kVerdictsFile,
                run.reached ? Lines(Judge(scenario, calls[i], run.facts)) : kNotReached);
        if (run.processIsSpent) return kProcessSpent;
    }
    return kDone;
}

}  // namespace

const RecordedCalls& CallsOf(const Scenario& scenario) {
    static std::map<std::string, RecordedCalls> s_recorded;
    if (!s_recorded.contains(scenario.name)) s_recorded[scenario.name] = Record(scenario);
    return s_recorded[scenario.name];
}

std::vector<std::string> Sweep(const Scenario& scenario, const std::vector<std::string>& calls) {
    const TemporaryFolder folder;
    for (const std::string& call : calls) AddText(folder.Path() / kCallsFile, call);
    std::vector<std::string> verdicts;
    while (verdicts.size() < calls.size()) {
        const std::size_t before = verdicts.size();
        const DWORD code = RunProcess(scenario, folder);
        if (code != kDone && code != kProcessSpent)
            AddText(folder.Path() / kVerdictsFile, EndOfProcess(code));
        verdicts = ReadTexts(folder.Path() / kVerdictsFile);
        if (verdicts.size() == before) throw std::runtime_error("a sweep ended too early");
    }
    return verdicts;
}

std::string EndOfProcess(DWORD exitCode) {
    return exitCode == kEndedForTime ? "the run hangs" : "the process ended with code " + Hex(exitCode);
}

std::optional<int> RunAsSweepProcess(int argc, char** argv) {
    if (argc != 3 || std::string(argv[1]) != kSweepArgument) return std::nullopt;
    g_runBegan = ::GetTickCount64();
    ::CloseHandle(::CreateThread(nullptr, 0, &Watchdog, nullptr, 0, nullptr));
    ::AddVectoredExceptionHandler(1, &EndAtCrash);
    const auto scenario = std::ranges::find(AllScenarios(), std::string(argv[2]), &Scenario::name);
    if (scenario == AllScenarios().end()) throw std::runtime_error(std::string("no scenario ") + argv[2]);
    const path folder = std::filesystem::temp_directory_path();
    const bool hasCalls = std::filesystem::exists(folder / kCallsFile);
    const int result = hasCalls ? RunToFail(*scenario, folder) : RunToRecord(*scenario, folder);
    // Threads of a program that hangs may still run: no clean-up that they could disturb.
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(result));
    return result;
}
