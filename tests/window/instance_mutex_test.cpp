// The mutex by which a copy of the program knows of another.
#include "ui/instance_mutex.h"

#include "tests/support/replaced_imports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

// These two are functions of their own, so that the imports are read when they have been replaced.
[[gnu::noinline]] std::unique_ptr<InstanceMutex> NewMutex() {
    return std::make_unique<InstanceMutex>();
}

[[gnu::noinline]] void End(std::unique_ptr<InstanceMutex>& mutex) {
    mutex.reset();
}

// A mutex of the program. Its creation leaves this error, created or not.
std::unique_ptr<InstanceMutex> MakeMutex(DWORD error, bool created = true) {
    const auto create =
        REPLACE_IMPORT(CreateMutexW, [&](LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR name) {
            EXPECT_EQ(security, nullptr);
            EXPECT_FALSE(owned);
            EXPECT_STREQ(name, L"{6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}");
            const HANDLE handle = created ? ::CreateEventW(nullptr, TRUE, FALSE, nullptr) : nullptr;
            ::SetLastError(error);
            return handle;
        });
    return NewMutex();
}

TEST(InstanceMutexTest, OnlyItsOwnErrorMeansAnotherCopy) {
    for (const DWORD error : {0ul, 5ul, 6ul, 182ul, 183ul, 184ul}) {
        const auto mutex = MakeMutex(error);
        // What comes later does not count.
        ::SetLastError(error == 183 ? ERROR_SUCCESS : ERROR_ALREADY_EXISTS);
        EXPECT_EQ(mutex->AnotherCopyRuns(), error == 183) << error;
    }
    EXPECT_FALSE(MakeMutex(ERROR_ACCESS_DENIED, false)->AnotherCopyRuns());
}

TEST(InstanceMutexTest, IsClosedOnceAtItsEndWhenItWasCreated) {
    for (const bool created : {true, false}) {
        auto mutex = MakeMutex(ERROR_SUCCESS, created);
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
