// The mutex by which a copy of the program knows of another.
#include "ui/instance_mutex.h"

#include "tests/support/replaced_imports.h"
#include "tests/window/scripted_mutex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

using testing::ElementsAre;

// A mutex of the program, its creation answered like this. This and the next are functions of their own, so
// that the imports are read when they have been replaced.
[[gnu::noinline]] std::unique_ptr<InstanceMutex> MakeMutex(ScriptedMutex::Answer answer) {
    ScriptedMutex::answer = answer;
    return std::make_unique<InstanceMutex>();
}

[[gnu::noinline]] void End(std::unique_ptr<InstanceMutex>& mutex) {
    mutex.reset();
}

class InstanceMutexTest : public testing::Test {
protected:
    InstanceMutexTest() { ScriptedMutex::asked.clear(); }

private:
    ReplacedImport m_createMutex{"CreateMutexW", &ScriptedMutex::Create};
};

TEST_F(InstanceMutexTest, IsCreatedWithDefaultSecurityUnownedUnderItsName) {
    const auto mutex = MakeMutex({true, ERROR_SUCCESS});
    EXPECT_THAT(ScriptedMutex::asked, ElementsAre("default unowned {6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}"));
}

TEST_F(InstanceMutexTest, OnlyItsOwnErrorMeansAnotherCopy) {
    for (const DWORD error : {0ul, 5ul, 6ul, 182ul, 183ul, 184ul}) {
        const auto mutex = MakeMutex({true, error});
        // What comes later does not count.
        ::SetLastError(error == 183 ? ERROR_SUCCESS : ERROR_ALREADY_EXISTS);
        EXPECT_EQ(mutex->AnotherCopyRuns(), error == 183) << error;
    }
}

TEST_F(InstanceMutexTest, IsClosedOnceAtItsEndWhenItWasCreated) {
    for (const bool created : {true, false}) {
        auto mutex = MakeMutex({created, ERROR_SUCCESS});
        int closed = 0;
        const auto close = REPLACE_IMPORT(CloseHandle, [&](auto original, HANDLE object) {
            ++closed;
            return original(object);
        });
        End(mutex);
        EXPECT_EQ(closed, created ? 1 : 0);
    }
}

}  // namespace
