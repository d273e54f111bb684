#include "tests/faults/sweep/sweep.h"

#include "tests/faults/harness/scenario_run.h"
#include "tests/faults/sweep/sweep_files.h"
#include "tests/faults/sweep/sweep_process.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8.h"

#include <windows.h>

#include <array>
#include <stdexcept>

namespace {

// A sweeping process watches its own runs; this is for one that does not even get there.
constexpr DWORD kLongestProcessMs = 30 * 60 * 1000;

std::string Hex(DWORD value) {
    std::array<char, 16> text{};
    ::wsprintfA(text.data(), "0x%08X", value);
    return text.data();
}

DWORD RunSweepProcess(const std::string& scenario, const std::filesystem::path& folder, std::size_t first) {
    std::array<wchar_t, MAX_PATH> self{};
    ::GetModuleFileNameW(nullptr, self.data(), MAX_PATH);
    std::wstring line = L"\"" + std::wstring(self.data()) + L"\" " +
                        std::wstring(std::begin(kSweepArgument), std::end(kSweepArgument) - 1) + L' ' +
                        std::wstring(scenario.begin(), scenario.end()) + L" \"" + folder.wstring() + L"\" " +
                        std::to_wstring(first);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessW(self.data(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                          &process)) {
        throw std::runtime_error("no sweeping process");
    }
    ::CloseHandle(process.hThread);
    if (::WaitForSingleObject(process.hProcess, kLongestProcessMs) != WAIT_OBJECT_0) {
        ::TerminateProcess(process.hProcess, kRunTookTooLong);
        ::WaitForSingleObject(process.hProcess, INFINITE);
    }
    DWORD code = 0;
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hProcess);
    return code;
}

// What the end of the process says about the run that it did not survive.
void JudgeEnd(const Scenario& scenario, const CallKey& call, DWORD code, SweepResult& result) {
    const Rule* const rule = FindRule(scenario, call);
    const DWORD wanted = rule ? rule->endsWithException : 0;
    if (wanted != 0 && code == wanted) {
        ++result.endedTheProgram;
        return;
    }
    const std::string end =
        code == kRunTookTooLong ? "the run hangs" : "the process ended with code " + Hex(code);
    result.findings.push_back({call, end});
}

void TakeVerdict(const Scenario& scenario, const CallKey& call, const Verdict& verdict, SweepResult& result) {
    const Rule* const rule = FindRule(scenario, call);
    switch (verdict.kind) {
    case Verdict::Kind::NotReached: result.notReached.push_back(call); return;
    case Verdict::Kind::Wrong: result.findings.push_back({call, verdict.text}); return;
    case Verdict::Kind::Good:
        if (rule && rule->endsWithException != 0) result.findings.push_back({call, "the program goes on"});
        return;
    }
}

}  // namespace

std::vector<CallKey> RecordCalls(const Scenario& scenario, std::vector<std::string>& differences) {
    static_cast<void>(RunScenario(scenario, std::nullopt).calls);  // as in a sweeping process
    const ScenarioRun run = RunScenario(scenario, std::nullopt);
    differences = Judge(scenario, std::nullopt, run.facts);
    return run.calls;
}

SweepResult Sweep(const Scenario& scenario, const std::vector<CallKey>& calls) {
    const TemporaryFolder folder;
    WriteCalls(folder.Path() / "calls", calls);
    SweepResult result;
    for (std::size_t next = 0; next < calls.size();) {
        const DWORD code = RunSweepProcess(scenario.name, folder.Path(), next);
        const Verdicts verdicts = ReadVerdicts(folder.Path() / "verdicts");
        // Runs from `next` to the last that began have taken place; that one may lack its verdict.
        const std::size_t last = verdicts.begun;
        if (last < next || !verdicts.given.contains(last)) {
            if (last < next) throw std::runtime_error("the sweeping process ended before a run: " + Hex(code));
        }
        for (; next <= last; ++next) {
            ++result.runs;
            const auto verdict = verdicts.given.find(next);
            if (verdict != verdicts.given.end()) {
                TakeVerdict(scenario, calls[next], verdict->second, result);
            } else {
                JudgeEnd(scenario, calls[next], code, result);
            }
        }
        if (code == kSweptAll && next < calls.size()) throw std::runtime_error("a sweep ended too early");
    }
    result.failed = calls.size() - result.notReached.size();
    return result;
}
