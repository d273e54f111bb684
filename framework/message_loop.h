// The message loop of a thread that owns windows, and those who take part in it.
#pragma once

#include <windows.h>

#include <algorithm>
#include <vector>

// Sees every message before it is translated and dispatched.
class CMessageFilter {
public:
    // True when the message was consumed.
    virtual bool FilterMessage(MSG& message) = 0;

protected:
    ~CMessageFilter() = default;
};

// Is called when the thread has run out of messages.
class CIdleHandler {
public:
    virtual bool HandleIdle() = 0;  // the result has no meaning to the loop

protected:
    ~CIdleHandler() = default;
};

// Only its own thread touches a loop. Filters and handlers are borrowed.
class CMessageLoop {
public:
    CMessageLoop() = default;
    CMessageLoop(const CMessageLoop&) = delete;
    CMessageLoop& operator=(const CMessageLoop&) = delete;
    virtual ~CMessageLoop() = default;

    // Asks the filters, the last added first, until one consumes the message.
    virtual bool FilterMessage(MSG& message);
    // Calls every idle handler once, the first added first. True would ask for another round at once.
    virtual bool RunIdleHandlers(int idleCount);
    // Whether idle work is due again after this message. Mouse moves, painting and the caret's blinking
    // change nothing that idle work looks at.
    [[nodiscard]] virtual bool ResumesIdle(const MSG& message) const;

    void AddMessageFilter(CMessageFilter& filter) { m_filters.push_back(&filter); }
    void RemoveMessageFilter(CMessageFilter& filter) { RemoveFirst(m_filters, &filter); }
    void AddIdleHandler(CIdleHandler& handler) { m_idleHandlers.push_back(&handler); }
    void RemoveIdleHandler(CIdleHandler& handler) { RemoveFirst(m_idleHandlers, &handler); }

    // Runs until the quit message and returns its code.
    int Run();

private:
    template <class Taker>
    static void RemoveFirst(std::vector<Taker*>& takers, Taker* taker) {
        const auto found = std::find(takers.begin(), takers.end(), taker);
        if (found != takers.end()) takers.erase(found);
    }

    std::vector<CMessageFilter*> m_filters;
    std::vector<CIdleHandler*> m_idleHandlers;
    MSG m_message = {};
};
