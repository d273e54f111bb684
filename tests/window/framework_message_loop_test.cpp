// The message loop: who sees a message in which order, what happens to it, when idle work is done, and how
// the loop ends.
#include "framework/message_loop.h"

#include "tests/support/call_text.h"
#include "tests/support/replaced_imports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Record = std::vector<std::string>;

MSG Message(UINT id) {
    MSG message = {};
    message.message = id;
    return message;
}

// A filter and an idle handler that writes down when it is asked.
class Participant final : public CMessageFilter, public CIdleHandler {
public:
    Participant(Record& record, std::string name, bool answer = false)
        : m_record(record), m_name(std::move(name)), m_answer(answer) {}
    bool FilterMessage(MSG& message) override {
        m_record.push_back(m_name + ' ' + Hex(message.message));
        return m_answer;
    }
    bool HandleIdle() override {
        m_record.push_back(m_name);
        return m_answer;
    }

private:
    Record& m_record;
    const std::string m_name;
    const bool m_answer;
};

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
// the queue is found empty. Behind the last is the quit message, with code 7. A message that is translated
// and then dispatched is written down by its number.
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
    // What the loop does with these entries, and that it ends with the quit message's code.
    Record RunWith(CMessageLoop& loop, std::deque<UINT> queued) {
        record.clear();
        entries = std::move(queued);
        EXPECT_EQ(loop.Run(), 7);
        return record;
    }

    Record record;
    std::deque<UINT> entries;

private:
    [[nodiscard]] bool IsEmptyNow() const { return !entries.empty() && entries.front() == kEmpty; }
    [[nodiscard]] MSG Next() const {
        MSG next = Message(entries.empty() ? WM_QUIT : entries.front());
        if (entries.empty()) next.wParam = 7;
        return next;
    }

    Replaced m_peek =
        REPLACE_IMPORT(PeekMessageW, [this](LPMSG message, HWND window, UINT first, UINT last, UINT flags) {
            EXPECT_EQ(std::tuple(window, first, last, flags), std::tuple(nullptr, 0u, 0u, PM_NOREMOVE));
            const bool isEmpty = IsEmptyNow();
            if (isEmpty) {
                entries.pop_front();
            } else {
                *message = Next();
            }
            return !isEmpty;
        });
    Replaced m_get = REPLACE_IMPORT(GetMessageW, [this](LPMSG message, HWND window, UINT first, UINT last) {
        EXPECT_EQ(std::tuple(window, first, last), std::tuple(nullptr, 0u, 0u));
        while (IsEmptyNow()) entries.pop_front();  // waits for the next burst
        const MSG next = Next();
        if (!entries.empty()) entries.pop_front();
        if (next.message == kError) return -1;
        *message = next;
        return next.message == WM_QUIT ? 0 : 1;
    });
    Replaced m_translate = REPLACE_IMPORT(TranslateMessage, [this](const MSG* message) {
        record.push_back("translate " + Hex(message->message));
        return FALSE;
    });
    Replaced m_dispatch = REPLACE_IMPORT(DispatchMessageW, [this](const MSG* message) {
        const std::string number = Hex(message->message);
        const bool isTranslated = !record.empty() && record.back() == "translate " + number;
        if (isTranslated) record.pop_back();
        record.push_back(isTranslated ? number : "dispatch " + number);
        return 0;
    });
};

TEST_F(FrameworkMessageLoopTest, FiltersAreAskedFromTheLastToTheFirstUntilOneConsumesTheMessage) {
    Participant first(record, "first"), second(record, "second"), third(record, "third");
    Participant consuming(record, "consuming", true), last(record, "last");
    CMessageLoop loop;
    EXPECT_THAT(Asked(loop), IsEmpty());
    for (Participant* const filter : {&first, &second, &third}) loop.AddMessageFilter(*filter);
    EXPECT_THAT(Asked(loop), ElementsAre("third 0x8000", "second 0x8000", "first 0x8000"));
    loop.RemoveMessageFilter(second);
    EXPECT_THAT(Asked(loop), ElementsAre("third 0x8000", "first 0x8000"));
    loop.AddMessageFilter(consuming);
    loop.AddMessageFilter(last);
    EXPECT_THAT(Asked(loop, true), ElementsAre("last 0x8000", "consuming 0x8000"));
}

TEST_F(FrameworkMessageLoopTest, IdleHandlersRunFirstToLastAndTheirResultsAreIgnored) {
    Participant first(record, "first", true), second(record, "second"), third(record, "third", true);
    CMessageLoop loop;
    for (Participant* const handler : {&first, &second, &third}) loop.AddIdleHandler(*handler);
    EXPECT_THAT(Asked(loop), ElementsAre("first", "second", "third"));
    EXPECT_FALSE(loop.RunIdleHandlers(7));
    loop.RemoveIdleHandler(first);
    EXPECT_THAT(Asked(loop), ElementsAre("second", "third"));
}

TEST_F(FrameworkMessageLoopTest, RemovingTakesOneEntryAndIgnoresAbsentOnes) {
    Participant known(record, "known"), absent(record, "absent");
    CMessageLoop loop;
    const auto remove = [&](Participant& participant) {
        loop.RemoveMessageFilter(participant);
        loop.RemoveIdleHandler(participant);
    };
    remove(absent);
    for (int i = 0; i < 2; ++i) {
        loop.AddMessageFilter(known);
        loop.AddIdleHandler(known);
    }
    remove(known);
    remove(absent);
    EXPECT_THAT(Asked(loop), ElementsAre("known 0x8000", "known"));
}

TEST_F(FrameworkMessageLoopTest, OnlyPaintingMouseMovesAndTheCaretsBlinkingDoNotResumeIdleWork) {
    const CMessageLoop loop;
    std::vector<UINT> silent;
    for (UINT id = 0; id <= 0xFFFF; ++id) {
        if (!loop.ResumesIdle(Message(id))) silent.push_back(id);
    }
    EXPECT_THAT(silent, ElementsAre(0x000Fu, 0x00A0u, 0x0118u, 0x0200u));
}

using FrameworkMessageLoopRunTest = FrameworkMessageLoopTest;

TEST_F(FrameworkMessageLoopRunTest, TranslatesThenDispatchesWhatNoFilterConsumes) {
    CMessageLoop loop;
    Participant filter(record, "filter");
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {WM_KEYDOWN}), ElementsAre("filter 0x100", "0x100"));
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
    EXPECT_THAT(RunWith(loop, {WM_KEYDOWN}), ElementsAre("0x100", "resumes 0x100"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesIdleWorkButNeitherTranslatesNorDispatchesAfterAConsumedMessage) {
    CountingLoop loop(record);
    Participant filter(record, "filter", true);
    loop.AddMessageFilter(filter);
    EXPECT_THAT(RunWith(loop, {kEmpty, WM_KEYDOWN, kEmpty}), ElementsAre("idle 0", "filter 0x100", "idle 0"));
}

TEST_F(FrameworkMessageLoopRunTest, DoesIdleWorkAfterEachBurstThatAsksForItUntilTheNextMessage) {
    static const struct {
        const char* name;
        std::deque<UINT> entries;
        Record record;
        int rounds = 1;
    } kCases[] = {
        {"nothing but the quit message", {}, {}},
        {"once after each burst",
         {kEmpty, WM_KEYDOWN, WM_KEYUP, WM_TIMER, kEmpty, WM_LBUTTONDOWN, kEmpty},
         {"idle 0", "0x100", "0x101", "0x113", "idle 0", "0x201", "idle 0"}},
        {"not after mouse moves and painting",
         {kEmpty, WM_MOUSEMOVE, WM_NCMOUSEMOVE, WM_PAINT, 0x0118, kEmpty, WM_MOUSEMOVE},
         {"idle 0", "0x200", "0xA0", "0xF", "0x118", "0x200"}},
        {"after one key among mouse moves",
         {WM_MOUSEMOVE, WM_KEYDOWN, WM_MOUSEMOVE, kEmpty},
         {"0x200", "0x100", "0x200", "idle 0"}},
        {"rounds counted from zero after each burst",
         {kEmpty, kEmpty, kEmpty, WM_KEYDOWN, kEmpty, kEmpty, kEmpty},
         {"idle 0", "idle 1", "idle 2", "0x100", "idle 0", "idle 1", "idle 2"},
         3},
        {"rounds that the next message ends", {kEmpty, WM_MOUSEMOVE}, {"idle 0", "0x200"}, 3},
        {"not after a fetch that fails", {kEmpty, kError, kError, kEmpty, WM_KEYDOWN}, {"idle 0", "0x100"}},
    };
    for (const auto& row : kCases) {
        CountingLoop loop(record, row.rounds);
        EXPECT_EQ(RunWith(loop, row.entries), row.record) << row.name;
    }
}

}  // namespace
