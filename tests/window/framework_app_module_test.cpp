// The application module: the main thread, one message loop for each thread, the module that resources come
// from, and what is left when it ends.
#include "framework/app_module.h"

#include "tests/window/noted_calls.h"

#include "framework/message_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;

class FrameworkAppModuleTest : public testing::Test {
protected:
    FrameworkAppModuleTest() { Begin(); }
    ~FrameworkAppModuleTest() override { End(); }
    void Begin() { m_module.Init(::GetModuleHandleW(nullptr)); }
    void End() { m_module.Term(); }

    CAppModule& m_module = CAppModule::Instance();
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
    Begin();
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
    Begin();
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
    static constexpr char kInitialize[] = "initialize";

    template <FunctionName kName>
    Replaced Noted(const char* step) {
        return Replace<void WINAPI(CRITICAL_SECTION*)>(
            kName.text, [this, step](auto original, CRITICAL_SECTION* section) {
                if (step == kInitialize && !m_section) m_section = section;
                if (section == m_section) m_steps.emplace_back(step);
                original(section);
            });
    }

    std::vector<std::string> m_steps;
    CRITICAL_SECTION* m_section = nullptr;  // the module's, once it has begun again
    const Replaced m_initialize = Noted<"InitializeCriticalSection">(kInitialize);
    const Replaced m_enter = Noted<"EnterCriticalSection">("enter");
    const Replaced m_leave = Noted<"LeaveCriticalSection">("leave");
    const Replaced m_delete = Noted<"DeleteCriticalSection">("delete");
    const Replaced m_thread = REPLACE_IMPORT(GetCurrentThreadId, [this](auto original) {
        m_steps.emplace_back("thread");
        return original();
    });
    const Replaced m_destroy = REPLACE_IMPORT(DestroyWindow, [this](auto original, HWND window) {
        EXPECT_NE(m_module.MessageLoop(), nullptr) << "the loops are forgotten after the windows";
        m_steps.emplace_back("destroy");
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
    EXPECT_EQ(m_module.MessageLoop(), nullptr) << "the loop is still registered";
    EXPECT_THAT(Steps([&] { m_module.RemoveMessageLoop(); }), ElementsAre("enter", "thread", "leave"));
}

}  // namespace
