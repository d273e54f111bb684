// Runs the window tests. A test that hangs is named and ends the program: a window that waits for a click
// would otherwise wait for ever.
#include "tests/support/replaced_imports.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/watchdog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

// Where the product ends the process unasked, the tests end with it, and must not seem to have passed.
void WINAPI RefuseToEnd(UINT code) {
    std::printf("[  ENDING  ] ExitProcess(%u)\n", code);
    std::fflush(stdout);
    ::TerminateProcess(::GetCurrentProcess(), 125);
}

// Not every program that is made with this file has product code that ends the process.
bool CanEndTheProcess() {
    const std::vector<ImportSlot> slots = ImportSlots();
    return std::any_of(slots.begin(), slots.end(),
                       [](const ImportSlot& slot) { return slot.name == "ExitProcess"; });
}

}  // namespace

int main(int argc, char** argv) {
    // Some tests have a copy of this program end in their middle: what that leaves behind goes with our
    // folder.
    const TemporaryFolder place;
    ::SetEnvironmentVariableW(L"TMP", place.Path().c_str());
    testing::InitGoogleMock(&argc, argv);
    static_cast<void>(::CoInitialize(nullptr));
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);
    testing::UnitTest::GetInstance()->listeners().Append(new Watchdog(TALVENOR_LONGEST_TEST_MS));
    std::optional<ReplacedImport> exitProcess;
    if (CanEndTheProcess()) exitProcess.emplace("ExitProcess", &RefuseToEnd);
    const int result = RUN_ALL_TESTS();
    ::CoUninitialize();
    return result;
}
