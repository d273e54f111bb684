#include "tests/faults/sweep/recorded_calls.h"

#include "tests/faults/harness/child_process.h"
#include "tests/faults/sweep/sweep_files.h"
#include "tests/faults/sweep/sweep_process.h"
#include "tests/support/temporary_folder.h"

#include <map>
#include <stdexcept>

namespace {

constexpr DWORD kLimitMs = 120'000;

RecordedCalls Record(const Scenario& scenario) {
    const TemporaryFolder folder;
    const DWORD code =
        RunChildProcess("fault_test.exe", {kRecordArgument, scenario.name, folder.Path().string()}, kLimitMs);
    if (code != kDone)
        throw std::runtime_error(scenario.name + " cannot be recorded: " + std::to_string(code));
    return {ReadCalls(folder.Path() / kCallsFile), ReadLines(folder.Path() / kDifferencesFile)};
}

}  // namespace

const RecordedCalls& CallsOf(const Scenario& scenario) {
    static std::map<std::string, RecordedCalls> s_recorded;
    const auto known = s_recorded.find(scenario.name);
    if (known != s_recorded.end()) return known->second;
    return s_recorded.emplace(scenario.name, Record(scenario)).first->second;
}
