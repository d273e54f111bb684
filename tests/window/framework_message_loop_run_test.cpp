// The message loop at work: what happens to a message, when idle work is done, and how the loop ends.
#include "framework/message_loop.h"

#include "tests/support/replaced_imports.h"
#include "tests/window/framework_loop_parts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A message queue in place of the system's. Messages of one burst are there together; between two bursts the
// queue is found empty. Behind the last is the quit message, with code 7.
struct Queue {
    static constexpr UINT kEmpty = 0xFFFF0001;  // the next look finds nothing
    static constexpr UINT kError = 0xFFFF0002;  // the next fetch fails
    static inline std::deque<UINT> entries;
    static inline Record* record = nullptr;

    static BOOL WINAPI Peek(LPMSG message, HWND window, UINT first, UINT last, UINT flags) {
        EXPECT_EQ(window, nullptr);
        EXPECT_EQ(first, 0u);
        EXPECT_EQ(last, 0u);
        EXPECT_EQ(flags, static_cast<UINT>(PM_NOREMOVE));
        if (!entries.empty() && entries.front() == kEmpty) {
            entries.pop_front();
            return FALSE;
        }
        *message = Message(entries.empty() ? WM_QUIT : entries.front());
        return TRUE;
    }
    static BOOL WINAPI Get(LPMSG message, HWND window, UINT first, UINT last) {
        EXPECT_EQ(window, nullptr);
        EXPECT_EQ(first, 0u);
        EXPECT_EQ(last, 0u);
        while (!entries.empty() && entries.front() == kEmpty)
            entries.pop_front();  // waits for the next burst
        const UINT id = entries.empty() ? WM_QUIT : entries.front();
        if (!entries.empty()) entries.pop_front();
        if (id == kError) return -1;
        *message = Message(id);
        message->wParam = id == WM_QUIT ? 7 : 0;
        return id != WM_QUIT;
    }
    static BOOL WINAPI Translate(const MSG* message) {
        record->push_back("translate " + Hex(message->message));
        return FALSE;
    }
    static LRESULT WINAPI Dispatch(const MSG* message) {
        record->push_back("dispatch " + Hex(message->message));
        return 0;
    }
};

// Counts its idle rounds; asks for `rounds` of them after each burst.
class CountingLoop final : public CMessageLoop {
public:
    explicit CountingLoop(Record& record, int rounds = 1) : m_record(record), m_rounds(rounds) {}
    bool RunIdleHandlers(int idleCount) override {
        m_record.push_back("idle " + std::to_string(idleCount));
        return idleCount + 1 < m_rounds;
    }

private:
    Record& m_record;
    const int m_rounds;
};

class FrameworkMessageLoopRunTest : public testing::Test {
protected:
    FrameworkMessageLoopRunTest() { Queue::record = &m_record; }

    // What the loop does with these entries, and that it ends with the quit message's code.
    Record RunWith(CMessageLoop& loop, std::deque<UINT> entries) {
        Queue::entries = std::move(entries);
        EXPECT_EQ(loop.Run(), 7);
        return m_record;
    }

    Record m_record;
    ReplacedImport m_peek{"PeekMessageW", &Queue::Peek};
    ReplacedImport m_get{"GetMessageW", &Queue::Get};
    ReplacedImport m_translate{"TranslateMessage", &Queue::Translate};
    ReplacedImport m_dispatch{"DispatchMessageW", &Queue::Dispatch};
};

TEST_F(FrameworkMessageLoopRunTest, EndsWithTheQuitMessagesCode) {
    CountingLoop loop(m_record);
    EXPECT_THAT(RunWith(loop, {}), IsEmpty());
}

TEST_F(FrameworkMessageLoopRunTest, TranslatesThenDispatchesWhatNoFilterConsumes) {
    CMessageLoop loop;
    Filter filter(m_record, "filter");
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {WM_KEYDOWN}), ElementsAre("filter 100", "translate 100", "dispatch 100"));
}

TEST_F(FrameworkMessageLoopRunTest, NeitherTranslatesNorDispatchesWhatAFilterConsumes) {
    CMessageLoop loop;
    Filter filter(m_record, "filter", true);
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {WM_KEYDOWN}), ElementsAre("filter 100"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesIdleWorkOnceAfterEachBurst) {
    CountingLoop loop(m_record);
    EXPECT_THAT(
        RunWith(loop, {Queue::kEmpty, WM_KEYDOWN, WM_KEYUP, WM_TIMER, Queue::kEmpty, WM_LBUTTONDOWN,
                       Queue::kEmpty}),
        ElementsAre("idle 0", "translate 100", "dispatch 100", "translate 101", "dispatch 101",
                    "translate 113", "dispatch 113", "idle 0", "translate 201", "dispatch 201", "idle 0"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesNoIdleWorkAfterABurstOfMouseMovesAndPainting) {
    CountingLoop loop(m_record);
    EXPECT_THAT(RunWith(loop, {Queue::kEmpty, WM_MOUSEMOVE, WM_NCMOUSEMOVE, WM_PAINT, 0x0118, Queue::kEmpty,
                               WM_MOUSEMOVE}),
                ElementsAre("idle 0", "translate 200", "dispatch 200", "translate 0A0", "dispatch 0A0",
                            "translate 00F", "dispatch 00F", "translate 118", "dispatch 118", "translate 200",
                            "dispatch 200"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesIdleWorkAfterABurstWithOneKeyAmongMouseMoves) {
    CountingLoop loop(m_record);
    const Record done = RunWith(loop, {WM_MOUSEMOVE, WM_KEYDOWN, WM_MOUSEMOVE, Queue::kEmpty});
    EXPECT_EQ(done.back(), "idle 0");
}

TEST_F(FrameworkMessageLoopRunTest, CountsIdleRoundsFromZeroAfterEachBurst) {
    CountingLoop loop(m_record, 3);
    EXPECT_THAT(RunWith(loop, {Queue::kEmpty, Queue::kEmpty, Queue::kEmpty, WM_KEYDOWN, Queue::kEmpty,
                               Queue::kEmpty, Queue::kEmpty}),
                ElementsAre("idle 0", "idle 1", "idle 2", "translate 100", "dispatch 100", "idle 0", "idle 1",
                            "idle 2"));
}

TEST_F(FrameworkMessageLoopRunTest, AMessageEndsTheIdleRoundsOfTheBurstBefore) {
    CountingLoop loop(m_record, 3);
    EXPECT_THAT(RunWith(loop, {Queue::kEmpty, WM_MOUSEMOVE}),
                ElementsAre("idle 0", "translate 200", "dispatch 200"));
}

TEST_F(FrameworkMessageLoopRunTest, ConsumedMessagesResumeIdleWorkToo) {
    CountingLoop loop(m_record);
    Filter filter(m_record, "filter", true);
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {Queue::kEmpty, WM_KEYDOWN, Queue::kEmpty}),
                ElementsAre("idle 0", "filter 100", "idle 0"));
}

TEST_F(FrameworkMessageLoopRunTest, SkipsAFetchThatFails) {
    CountingLoop loop(m_record);
    Filter filter(m_record, "filter");
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {Queue::kEmpty, Queue::kError, Queue::kError, WM_KEYDOWN}),
                ElementsAre("idle 0", "filter 100", "translate 100", "dispatch 100"));
}

TEST_F(FrameworkMessageLoopRunTest, AFetchThatFailsDoesNotResumeIdleWork) {
    CountingLoop loop(m_record);
    EXPECT_THAT(RunWith(loop, {Queue::kEmpty, Queue::kError, Queue::kEmpty, WM_KEYDOWN}),
                ElementsAre("idle 0", "translate 100", "dispatch 100"));
}

TEST(FrameworkMessageLoopQueueTest, TheLoopOfARealQueueEndsWithTheCodeOfPostQuitMessage) {
    CMessageLoop loop;
    ::PostQuitMessage(-3);
    EXPECT_EQ(loop.Run(), -3);
}

}  // namespace
