// What the worker threads of a batch ask of the system, as short texts in the order in which they ask. A test
// can also act at a certain call, which is how it gets between two steps of a worker.
#pragma once

#include "tests/equipment/system_lock.h"

#include <windows.h>

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

class WorkerCalls {
public:
    // The calling thread is the one of the user interface. All others are workers.
    WorkerCalls() = default;
    WorkerCalls(const WorkerCalls&) = delete;
    WorkerCalls& operator=(const WorkerCalls&) = delete;

    // While one lives on the user-interface thread, what that thread does is done for a worker, which has
    // sent it a function to run; or, with 0, for itself again: what a window does about a worker's call.
    class OnBehalfOf {
    public:
        explicit OnBehalfOf(DWORD worker);
        OnBehalfOf(const OnBehalfOf&) = delete;
        OnBehalfOf& operator=(const OnBehalfOf&) = delete;
        ~OnBehalfOf();

    private:
        const DWORD m_before;
    };

    // Whether the calling thread is the one of the user interface.
    [[nodiscard]] bool IsUserInterface() const { return ::GetCurrentThreadId() == m_userInterface; }

    // To be called first by every replaced function. On a worker, writes `call` down and runs the action that
    // is due at it. False, with nothing done, inside an action and on the user-interface thread, unless that
    // works for a worker.
    bool Note(const std::string& call);

    // Runs `action` on the calling thread in the `nth` call from now (1 is the next) that begins with `call`,
    // before the call has its effect.
    void At(std::string call, int nth, std::function<void()> action);

    [[nodiscard]] std::vector<std::string> All() const;
    // The calls that begin with one of `beginnings`.
    [[nodiscard]] std::vector<std::string> Of(const std::vector<std::string>& beginnings) const;
    // The same of one worker thread alone.
    [[nodiscard]] std::vector<std::string> OfWorker(DWORD threadId,
                                                    const std::vector<std::string>& beginnings) const;
    [[nodiscard]] int Count(const std::string& beginning) const;
    // The calls from the first that begins with `first` up to the first after it that begins with `last`,
    // both included; nothing when one of them is missing.
    [[nodiscard]] std::vector<std::string> Between(std::string_view first, std::string_view last) const;

    // How records call a handle while it is open. Empty for one that has no name.
    void NameHandle(HANDLE handle, std::string name);
    [[nodiscard]] std::string HandleName(HANDLE handle) const;
    [[nodiscard]] bool HasHandle(const std::string& name) const;
    void ForgetHandle(HANDLE handle);

    // Whether calls are written down; the names of handles are in any case.
    bool keepsCalls = true;

private:
    struct Call {
        DWORD threadId;
        std::string text;
    };
    struct Action {
        std::string call;
        int callsLeft;
        std::function<void()> run;
    };

    const DWORD m_userInterface = ::GetCurrentThreadId();
    mutable SystemLock m_lock;
    std::vector<Call> m_calls;
    std::vector<Action> m_actions;
    std::map<HANDLE, std::string> m_names;
};
