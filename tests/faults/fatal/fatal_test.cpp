// A program that is out of memory, or handles a text wrongly, ends at once, with a code that says why.
#include "tests/faults/harness/child_process.h"

#include <gtest/gtest.h>

namespace {

constexpr DWORD kNoMemory = 0xC0000017;

struct FatalCase {
    const char* name;
    const char* thing;
    DWORD exitCode;
};

class Fatal : public testing::TestWithParam<FatalCase> {};

TEST_P(Fatal, EndsTheProcess) {
    EXPECT_EQ(RunChildProcess("fatal_probe.exe", {GetParam().thing}, 60'000), GetParam().exitCode);
}

INSTANTIATE_TEST_SUITE_P(All, Fatal,
                         testing::Values(FatalCase{"NotByItself", "nothing", 0},
                                         FatalCase{"WhenABlockCannotBeAllocated", "new", kNoMemory},
                                         FatalCase{"WhenAnArrayCannotBeAllocated", "new-array", kNoMemory},
                                         FatalCase{"NotWhenTheCodeAsksForNull", "new-nothrow", 0},
                                         FatalCase{"WhenATextGetsTooLong", "text-length", kNoMemory},
                                         FatalCase{"WhenAVectorGetsTooLong", "vector-length", kNoMemory},
                                         FatalCase{"WhenATextIsReadBehindItsEnd", "text-range", kNoMemory},
                                         FatalCase{"WhenATextIsMadeFromNull", "text-from-null", kNoMemory}),
                         [](const auto& one) { return std::string(one.param.name); });

}  // namespace
