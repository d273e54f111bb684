#include "tests/faults/sweep/sweep_summary.h"

#include <cstdio>
#include <vector>

namespace {

struct Row {
    std::string scenario;
    std::size_t recorded = 0;
    std::size_t failed = 0;
    std::size_t runs = 0;
    std::size_t endedTheProgram = 0;
    std::size_t notReached = 0;
    std::size_t findings = 0;
};

std::vector<Row> g_rows;

void Print(const Row& row) {
    std::printf("[ figures  ] %-22s %8zu %8zu %8zu %14zu %11zu %9zu\n", row.scenario.c_str(), row.recorded,
                row.failed, row.runs, row.endedTheProgram, row.notReached, row.findings);
}

}  // namespace

void AddToSummary(const std::string& scenario, std::size_t recorded, const SweepResult& result) {
    g_rows.push_back({scenario, recorded, result.failed, result.runs, result.endedTheProgram,
                      result.notReached.size(), result.findings.size()});
}

void PrintSweepSummary() {
    if (g_rows.empty()) return;
    std::printf("[ figures  ] %-22s %8s %8s %8s %14s %11s %9s\n", "Scenario", "calls", "failed", "runs",
                "out of memory", "not reached", "findings");
    Row all{.scenario = "all"};
    for (const Row& row : g_rows) {
        Print(row);
        all.recorded += row.recorded;
        all.failed += row.failed;
        all.runs += row.runs;
        all.endedTheProgram += row.endedTheProgram;
        all.notReached += row.notReached;
        all.findings += row.findings;
    }
    Print(all);
}
