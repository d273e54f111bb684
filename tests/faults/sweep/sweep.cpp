#include "tests/faults/sweep/sweep.h"

#include "tests/faults/harness/child_process.h"
#include "tests/faults/sweep/sweep_process.h"
#include "tests/support/temporary_folder.h"

#include <windows.h>

#include <array>
#include <map>
#include <stdexcept>

namespace {

// A sweeping process watches its own runs; these are for one that does not even get there.
constexpr std::chrono::minutes kLongestSweep{30};
constexpr std::chrono::minutes kLongestRecording{2};

DWORD RunProcess(const std::string& arguments, const TemporaryFolder& folder,
                 std::chrono::milliseconds limit) {
    return RunChildProcess("fault_test.exe", {arguments.begin(), arguments.end()}, limit, folder.Path());
}

RecordedCalls Record(const Scenario& scenario) {
    const TemporaryFolder folder;
    const DWORD code = RunProcess(kRecordArgument + scenario.name, folder, kLongestRecording);
    if (code != kDone)
        throw std::runtime_error(scenario.name + " cannot be recorded: " + std::to_string(code));
    return {ReadCalls(folder.Path() / kCallsFile), ReadLines(folder.Path() / kDifferencesFile)};
}

void TakeVerdict(const Scenario& scenario, const CallKey& call, const std::string& verdict,
                 SweepResult& result) {
    const Rule* const rule = FindRule(scenario, call);
    if (verdict == kNotReached) {
        result.notReached.push_back(call);
    } else if (rule && rule->endsWithException != 0) {
        result.findings.push_back({call, "the program goes on\n" + verdict});
    } else if (!verdict.empty()) {
        result.findings.push_back({call, verdict});
    }
}

// What the end of the process says about the run that it did not survive.
void JudgeEnd(const Scenario& scenario, const CallKey& call, DWORD code, SweepResult& result) {
    const Rule* const rule = FindRule(scenario, call);
    if (rule && rule->endsWithException != 0 && code == rule->endsWithException) {
        ++result.endedTheProgram;
        return;
    }
    std::array<char, 64> end{};
    ::wsprintfA(end.data(), code == kEndedForTime ? "the run hangs" : "the process ended with code 0x%08X",
                code);
    result.findings.push_back({call, end.data()});
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
    while (result.runs < calls.size()) {
        const std::size_t first = result.runs;
        const std::string arguments = kSweepArgument + scenario.name + ' ' + std::to_string(first);
        const DWORD code = RunProcess(arguments, folder, kLongestSweep);
        const std::vector<std::string> verdicts = ReadLines(folder.Path() / kVerdictsFile);
        for (; result.runs < verdicts.size(); ++result.runs) {
            TakeVerdict(scenario, calls.at(result.runs), verdicts[result.runs], result);
        }
        if (code == kDone || code == kProcessSpent) {
            if (result.runs == first || (code == kDone && result.runs < calls.size()))
                throw std::runtime_error("a sweep ended too early");
        } else if (result.runs < calls.size()) {
            JudgeEnd(scenario, calls[result.runs], code, result);
            AppendLine(folder.Path() / kVerdictsFile, "its process ended");
            ++result.runs;
        }
    }
    return result;
}
