// Sees every call that the program makes to an imported function: writes it down, makes a chosen one fail, or
// acts at one. Calls of the thread that runs the program are "ui", those of all its other threads "worker".
#pragma once

#include "tests/equipment/system_lock.h"
#include "tests/faults/harness/call_label.h"

#include <windows.h>

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <vector>

// Calls of a run are texts with their role, their label, and how often it came: "worker SetTimer main 2 #1".
// The name of the function in one of them.
[[nodiscard]] std::string FunctionOf(const std::string& call);

class CallWatch {
public:
    // Who is "ui" from now on.
    void SetUiThread(DWORD threadId) { m_uiThread = threadId; }

    // Calls are counted, and fail, only between Begin and End.
    void Begin();
    void End() { m_counting = false; }
    // Goes on counting after End.
    void Resume() { m_counting = true; }
    [[nodiscard]] bool IsCounting() const { return m_counting; }

    // Chosen before Begin: this call fails, and is the only one that does.
    void FailAt(std::string call) { m_failAt = std::move(call); }
    [[nodiscard]] bool Failed() const { return m_failed; }

    // Runs `action` on the calling thread before the `nth` call from now with this label, without its role
    // when `label` has none. Counted whether or not Begin was called.
    void At(std::string label, int nth, std::function<void()> action);

    // What was counted since Begin, in the order of the calls. Functions that cannot fail are left out.
    [[nodiscard]] std::vector<std::string> Counted() const;

    // Called for each call. Null, or the function that the call goes to in place of the real one.
    [[nodiscard]] void* Route(const std::string& function, SavedRegisters registers);

    // Something of the test's own that actions can be set at, by the name that it gets as a label.
    void Happens(const std::string& what);

private:
    struct Action {
        std::string label;
        int callsLeft;
        std::function<void()> run;
    };

    [[nodiscard]] const char* Role() const {
        return ::GetCurrentThreadId() == m_uiThread ? "ui " : "worker ";
    }
    [[nodiscard]] bool Count(const std::string& label);
    void RunAction(const std::string& role, const std::string& label);

    mutable SystemLock m_lock;
    std::atomic<DWORD> m_uiThread{0};
    std::atomic<bool> m_counting{false};
    std::atomic<bool> m_failed{false};
    std::string m_failAt;  // empty: none
    std::map<std::string, int> m_counts;
    std::vector<std::string> m_calls;
    std::vector<Action> m_actions;
    std::atomic<bool> m_hasActions{false};
};

// What the test itself makes the program do meanwhile does not count.
class UncountedScope {
public:
    explicit UncountedScope(CallWatch& watch) : m_watch(watch), m_counted(watch.IsCounting()) {
        m_watch.End();
    }
    UncountedScope(const UncountedScope&) = delete;
    UncountedScope& operator=(const UncountedScope&) = delete;
    ~UncountedScope() {
        if (m_counted) m_watch.Resume();
    }

private:
    CallWatch& m_watch;
    const bool m_counted;
};
