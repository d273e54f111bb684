// The message loop: who sees a message in which order, what happens to it, when idle work is done, and how
// the loop ends.
#include "framework/message_loop.h"

#include "tests/support/replaced_imports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Record = std::vector<std::string>;

std::string Hex(UINT message) {
    char text[8];
    ::wsprintfA(text, "%03X", message);
    return text;
}

MSG Message(UINT id) {
    MSG message = {};
    message.message = id;
    return message;
}

// Filters and idle handlers that write down when they are asked.
class Filter final : public CMessageFilter {
public:
    Filter(Record& record, std::string name, bool consumes = false)
        : m_record(record), m_name(std::move(name)), m_consumes(consumes) {}
    bool FilterMessage(MSG& message) override {
        m_record.push_back(m_name + ' ' + Hex(message.message));
        return m_consumes;
    }

private:
    Record& m_record;
    const std::string m_name;
    const bool m_consumes;
};

class IdleHandler final : public CIdleHandler {
public:
    IdleHandler(Record& record, std::string name, bool result = false)
        : m_record(record), m_name(std::move(name)), m_result(result) {}
    bool HandleIdle() override {
        m_record.push_back(m_name);
        return m_result;
    }

private:
    Record& m_record;
    const std::string m_name;
    const bool m_result;
};

class FrameworkMessageLoopTest : public testing::Test {
protected:
    // What the loop's filters and idle handlers do with a message and an idle pass.
    Record Asked(CMessageLoop& loop, bool consumed = false) {
        record.clear();
        MSG message = Message(WM_APP);
        EXPECT_EQ(loop.FilterMessage(message), consumed);
        EXPECT_FALSE(loop.RunIdleHandlers(0));
        return record;
    }

    Record record;
};

TEST_F(FrameworkMessageLoopTest, FiltersAreAskedFromTheLastToTheFirstUntilOneConsumesTheMessage) {
    Filter first(record, "first"), second(record, "second"), third(record, "third");
    Filter consuming(record, "consuming", true), last(record, "last");
    CMessageLoop loop;
    EXPECT_THAT(Asked(loop), IsEmpty());
    for (Filter* const filter : {&first, &second, &third}) loop.AddMessageFilter(*filter);
    EXPECT_THAT(Asked(loop), ElementsAre("third 8000", "second 8000", "first 8000"));
    loop.RemoveMessageFilter(second);
    EXPECT_THAT(Asked(loop), ElementsAre("third 8000", "first 8000"));
    loop.AddMessageFilter(consuming);
    loop.AddMessageFilter(last);
    EXPECT_THAT(Asked(loop, true), ElementsAre("last 8000", "consuming 8000"));
}

TEST_F(FrameworkMessageLoopTest, IdleHandlersRunFirstToLastAndTheirResultsAreIgnored) {
    IdleHandler first(record, "first", true), second(record, "second", false), third(record, "third", true);
    CMessageLoop loop;
    for (IdleHandler* const handler : {&first, &second, &third}) loop.AddIdleHandler(*handler);
    EXPECT_THAT(Asked(loop), ElementsAre("first", "second", "third"));
    EXPECT_FALSE(loop.RunIdleHandlers(7));
    loop.RemoveIdleHandler(first);
    EXPECT_THAT(Asked(loop), ElementsAre("second", "third"));
}

TEST_F(FrameworkMessageLoopTest, RemovingTakesOneEntryAndIgnoresAbsentOnes) {
    Filter filter(record, "filter"), absentFilter(record, "absent");
    IdleHandler handler(record, "handler"), absentHandler(record, "absent");
    CMessageLoop loop;
    loop.RemoveMessageFilter(absentFilter);
    loop.RemoveIdleHandler(absentHandler);
    for (int i = 0; i < 2; ++i) {
        loop.AddMessageFilter(filter);
        loop.AddIdleHandler(handler);
    }
    loop.RemoveMessageFilter(filter);
    loop.RemoveIdleHandler(handler);
    loop.RemoveMessageFilter(absentFilter);
    loop.RemoveIdleHandler(absentHandler);
    EXPECT_THAT(Asked(loop), ElementsAre("filter 8000", "handler"));
}

TEST_F(FrameworkMessageLoopTest, OnlyPaintingMouseMovesAndTheCaretsBlinkingDoNotResumeIdleWork) {
    const CMessageLoop loop;
    std::vector<UINT> silent;
    for (UINT id = 0; id <= 0xFFFF; ++id) {
        if (!loop.ResumesIdle(Message(id))) silent.push_back(id);
    }
    EXPECT_THAT(silent, ElementsAre(0x000Fu, 0x00A0u, 0x0118u, 0x0200u));
}

constexpr UINT kEmpty = 0xFFFF0001;  // the next look finds nothing
constexpr UINT kError = 0xFFFF0002;  // the next fetch fails

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

// With a message queue in place of the system's. Messages of one burst are there together; between two bursts
// the queue is found empty. Behind the last is the quit message, with code 7.
class FrameworkMessageLoopRunTest : public testing::Test {
protected:
    // What the loop does with these entries, and that it ends with the quit message's code.
    Record RunWith(CMessageLoop& loop, std::deque<UINT> queued) {
        entries = std::move(queued);
        EXPECT_EQ(loop.Run(), 7);
        return record;
    }

    Record record;
    std::deque<UINT> entries;

private:
    static void ExpectAnyMessage(HWND window, UINT first, UINT last) {
        EXPECT_EQ(window, nullptr);
        EXPECT_EQ(first, 0u);
        EXPECT_EQ(last, 0u);
    }
    BOOL Fetch(MSG& message) {
        while (!entries.empty() && entries.front() == kEmpty)
            entries.pop_front();  // waits for the next burst
        const UINT id = entries.empty() ? WM_QUIT : entries.front();
        if (!entries.empty()) entries.pop_front();
        if (id == kError) return -1;
        message = Message(id);
        message.wParam = id == WM_QUIT ? 7 : 0;
        return id != WM_QUIT;
    }

    std::unique_ptr<ReplacedImport> m_peek = Replace<decltype(::PeekMessageW)>(
        "PeekMessageW", [this](LPMSG message, HWND window, UINT first, UINT last, UINT flags) {
            ExpectAnyMessage(window, first, last);
            EXPECT_EQ(flags, static_cast<UINT>(PM_NOREMOVE));
            if (!entries.empty() && entries.front() == kEmpty) {
                entries.pop_front();
                return FALSE;
            }
            *message = Message(entries.empty() ? WM_QUIT : entries.front());
            return TRUE;
        });
    std::unique_ptr<ReplacedImport> m_get = Replace<decltype(::GetMessageW)>(
        "GetMessageW", [this](LPMSG message, HWND window, UINT first, UINT last) {
            ExpectAnyMessage(window, first, last);
            return Fetch(*message);
        });
    std::unique_ptr<ReplacedImport> m_translate =
        Replace<decltype(::TranslateMessage)>("TranslateMessage", [this](const MSG* message) {
            record.push_back("translate " + Hex(message->message));
            return FALSE;
        });
    std::unique_ptr<ReplacedImport> m_dispatch =
        Replace<decltype(::DispatchMessageW)>("DispatchMessageW", [this](const MSG* message) {
            record.push_back("dispatch " + Hex(message->message));
            return 0;
        });
};

TEST_F(FrameworkMessageLoopRunTest, EndsWithTheQuitMessagesCode) {
    CountingLoop loop(record);
    EXPECT_THAT(RunWith(loop, {}), IsEmpty());
}

TEST_F(FrameworkMessageLoopRunTest, TranslatesThenDispatchesWhatNoFilterConsumes) {
    CMessageLoop loop;
    Filter filter(record, "filter");
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {WM_KEYDOWN}), ElementsAre("filter 100", "translate 100", "dispatch 100"));
}

TEST_F(FrameworkMessageLoopRunTest, AsksForMoreIdleWorkWhenAMessageHasBeenDispatched) {
    struct AskingLoop : CMessageLoop {
        explicit AskingLoop(Record& asked) : record(asked) {}
        bool ResumesIdle(const MSG& message) const override {
            record.push_back("resumes " + Hex(message.message));
            return false;
        }
        Record& record;
    } loop(record);
    EXPECT_THAT(RunWith(loop, {WM_KEYDOWN}), ElementsAre("translate 100", "dispatch 100", "resumes 100"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesIdleWorkButNeitherTranslatesNorDispatchesAfterAConsumedMessage) {
    CountingLoop loop(record);
    Filter filter(record, "filter", true);
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {kEmpty, WM_KEYDOWN, kEmpty}), ElementsAre("idle 0", "filter 100", "idle 0"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesIdleWorkOnceAfterEachBurst) {
    CountingLoop loop(record);
    EXPECT_THAT(
        RunWith(loop, {kEmpty, WM_KEYDOWN, WM_KEYUP, WM_TIMER, kEmpty, WM_LBUTTONDOWN, kEmpty}),
        ElementsAre("idle 0", "translate 100", "dispatch 100", "translate 101", "dispatch 101",
                    "translate 113", "dispatch 113", "idle 0", "translate 201", "dispatch 201", "idle 0"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesNoIdleWorkAfterABurstOfMouseMovesAndPainting) {
    CountingLoop loop(record);
    EXPECT_THAT(RunWith(loop, {kEmpty, WM_MOUSEMOVE, WM_NCMOUSEMOVE, WM_PAINT, 0x0118, kEmpty, WM_MOUSEMOVE}),
                ElementsAre("idle 0", "translate 200", "dispatch 200", "translate 0A0", "dispatch 0A0",
                            "translate 00F", "dispatch 00F", "translate 118", "dispatch 118", "translate 200",
                            "dispatch 200"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesIdleWorkAfterABurstWithOneKeyAmongMouseMoves) {
    CountingLoop loop(record);
    EXPECT_EQ(RunWith(loop, {WM_MOUSEMOVE, WM_KEYDOWN, WM_MOUSEMOVE, kEmpty}).back(), "idle 0");
}

TEST_F(FrameworkMessageLoopRunTest, CountsIdleRoundsFromZeroAfterEachBurst) {
    CountingLoop loop(record, 3);
    EXPECT_THAT(RunWith(loop, {kEmpty, kEmpty, kEmpty, WM_KEYDOWN, kEmpty, kEmpty, kEmpty}),
                ElementsAre("idle 0", "idle 1", "idle 2", "translate 100", "dispatch 100", "idle 0", "idle 1",
                            "idle 2"));
}

TEST_F(FrameworkMessageLoopRunTest, EndsTheIdleRoundsOfABurstWithTheNextMessage) {
    CountingLoop loop(record, 3);
    EXPECT_THAT(RunWith(loop, {kEmpty, WM_MOUSEMOVE}),
                ElementsAre("idle 0", "translate 200", "dispatch 200"));
}

TEST_F(FrameworkMessageLoopRunTest, SkipsAFetchThatFailsWithoutIdleWork) {
    CountingLoop loop(record);
    Filter filter(record, "filter");
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {kEmpty, kError, kError, kEmpty, WM_KEYDOWN}),
                ElementsAre("idle 0", "filter 100", "translate 100", "dispatch 100"));
}

TEST(FrameworkMessageLoopQueueTest, TheLoopOfARealQueueEndsWithTheCodeOfPostQuitMessage) {
    CMessageLoop loop;
    ::PostQuitMessage(-3);
    EXPECT_EQ(loop.Run(), -3);
}

}  // namespace
