// Runs the fault tests, or, started by one of them, a part of one in a process of its own.
#include "tests/faults/sweep/sweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <array>

namespace {

// Wine keeps a store of so many drawing contexts and enlarges it up to here when many windows draw at once;
// from there on it takes one that is not in use.
constexpr std::size_t kStored = 64;

// Brings the store of this process to its full size, so that how many windows happen to draw at one moment
// adds nothing to the process's graphics objects any more. Contexts that are taken and not given back are
// then noticed from the sixty-fifth on; the program takes none.
void FillStoreOfDrawingContexts() {
    std::array<HDC, kStored> contexts = {};
    for (HDC& context : contexts) context = ::GetDC(nullptr);
    for (const HDC context : contexts) ::ReleaseDC(nullptr, context);
}

}  // namespace

int main(int argc, char** argv) {
    ::InitCommonControls();
    FillStoreOfDrawingContexts();
    if (const auto result = RunAsSweepProcess(argc, argv)) return *result;
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
