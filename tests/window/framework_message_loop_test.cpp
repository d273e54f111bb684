// The message loop: who sees a message in which order, and what counts as idle work.
#include "framework/message_loop.h"

#include "tests/window/framework_loop_parts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using testing::ElementsAre;

TEST(FrameworkMessageLoopTest, FiltersAreAskedFromTheLastAddedToTheFirst) {
    Record asked;
    Filter first(asked, "first"), second(asked, "second"), third(asked, "third");
    CMessageLoop loop;
    loop.AddMessageFilter(first);
    loop.AddMessageFilter(second);
    loop.AddMessageFilter(third);
    MSG message = Message(WM_APP);
    EXPECT_FALSE(loop.FilterMessage(message));
    EXPECT_THAT(asked, ElementsAre("third 8000", "second 8000", "first 8000"));
}

TEST(FrameworkMessageLoopTest, TheFirstFilterThatConsumesAMessageEndsTheSearch) {
    Record asked;
    Filter first(asked, "first", true), second(asked, "second", true), third(asked, "third");
    CMessageLoop loop;
    loop.AddMessageFilter(first);
    loop.AddMessageFilter(second);
    loop.AddMessageFilter(third);
    MSG message = Message(WM_APP);
    EXPECT_TRUE(loop.FilterMessage(message));
    EXPECT_THAT(asked, ElementsAre("third 8000", "second 8000"));
}

TEST(FrameworkMessageLoopTest, NothingIsConsumedWithoutFilters) {
    CMessageLoop loop;
    MSG message = Message(WM_KEYDOWN);
    EXPECT_FALSE(loop.FilterMessage(message));
}

TEST(FrameworkMessageLoopTest, RemovingAFilterClosesTheGap) {
    Record asked;
    Filter first(asked, "first"), second(asked, "second"), third(asked, "third");
    CMessageLoop loop;
    loop.AddMessageFilter(first);
    loop.AddMessageFilter(second);
    loop.AddMessageFilter(third);
    loop.RemoveMessageFilter(second);
    MSG message = Message(WM_APP);
    EXPECT_FALSE(loop.FilterMessage(message));
    EXPECT_THAT(asked, ElementsAre("third 8000", "first 8000"));
}

TEST(FrameworkMessageLoopTest, RemovingAnIdleHandlerClosesTheGap) {
    Record called;
    IdleHandler first(called, "first"), second(called, "second"), third(called, "third");
    CMessageLoop loop;
    loop.AddIdleHandler(first);
    loop.AddIdleHandler(second);
    loop.AddIdleHandler(third);
    loop.RemoveIdleHandler(first);
    loop.RunIdleHandlers(0);
    EXPECT_THAT(called, ElementsAre("second", "third"));
}

TEST(FrameworkMessageLoopTest, RemovingWhatWasAddedTwiceLeavesTheOther) {
    Record record;
    Filter filter(record, "filter");
    IdleHandler handler(record, "handler");
    CMessageLoop loop;
    for (int i = 0; i < 2; ++i) {
        loop.AddMessageFilter(filter);
        loop.AddIdleHandler(handler);
    }
    loop.RemoveMessageFilter(filter);
    loop.RemoveIdleHandler(handler);
    MSG message = Message(WM_APP);
    loop.FilterMessage(message);
    loop.RunIdleHandlers(0);
    EXPECT_THAT(record, ElementsAre("filter 8000", "handler"));
}

TEST(FrameworkMessageLoopTest, RemovingAnAbsentEntryIsIgnored) {
    Record record;
    Filter filter(record, "filter"), absentFilter(record, "absent");
    IdleHandler handler(record, "handler"), absentHandler(record, "absent");
    CMessageLoop loop;
    loop.RemoveMessageFilter(absentFilter);
    loop.RemoveIdleHandler(absentHandler);
    loop.AddMessageFilter(filter);
    loop.AddIdleHandler(handler);
    loop.RemoveMessageFilter(absentFilter);
    loop.RemoveIdleHandler(absentHandler);
    MSG message = Message(WM_APP);
    loop.FilterMessage(message);
    loop.RunIdleHandlers(0);
    EXPECT_THAT(record, ElementsAre("filter 8000", "handler"));
}

TEST(FrameworkMessageLoopTest, IdleHandlersRunFirstToLastAndTheirResultsAreIgnored) {
    Record called;
    IdleHandler first(called, "first", true), second(called, "second", false), third(called, "third", true);
    CMessageLoop loop;
    loop.AddIdleHandler(first);
    loop.AddIdleHandler(second);
    loop.AddIdleHandler(third);
    EXPECT_FALSE(loop.RunIdleHandlers(0));
    EXPECT_FALSE(loop.RunIdleHandlers(7));
    EXPECT_THAT(called, ElementsAre("first", "second", "third", "first", "second", "third"));
}

TEST(FrameworkMessageLoopTest, OnlyPaintingMouseMovesAndTheCaretsBlinkingDoNotResumeIdleWork) {
    const CMessageLoop loop;
    std::vector<UINT> silent;
    for (UINT id = 0; id <= 0xFFFF; ++id) {
        if (!loop.ResumesIdle(Message(id))) silent.push_back(id);
    }
    EXPECT_THAT(silent, ElementsAre(0x000Fu, 0x00A0u, 0x0118u, 0x0200u));
}

}  // namespace
