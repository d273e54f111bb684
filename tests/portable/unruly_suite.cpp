// A test program that does what no test should, to see that run_tests reports each: it fails, crashes,
// hangs, skips, leaves a file, leaves a process. Only the test of the package runs it.
#include <gtest/gtest.h>

#include <windows.h>
#include <process.h>

#include <cstdio>

#include "tests/equipment/file_bytes.h"
#include "tests/equipment/no_shutdown.h"

namespace {

void MakeTemporaryFile(const wchar_t* name) {
    driver::WriteFileBytes(std::filesystem::temp_directory_path() / name, "x");
}

TEST(Unruly, Passes) {
    std::printf("a line without an end");
}

TEST(Unruly, Fails) {
    EXPECT_EQ(1, 2) << "of the Été";
}

TEST(Unruly, Crashes) {
    ::TerminateProcess(::GetCurrentProcess(), 0xC0000005);
}

// A file shows that it has begun.
TEST(Unruly, Hangs) {
    MakeTemporaryFile(L"hanging");
    ::Sleep(INFINITE);
}

TEST(Unruly, Skips) {
    GTEST_SKIP() << "for no reason";
}

TEST(Unruly, LeavesAFile) {
    MakeTemporaryFile(L"forgotten.txt");
}

TEST(Unruly, LeavesAProcess) {
    const std::filesystem::path self = driver::OwnPath();
    ASSERT_NE(::_wspawnl(_P_NOWAIT, self.c_str(), L"unruly_suite", L"--gtest_filter=Unruly.Hangs", nullptr),
              -1);
}

TEST(Unruly, IsLeftOut) {
    FAIL() << "it runs all the same";
}

// The one thing that none of them can do.
TEST(Unruly, ShutsDown) {
    EXPECT_TRUE(driver::MayShutDown()) << "it may not";
}

}  // namespace
