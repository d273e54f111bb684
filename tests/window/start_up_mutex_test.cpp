// The mutex by which a copy of the program knows of another.
#include "ui/instance_mutex.h"

#include "tests/window/forwarding_import.h"
#include "tests/window/scripted_mutex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

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

class StartUpMutexTest : public testing::Test {
protected:
    StartUpMutexTest() { ScriptedMutex::asked.clear(); }

private:
    ReplacedImport m_createMutex{"CreateMutexW", &ScriptedMutex::Create};
};

TEST_F(StartUpMutexTest, IsMadeWithDefaultSecurityUnownedUnderItsName) {
    const auto mutex = MakeMutex({true, ERROR_SUCCESS});
    EXPECT_THAT(ScriptedMutex::asked, ElementsAre("default unowned {6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}"));
}

TEST_F(StartUpMutexTest, OnlyItsOwnErrorMeansAnotherCopy) {
    for (const DWORD error : {0ul, 5ul, 6ul, 182ul, 183ul, 184ul}) {
        const auto mutex = MakeMutex({true, error});
        // What comes later does not count.
        ::SetLastError(error == 183 ? ERROR_SUCCESS : ERROR_ALREADY_EXISTS);
        EXPECT_EQ(mutex->AnotherCopyRuns(), error == 183) << error;
    }
}

std::vector<HANDLE> g_closed;
BOOL WINAPI NoteClosing(HANDLE object) {
    g_closed.push_back(object);
    return original<&NoteClosing>(object);
}

TEST_F(StartUpMutexTest, IsClosedOnceAtItsEndWhenItWasMade) {
    for (const bool created : {true, false}) {
        auto mutex = MakeMutex({created, ERROR_SUCCESS});
        g_closed.clear();
        const auto close = ReplaceAndForward<&NoteClosing>("CloseHandle");
        End(mutex);
        EXPECT_EQ(g_closed.size(), created ? 1u : 0u);
    }
}

}  // namespace
