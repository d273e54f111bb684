// A program that is out of memory, or handles a text wrongly, ends at once, with a code that says why.
#include "tests/faults/harness/child_process.h"

#include <gtest/gtest.h>

namespace {

constexpr DWORD kNoMemory = 0xC0000017;

struct FatalCase {
    const char* name;
    const wchar_t* thing;
    DWORD exitCode;

    friend void PrintTo(const FatalCase& row, std::ostream* out) { *out << row.name; }
};

class Fatal : public testing::TestWithParam<FatalCase> {};

TEST_P(Fatal, EndsTheProcess) {
    EXPECT_EQ(RunChildProcess("fatal_probe.exe", GetParam().thing, std::chrono::minutes(1)),
              GetParam().exitCode);
}

INSTANTIATE_TEST_SUITE_P(All, Fatal,
                         testing::Values(FatalCase{"NotByItself", L"nothing", 0},
                                         FatalCase{"WhenABlockCannotBeAllocated", L"new", kNoMemory},
                                         FatalCase{"WhenAnArrayCannotBeAllocated", L"new-array", kNoMemory},
                                         FatalCase{"NotWhenTheCodeAsksForNull", L"new-nothrow", 0},
                                         FatalCase{"WhenATextGetsTooLong", L"text-length", kNoMemory},
                                         FatalCase{"WhenAVectorGetsTooLong", L"vector-length", kNoMemory},
                                         FatalCase{"WhenATextIsReadBehindItsEnd", L"text-range", kNoMemory},
                                         FatalCase{"WhenATextIsMadeFromNull", L"text-from-null", kNoMemory}),
                         [](const auto& one) { return std::string(one.param.name); });

}  // namespace
