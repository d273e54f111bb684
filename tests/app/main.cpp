// Runs the application tests: Talvenor.exe as it ships, driven from this process by window messages, real
// keys and clicks, and dropped files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>

#include "tests/equipment/main_window.h"
#include "tests/equipment/no_shutdown.h"
#include "tests/support/watchdog.h"

int main(int argc, char** argv) {
    // As the program is: or Windows would report scaled places and sizes, and clicks would miss.
    ::SetProcessDPIAware();
    driver::GiveUpShutdown();
    testing::InitGoogleMock(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new Watchdog(180'000));
    const int result = RUN_ALL_TESTS();
    // One test that failed is then the one that met it: another failure stays one.
    const bool onlyThat = testing::UnitTest::GetInstance()->failed_test_count() == 1;
    if (result == 0 || !driver::MainWindow::s_hasLostAProcess || !onlyThat) return result;
    std::puts("[ ATTENTION] the system has lost a process that the program started: trying once more");
    return RUN_ALL_TESTS();
}
