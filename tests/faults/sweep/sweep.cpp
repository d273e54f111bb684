#include "tests/faults/sweep/sweep.h"

#include "tests/faults/harness/child_process.h"
#include "tests/faults/sweep/sweep_files.h"
#include "tests/faults/sweep/sweep_process.h"
#include "tests/support/temporary_folder.h"

#include <windows.h>

#include <array>
#include <map>
#include <stdexcept>

namespace {

// A sweeping process watches its own runs; this is for one that does not even get there.
constexpr char kTestProgram[] = "fault_test.exe";
constexpr DWORD kLongestProcessMs = 30 * 60 * 1000;

constexpr DWORD kLongestRecordingMs = 120'000;

RecordedCalls Record(const Scenario& scenario) {
    const TemporaryFolder folder;
    const DWORD code = RunChildProcess(kTestProgram, {kRecordArgument, scenario.name, folder.Path().string()},
                                       kLongestRecordingMs);
    if (code != kDone)
        throw std::runtime_error(scenario.name + " cannot be recorded: " + std::to_string(code));
    return {ReadCalls(folder.Path() / kCallsFile), ReadLines(folder.Path() / kDifferencesFile)};
}

std::string Hex(DWORD value) {
    std::array<char, 16> text{};
    ::wsprintfA(text.data(), "0x%08X", value);
    return text.data();
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
        code == kEndedForTime ? "the run hangs" : "the process ended with code " + Hex(code);
    result.findings.push_back({call, end});
}

void TakeVerdict(const Scenario& scenario, const CallKey& call, const Verdict& verdict, SweepResult& result) {
    const Rule* const rule = FindRule(scenario, call);
    if (verdict.kind == Verdict::Kind::NotReached) {
        result.notReached.push_back(call);
    } else if (rule && rule->endsWithException != 0) {
        result.findings.push_back({call, "the program goes on\n" + verdict.text});
    } else if (verdict.kind == Verdict::Kind::Wrong) {
        result.findings.push_back({call, verdict.text});
    }
}

}  // namespace

const RecordedCalls& CallsOf(const Scenario& scenario) {
    static std::map<std::string, RecordedCalls> s_recorded;
    const auto known = s_recorded.find(scenario.name);
    if (known != s_recorded.end()) return known->second;
    return s_recorded.emplace(scenario.name, Record(scenario)).first->second;
}

SweepResult Sweep(const Scenario& scenario, const std::vector<CallKey>& calls) {
    const TemporaryFolder folder;
    WriteCalls(folder.Path() / kCallsFile, calls);
    SweepResult result;
    for (std::size_t next = 0; next < calls.size();) {
        const DWORD code = RunChildProcess(
            kTestProgram, {kSweepArgument, scenario.name, folder.Path().string(), std::to_string(next)},
            kLongestProcessMs);
        const Verdicts verdicts = ReadVerdicts(folder.Path() / kVerdictsFile);
        if (!verdicts.begun || *verdicts.begun < next) {
            throw std::runtime_error("a sweeping process ended before its first run: " + Hex(code));
        }
        // Runs from `next` to the last that began have taken place; that one may lack its verdict.
        for (; next <= *verdicts.begun; ++next) {
            ++result.runs;
            const auto verdict = verdicts.given.find(next);
            if (verdict != verdicts.given.end()) {
                TakeVerdict(scenario, calls[next], verdict->second, result);
            } else {
                JudgeEnd(scenario, calls[next], code, result);
            }
        }
        if (code == kDone && next < calls.size()) throw std::runtime_error("a sweep ended too early");
    }
    result.failed = calls.size() - result.notReached.size();
    return result;
}
