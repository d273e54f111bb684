// Functions that another thread has the thread of the windows run.
#include "framework/invoker.h"

#include "tests/equipment/wait_until.h"
#include "tests/support/pump.h"
#include "tests/support/replaced_imports.h"

#include "framework/app_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <tuple>
#include <vector>

namespace {

class FrameworkInvokerTest : public testing::Test {
protected:
    // Has another thread, whose id is the result, ask once.
    std::future<DWORD> Ask() {
        m_threads.clear();
        return std::async(std::launch::async, [this] {
            m_invoker.Invoke([this] { m_threads.push_back(::GetCurrentThreadId()); });
            m_ranBeforeReturn = m_threads.size() == 1;
            return ::GetCurrentThreadId();
        });
    }
    // The same, and waits for it.
    void RunFromAnotherThread() {
        std::future<DWORD> caller = Ask();
        EXPECT_TRUE(
            PumpUntil([&] { return caller.wait_for(driver::Milliseconds(0)) == std::future_status::ready; },
                      std::chrono::seconds(10)));
        m_caller = caller.get();
    }

    CInvoker m_invoker;
    DWORD m_caller = 0;
    std::vector<DWORD> m_threads;  // those that ran the function, one for each time
    bool m_ranBeforeReturn = false;
};

TEST_F(FrameworkInvokerTest, RunsAFunctionOnTheThreadThatOpenedItOnceAndBeforeTheCallReturns) {
    m_invoker.Open();
    RunFromAnotherThread();
    EXPECT_THAT(m_threads, testing::ElementsAre(::GetCurrentThreadId()));
    EXPECT_TRUE(m_ranBeforeReturn);
    EXPECT_NE(m_caller, ::GetCurrentThreadId());
}

TEST_F(FrameworkInvokerTest, RunsItOnTheCallingThreadWhileItIsNotOpenOrItsWindowIsNotItsOwn) {
    const auto expectCallersThread = [&](const char* when) {
        RunFromAnotherThread();
        EXPECT_THAT(m_threads, testing::ElementsAre(m_caller)) << when;
    };
    expectCallersThread("before it is opened");
    {
        const auto create = REPLACE_IMPORT(CreateWindowExW, [](auto...) -> HWND { return nullptr; });
        m_invoker.Open();
        expectCallersThread("its window cannot be created");
    }
    {
        const auto subclass = REPLACE_IMPORT(SetWindowLongPtrW, [](HWND, int, LONG_PTR) { return 0; });
        m_invoker.Open();
        expectCallersThread("its window is another's");
    }
    m_invoker.Close();
    m_invoker.Open();
    m_invoker.Close();
    expectCallersThread("after it is closed");
    m_invoker.Open();
    RunFromAnotherThread();
    EXPECT_THAT(m_threads, testing::ElementsAre(::GetCurrentThreadId())) << "open again";
}

TEST_F(FrameworkInvokerTest, ItsWindowIsOneForMessagesOnlyAndRunsNothingForOtherPrograms) {
    std::vector<HWND> windows;
    const auto create = REPLACE_IMPORT(
        CreateWindowExW, [&](auto original, DWORD exStyle, LPCWSTR className, LPCWSTR title, auto... others) {
            EXPECT_STREQ(className, L"Static");
            EXPECT_EQ(title, nullptr);
            const HINSTANCE module = CAppModule::Instance().ResourceInstance();
            EXPECT_EQ(std::tuple(exStyle, others...),
                      std::tuple(0u, 0u, 0, 0, 0, 0, HWND_MESSAGE, HMENU{nullptr}, module, LPVOID{nullptr}));
            windows.push_back(original(exStyle, className, title, others...));
            return windows.back();
        });
    CAppModule::Instance().Init(::GetModuleHandleW(nullptr));
    m_invoker.Open();
    m_invoker.Open();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(::SendMessageW(windows[0], CInvoker::kInvokeMessage, 1, 1), 0) << "from another program";
    CAppModule::Instance().Term();
}

TEST_F(FrameworkInvokerTest, RunsAFunctionThatStillWaitsWhenItIsClosedOnItsOwnThread) {
    m_invoker.Open();
    std::future<DWORD> caller = Ask();
    // This thread serves no message meanwhile.
    const auto isAsked = [] { return (HIWORD(::GetQueueStatus(QS_SENDMESSAGE)) & QS_SENDMESSAGE) != 0; };
    EXPECT_TRUE(driver::WaitUntil(isAsked));
    EXPECT_EQ(caller.wait_for(driver::Milliseconds(0)), std::future_status::timeout)
        << "it waits for its turn";
    m_invoker.Close();
    ASSERT_EQ(caller.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_THAT(m_threads, testing::ElementsAre(caller.get()));
}

}  // namespace
