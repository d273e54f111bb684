#include "tests/faults/sweep/sweep_process.h"

#include "tests/faults/harness/scenario_run.h"
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/sweep/sweep_files.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

// Longer than all deadlines of a run together that can follow each other.
constexpr ULONGLONG kLongestRunMs = 60'000;

std::atomic<ULONGLONG> g_runBegan{0};

// Ends the process when one run takes longer than any may.
DWORD WINAPI Watchdog(void* /*unused*/) {
    for (;;) {
        ::Sleep(1000);  // how often the watch is looked at; nothing waits for it
        if (::GetTickCount64() - g_runBegan > kLongestRunMs) {
            ::TerminateProcess(::GetCurrentProcess(), kRunTookTooLong);
        }
    }
}

const Scenario& ScenarioOf(const std::string& name) {
    const auto& all = AllScenarios();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Scenario& one) { return one.name == name; });
    if (found == all.end()) throw std::runtime_error("no scenario " + name);
    return *found;
}

Verdict VerdictOf(const Scenario& scenario, const CallKey& call, const ScenarioRun& run) {
    if (!run.reached) return {Verdict::Kind::NotReached, {}};
    const std::vector<std::string> wrong = Judge(scenario, call, run.facts);
    if (wrong.empty()) return {};
    return {Verdict::Kind::Wrong, Lines(wrong)};
}

int Sweep(const std::string& scenarioName, const std::filesystem::path& folder, std::size_t first) {
    const Scenario& scenario = ScenarioOf(scenarioName);
    const std::vector<CallKey> calls = ReadCalls(folder / "calls");
    const VerdictWriter verdicts(folder / "verdicts");
    g_runBegan = ::GetTickCount64();
    ::CloseHandle(::CreateThread(nullptr, 0, &Watchdog, nullptr, 0, nullptr));
    // What the system takes once in a process for all windows to come is not a run's.
    static_cast<void>(RunScenario(scenario, std::nullopt).calls);
    for (std::size_t i = first; i < calls.size(); ++i) {
        g_runBegan = ::GetTickCount64();
        verdicts.Begin(i);
        const ScenarioRun run = RunScenario(scenario, calls[i]);
        verdicts.End(i, VerdictOf(scenario, calls[i], run));
        if (run.processIsSpent) return kProcessSpent;
    }
    return kSweptAll;
}

}  // namespace

std::optional<int> RunAsSweepProcess(int argc, char** argv) {
    if (argc != 5 || std::string(argv[1]) != kSweepArgument) return std::nullopt;
    const int result = Sweep(argv[2], argv[3], std::strtoul(argv[4], nullptr, 10));
    // Threads of a program that hangs may still run: no clean-up that they could disturb.
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(result));
    return result;
}
