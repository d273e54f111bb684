// Runs the fault tests, or, started by one of them, a part of one in a process of its own.
#include "tests/faults/harness/drawing_contexts.h"
#include "tests/faults/leaks/held.h"
#include "tests/faults/options.h"
#include "tests/faults/sweep/sweep_process.h"
#include "tests/faults/sweep/sweep_summary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <string>

namespace {

bool g_full = false;

}  // namespace

bool IsFull() {
    return g_full;
}

int main(int argc, char** argv) {
    ::InitCommonControls();
    FillStoreOfDrawingContexts();
    if (const auto result = RunAsSweepProcess(argc, argv)) return *result;
    testing::InitGoogleMock(&argc, argv);
    for (int i = 1; i < argc; ++i) g_full = g_full || std::string(argv[i]) == "--full";
    const int result = RUN_ALL_TESTS();
    PrintSweepSummary();
    PrintLeakSummary();
    return result;
}
