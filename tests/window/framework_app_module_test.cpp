// The application module: the main thread, one message loop for each thread, the module that resources come
// from, and what is left when it ends.
#include "framework/app_module.h"

#include "tests/support/replaced_imports.h"

#include "framework/message_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
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
    const auto destroy = REPLACE_IMPORT(DestroyWindow, [&](HWND) { return ++destroyed; });
    End();
    EXPECT_EQ(destroyed, 0);
}

// What happens to the module's critical section and within it, in its order.
class FrameworkAppModuleGuardTest : public FrameworkAppModuleTest {
protected:
    std::vector<std::string> Steps(const std::function<void()>& use) {
        m_steps.clear();
        use();
        return m_steps;
    }

    CMessageLoop m_loop;

private:
    void Note(CRITICAL_SECTION* section, const char* step) {
        if (section == m_section) m_steps.push_back(step);
    }

    std::vector<std::string> m_steps;
    CRITICAL_SECTION* m_section = nullptr;  // the module's, once it has begun again
    const Replaced m_initialize =
        REPLACE_IMPORT(InitializeCriticalSection, [this](auto original, CRITICAL_SECTION* section) {
            if (!m_section) m_section = section;
            Note(section, "initialize");
            original(section);
        });
    const Replaced m_enter =
        REPLACE_IMPORT(EnterCriticalSection, [this](auto original, CRITICAL_SECTION* section) {
            Note(section, "enter");
            original(section);
        });
    const Replaced m_leave =
        REPLACE_IMPORT(LeaveCriticalSection, [this](auto original, CRITICAL_SECTION* section) {
            Note(section, "leave");
            original(section);
        });
    const Replaced m_delete =
        REPLACE_IMPORT(DeleteCriticalSection, [this](auto original, CRITICAL_SECTION* section) {
            Note(section, "delete");
            original(section);
        });
    const Replaced m_thread = REPLACE_IMPORT(GetCurrentThreadId, [this](auto original) {
        m_steps.push_back("thread");
        return original();
    });
    const Replaced m_destroy = REPLACE_IMPORT(DestroyWindow, [this](auto original, HWND window) {
        EXPECT_NE(m_module.MessageLoop(), nullptr) << "the loops are forgotten after the windows";
        m_steps.push_back("destroy");
        return original(window);
    });
};

TEST_F(FrameworkAppModuleGuardTest, EveryUseOfTheLoopsIsWithinTheCriticalSection) {
    End();
    EXPECT_THAT(Steps([&] { Begin(); }), ElementsAre("initialize", "thread"));
    EXPECT_THAT(Steps([&] { m_module.AddMessageLoop(m_loop); }),
                ElementsAre("enter", "thread", "leave", "enter", "thread", "leave"))
        << "removing the one before, and adding";
    EXPECT_THAT(Steps([&] { EXPECT_EQ(m_module.MessageLoop(), &m_loop); }),
                ElementsAre("enter", "thread", "leave"));
    EXPECT_THAT(Steps([&] { m_module.AddNotificationWindow(NewWindow()); }), ElementsAre("enter", "leave"));
    EXPECT_THAT(Steps([&] { End(); }),
                ElementsAre("enter", "enter", "thread", "leave", "destroy", "leave", "delete"))
        << "the steps of the question between are those of this test";
    Begin();
    EXPECT_THAT(Steps([&] { m_module.RemoveMessageLoop(); }), ElementsAre("enter", "thread", "leave"));
}

}  // namespace
