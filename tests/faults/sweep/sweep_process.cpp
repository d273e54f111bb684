#include "tests/faults/sweep/sweep_process.h"

#include "tests/equipment/failure.h"
#include "tests/faults/harness/child_process.h"
#include "tests/faults/harness/leak_counts.h"
#include "tests/faults/scenarios/scenarios.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

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

const Scenario& ScenarioOf(std::string_view name) {
    const auto& all = AllScenarios();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Scenario& one) { return one.name == name; });
    if (found == all.end()) throw std::runtime_error("no scenario " + std::string(name));
    return *found;
}

struct ScenarioRun {
    Facts facts;
    std::vector<CallKey> calls;   // that counted, in their order
    bool reached = false;         // the call that was to fail was made
    bool processIsSpent = false;  // something of the program is left that no other run should meet
};

// With `failing`, that call fails. A program that hangs has the fact "hang".
ScenarioRun RunScenario(const Scenario& scenario, const std::optional<CallKey>& failing) {
    ScenarioRun run;
    const int keptByTheSystem = GdiObjectsKeptByTheSystem();
    const int windowsBefore = WindowCount();
    const int gdiBefore = GdiObjectCount();
    const int handlesBefore = HandleCount();
    auto stage = std::make_unique<Stage>();  // kept for good when the program hangs: its threads still use it
    if (failing) stage->watch.FailAt(*failing);
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
    const int keptOfDialogs = keptByTheSystem * stage->platform.ModelessDialogs();
    stage.reset();
    run.facts["handles"] = std::to_string(HandleCount() - handlesBefore);
    run.facts["gdi"] = std::to_string(GdiObjectCount() - gdiBefore - keptOfDialogs);
    run.facts["windows"] = std::to_string(WindowCount() - windowsBefore);
    return run;
}

bool LeavesSomething(const Facts& facts) {
    const auto differs = [&](const char* fact) { return facts.contains(fact) && facts.at(fact) != "0"; };
    return differs("handles") || differs("gdi") || differs("windows");
}

// How many messages a window gets is up to the system, and with it the number of some calls. And the system
// keeps some things that it needs for the first time; what leaks leaks every time.
ScenarioRun RunUntilSettled(const Scenario& scenario, const std::optional<CallKey>& call) {
    constexpr int kTries = 3;
    ScenarioRun run;
    for (int tries = 0; tries < kTries; ++tries) {
        run = RunScenario(scenario, call);
        const bool settled = (run.reached || !call) && !LeavesSomething(run.facts);
        if (settled || run.processIsSpent) break;
    }
    return run;
}

int Record(const Scenario& scenario, const std::filesystem::path& folder) {
    ScenarioRun run = RunScenario(scenario, std::nullopt);
    // The second run: what the system takes once in a process for all windows to come is not a run's.
    if (!run.processIsSpent) run = RunUntilSettled(scenario, std::nullopt);
    WriteCalls(folder / kCallsFile, run.calls);
    for (const std::string& difference : Judge(scenario, std::nullopt, run.facts)) {
        AppendLine(folder / kDifferencesFile, difference);
    }
    return kDone;
}

int Sweep(const Scenario& scenario, const std::filesystem::path& folder, std::size_t first) {
    const std::vector<CallKey> calls = ReadCalls(folder / kCallsFile);
    // First a run that does not count, unless each spends its process; in such nothing is counted anyway.
    if (!scenario.spendsItsProcess && RunScenario(scenario, std::nullopt).processIsSpent)
        return kProcessSpent;
    for (std::size_t i = first; i < calls.size(); ++i) {
        g_runBegan = ::GetTickCount64();
        const ScenarioRun run = RunUntilSettled(scenario, calls[i]);
        AppendLine(folder / kVerdictsFile,
                   run.reached ? Lines(Judge(scenario, calls[i], run.facts)) : kNotReached);
        if (run.processIsSpent) return kProcessSpent;
    }
    return kDone;
}

}  // namespace

std::optional<int> RunAsSweepProcess(int argc, char** argv) {
    const std::string task = argc >= 3 ? std::string(argv[1]) + ' ' : "";
    const bool records = task == kRecordArgument;
    if (!records && (task != kSweepArgument || argc != 4)) return std::nullopt;
    g_runBegan = ::GetTickCount64();
    ::CloseHandle(::CreateThread(nullptr, 0, &Watchdog, nullptr, 0, nullptr));
    ::AddVectoredExceptionHandler(1, &EndAtCrash);
    const Scenario& scenario = ScenarioOf(argv[2]);
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const int result =
        records ? Record(scenario, folder) : Sweep(scenario, folder, std::strtoul(argv[3], nullptr, 10));
    // Threads of a program that hangs may still run: no clean-up that they could disturb.
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(result));
    return result;
}
