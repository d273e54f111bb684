// A program that is out of memory, or handles a text wrongly, ends at once, with a code that says why.
#include "tests/faults/harness/child_process.h"

#include <gtest/gtest.h>

namespace {

TEST(Fatal, EndsTheProcess) {
    constexpr DWORD kNoMemory = 0xC0000017;
    static constexpr struct {
        const wchar_t* thing;
        DWORD exitCode;
    } kCases[] = {
        {L"nothing", 0},
        {L"new", kNoMemory},
        {L"new-array", kNoMemory},
        {L"new-nothrow", 0},  // the code that asks looks for null
        {L"delete", 0},
        {L"text-length", kNoMemory},
        {L"vector-length", kNoMemory},
        {L"text-range", kNoMemory},
        {L"text-from-null", kNoMemory},
        {L"bad-alloc", kNoMemory},
        {L"bad-array-length", kNoMemory},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(RunChildProcess("fatal_probe.exe", row.thing, std::chrono::minutes(1)), row.exitCode)
            << row.thing;
    }
}

}  // namespace
