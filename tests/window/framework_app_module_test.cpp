// The application module: the main thread, one message loop for each thread, the modules that texts come
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
    FrameworkAppModuleTest() { m_module.Init(::GetModuleHandleW(nullptr)); }
    ~FrameworkAppModuleTest() override {
        if (!m_terminated) m_module.Term();
    }
    void Terminate() {
        m_terminated = true;
        m_module.Term();
    }

    CAppModule& m_module = CAppModule::Instance();

private:
    bool m_terminated = false;
};

TEST_F(FrameworkAppModuleTest, RecordsTheThreadThatInitialisesItAsTheMainThread) {
    EXPECT_EQ(m_module.MainThreadId(), ::GetCurrentThreadId());
}

TEST_F(FrameworkAppModuleTest, KnowsNoThreadAndNoResourcesAfterItsEnd) {
    Terminate();
    EXPECT_EQ(m_module.MainThreadId(), 0u);
    EXPECT_EQ(m_module.ResourceInstance(), nullptr);
}

TEST_F(FrameworkAppModuleTest, ResourcesComeFromTheModuleItIsGiven) {
    EXPECT_EQ(m_module.ResourceInstance(), ::GetModuleHandleW(nullptr));
    EXPECT_THAT(ResourceModules(), ElementsAre(::GetModuleHandleW(nullptr)));
}

TEST_F(FrameworkAppModuleTest, AThreadHasNoLoopUntilItAddsOne) {
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
    CMessageLoop loop;
    m_module.AddMessageLoop(loop);
    EXPECT_EQ(m_module.MessageLoop(), &loop);
    m_module.RemoveMessageLoop();
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
}

TEST_F(FrameworkAppModuleTest, ASecondLoopOfAThreadReplacesTheFirst) {
    CMessageLoop first;
    CMessageLoop second;
    m_module.AddMessageLoop(first);
    m_module.AddMessageLoop(second);
    EXPECT_EQ(m_module.MessageLoop(), &second);
    m_module.RemoveMessageLoop();
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
}

TEST_F(FrameworkAppModuleTest, EachThreadHasItsOwnLoop) {
    CMessageLoop mainLoop;
    m_module.AddMessageLoop(mainLoop);
    CMessageLoop* before = &mainLoop;
    CMessageLoop* during = nullptr;
    CMessageLoop otherLoop;
    std::thread([&] {
        before = m_module.MessageLoop();
        m_module.AddMessageLoop(otherLoop);
        during = m_module.MessageLoop();
    }).join();
    EXPECT_EQ(before, nullptr);
    EXPECT_EQ(during, &otherLoop);
    EXPECT_EQ(m_module.MessageLoop(), &mainLoop);
}

TEST_F(FrameworkAppModuleTest, RemovingALoopLeavesThoseOfOtherThreads) {
    CMessageLoop mainLoop;
    m_module.AddMessageLoop(mainLoop);
    std::thread([&] { m_module.RemoveMessageLoop(); }).join();
    EXPECT_EQ(m_module.MessageLoop(), &mainLoop);
    m_module.RemoveMessageLoop();
    m_module.RemoveMessageLoop();  // an absent one is ignored
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
}

TEST_F(FrameworkAppModuleTest, TermForgetsLoopsThatAreStillRegistered) {
    CMessageLoop loop;
    m_module.AddMessageLoop(loop);
    m_module.Term();
    m_module.Init(::GetModuleHandleW(nullptr));
    EXPECT_EQ(m_module.MessageLoop(), nullptr);
}

HWND NewWindow() {
    return ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
}

TEST_F(FrameworkAppModuleTest, TermDestroysTheNotificationWindowsThatAreStillThere) {
    const HWND first = NewWindow();
    const HWND gone = NewWindow();
    const HWND last = NewWindow();
    for (const HWND window : {first, gone, last}) m_module.AddNotificationWindow(window);
    ::DestroyWindow(gone);
    Terminate();
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_FALSE(::IsWindow(last));
}

TEST_F(FrameworkAppModuleTest, TermDestroysANotificationWindowOnlyOnce) {
    m_module.AddNotificationWindow(NewWindow());
    m_module.Term();
    static int destroyed = 0;
    destroyed = 0;
    m_module.Init(::GetModuleHandleW(nullptr));
    const ReplacedImport destroyWindow(
        "DestroyWindow", +[](HWND) WINAPI -> BOOL { return ++destroyed; });
    Terminate();
    EXPECT_EQ(destroyed, 0);
}

// Who enters and leaves the module's critical section.
struct Sections {
    using Function = void WINAPI(CRITICAL_SECTION*);

    static inline std::vector<std::string> calls;
    static inline CRITICAL_SECTION* section = nullptr;
    static inline Function* initialize = nullptr;
    static inline Function* enter = nullptr;
    static inline Function* leave = nullptr;

    static void WINAPI Initialize(CRITICAL_SECTION* initialized) {
        section = initialized;
        initialize(initialized);
    }
    static void WINAPI Enter(CRITICAL_SECTION* entered) {
        enter(entered);
        if (entered == section) calls.push_back("enter");
    }
    static void WINAPI Leave(CRITICAL_SECTION* left) {
        if (left == section) calls.push_back("leave");
        leave(left);
    }
    static BOOL WINAPI Destroy(HWND) {
        calls.push_back("DestroyWindow");
        return TRUE;
    }

    // Whether `use` entered the section and left it as often, never twice at a time.
    template <class Use>
    static bool Guards(Use&& use) {
        calls.clear();
        use();
        bool inside = false;
        for (const std::string& call : calls) {
            if ((call == "enter") == inside) return false;
            inside = !inside;
        }
        return !inside && !calls.empty();
    }
};

TEST_F(FrameworkAppModuleTest, EveryUseOfTheLoopsIsGuardedByTheModulesCriticalSection) {
    m_module.Term();
    {
        const ReplacedImport initialize("InitializeCriticalSection", &Sections::Initialize);
        Sections::initialize = initialize.Original<Sections::Function>();
        m_module.Init(::GetModuleHandleW(nullptr));
    }
    const ReplacedImport enter("EnterCriticalSection", &Sections::Enter);
    const ReplacedImport leave("LeaveCriticalSection", &Sections::Leave);
    Sections::enter = enter.Original<Sections::Function>();
    Sections::leave = leave.Original<Sections::Function>();
    CMessageLoop loop;
    EXPECT_TRUE(Sections::Guards([&] { m_module.AddMessageLoop(loop); })) << "adding";
    EXPECT_TRUE(Sections::Guards([&] { static_cast<void>(m_module.MessageLoop()); })) << "looking up";
    EXPECT_TRUE(Sections::Guards([&] { m_module.RemoveMessageLoop(); })) << "removing";
    const HWND window = NewWindow();
    EXPECT_TRUE(Sections::Guards([&] { m_module.AddNotificationWindow(window); })) << "adding a window";
    const ReplacedImport destroyWindow("DestroyWindow", &Sections::Destroy);
    Sections::calls.clear();
    Terminate();
    EXPECT_THAT(Sections::calls, ElementsAre("enter", "DestroyWindow", "leave"));
    destroyWindow.Original<BOOL WINAPI(HWND)>()(window);
}

}  // namespace
