// Runs the fault tests, or, started by one of them, a part of one in a process of its own.
#include "tests/faults/sweep/sweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

int main(int argc, char** argv) {
    ::InitCommonControls();
    if (const auto result = RunAsSweepProcess(argc, argv)) return *result;
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
