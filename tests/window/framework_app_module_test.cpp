// The application module: the main thread, one message loop for each thread, the module that resources come
// from, and what is left when it ends.
#include "framework/app_module.h"

#include "tests/support/replaced_imports.h"

#include "framework/message_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;

class FrameworkAppModuleTest : public testing::Test {
protected:
    FrameworkAppModuleTest() { Begin(); }
    ~FrameworkAppModuleTest() override {
        if (m_begun) End();
    }
    void Begin() {
        m_begun = true;
        m_module.Init(::GetModuleHandleW(nullptr));
    }
    void End() {
        m_begun = false;
        m_module.Term();
    }

    CAppModule& m_module = CAppModule::Instance();

private:
    bool m_begun = false;
};

HWND NewWindow() {
    return ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
}

TEST_F(FrameworkAppModuleTest, KnowsTheMainThreadAndTheResourcesUntilItsEnd) {
    EXPECT_EQ(m_module.MainThreadId(), ::GetCurrentThreadId());
    EXPECT_EQ(m_module.ResourceInstance(), ::GetModuleHandleW(nullptr));
    EXPECT_THAT(ResourceModules(), ElementsAre(::GetModuleHandleW(nullptr)));
    End();
    EXPECT_EQ(m_module.MainThreadId(), 0u);
    EXPECT_EQ(m_module.ResourceInstance(), nullptr);
}

TEST_F(FrameworkAppModuleTest, AThreadHasTheLoopThatItAddedLastUntilItRemovesIt) {
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
    CMessageLoop first, second;
    m_module.AddMessageLoop(first);
    EXPECT_EQ(m_module.MessageLoop(), &first);
    m_module.AddMessageLoop(second);
    EXPECT_EQ(m_module.MessageLoop(), &second);
    m_module.RemoveMessageLoop();
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
    m_module.RemoveMessageLoop();  // an absent one is ignored
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
}

TEST_F(FrameworkAppModuleTest, EachThreadHasItsOwnLoop) {
    CMessageLoop mainLoop, otherLoop;
    m_module.AddMessageLoop(mainLoop);
    std::thread([&] {
        EXPECT_EQ(m_module.MessageLoop(), nullptr);
        m_module.RemoveMessageLoop();  // that of the other thread stays
        m_module.AddMessageLoop(otherLoop);
        EXPECT_EQ(m_module.MessageLoop(), &otherLoop);
    }).join();
    EXPECT_EQ(m_module.MessageLoop(), &mainLoop);
}

TEST_F(FrameworkAppModuleTest, TermForgetsLoopsThatAreStillRegistered) {
    CMessageLoop loop;
    m_module.AddMessageLoop(loop);
    End();
    Begin();
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
}

TEST_F(FrameworkAppModuleTest, TermDestroysTheNotificationWindowsThatAreStillThereOnce) {
    const HWND first = NewWindow();
    const HWND already = NewWindow();
    const HWND last = NewWindow();
    for (const HWND window : {first, already, last}) m_module.AddNotificationWindow(window);
    ::DestroyWindow(already);
    End();
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_FALSE(::IsWindow(last));
    Begin();
    int destroyed = 0;
    const auto destroy =
        Replace<decltype(::DestroyWindow)>("DestroyWindow", [&](HWND) { return ++destroyed; });
    End();
    EXPECT_EQ(destroyed, 0);
}

TEST_F(FrameworkAppModuleTest, EveryUseOfTheLoopsIsGuardedByTheModulesCriticalSection) {
    End();
    CRITICAL_SECTION* section = nullptr;
    {
        const auto initialize = Replace<decltype(::InitializeCriticalSection)>(
            "InitializeCriticalSection", [&](auto original, CRITICAL_SECTION* initialized) {
                section = initialized;
                original(initialized);
            });
        Begin();
    }
    std::vector<std::string> calls;
    const auto enter = Replace<decltype(::EnterCriticalSection)>(
        "EnterCriticalSection", [&](auto original, CRITICAL_SECTION* entered) {
            original(entered);
            if (entered == section) calls.push_back("enter");
        });
    const auto leave = Replace<decltype(::LeaveCriticalSection)>("LeaveCriticalSection",
                                                                 [&](auto original, CRITICAL_SECTION* left) {
                                                                     if (left == section)
                                                                         calls.push_back("leave");
                                                                     original(left);
                                                                 });
    // How often `use` entered the section and left it again; -1 when it was ever in it twice, or stays in it.
    const auto entriesOf = [&](const auto& use) {
        calls.clear();
        use();
        int entries = 0;
        for (std::size_t i = 0; i < calls.size(); ++i) {
            if (calls[i] != (i % 2 == 0 ? "enter" : "leave")) return -1;
            if (i % 2 == 0) ++entries;
        }
        return calls.size() % 2 == 0 ? entries : -1;
    };
    CMessageLoop loop;
    EXPECT_EQ(entriesOf([&] { m_module.AddMessageLoop(loop); }), 2) << "removing the one before, and adding";
    EXPECT_EQ(entriesOf([&] { static_cast<void>(m_module.MessageLoop()); }), 1) << "looking up";
    EXPECT_EQ(entriesOf([&] { m_module.RemoveMessageLoop(); }), 1) << "removing";
    EXPECT_EQ(entriesOf([&] { m_module.AddNotificationWindow(NewWindow()); }), 1) << "adding a window";
    const auto destroy = Replace<decltype(::DestroyWindow)>("DestroyWindow", [&](auto original, HWND window) {
        calls.push_back("DestroyWindow");
        return original(window);
    });
    calls.clear();
    End();
    EXPECT_THAT(calls, ElementsAre("enter", "DestroyWindow", "leave"));
}

}  // namespace
