// A control whose messages pass through its owner's message map first: what reaches whom, and both orders of
// ending.
#include "framework/contained_window.h"

#include "tests/support/replaced_imports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace {

using testing::IsEmpty;

constexpr DWORD kSection = 5;
constexpr UINT kAsked = WM_APP + 1;  // no edit answers it

// Writes down what it is asked and answers as the test says.
class Owner : public CMessageMap {
public:
    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD section) override {
        last = {window, message, wParam, lParam, section};
        messages.push_back(message);
        if (answer) result = *answer;
        if (during) during(message);
        return handles;
    }

    std::tuple<HWND, UINT, WPARAM, LPARAM, DWORD> last;
    std::vector<UINT> messages;
    std::optional<LRESULT> answer = 0;
    bool handles = false;
    std::function<void(UINT)> during;
};

class FrameworkContainedWindowTest : public testing::Test {
protected:
    FrameworkContainedWindowTest() {
        m_edit =
            ::CreateWindowExW(0, L"Edit", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
        m_ownProcedure = Procedure();
        m_contained = std::make_unique<CContainedWindow>(m_owner, kSection);
    }
    ~FrameworkContainedWindowTest() override {
        m_contained.reset();
        if (::IsWindow(m_edit)) ::DestroyWindow(m_edit);
    }

    [[nodiscard]] LONG_PTR Procedure() const { return ::GetWindowLongPtrW(m_edit, GWLP_WNDPROC); }
    [[nodiscard]] std::wstring Text() const {
        wchar_t text[16] = {};
        ::GetWindowTextW(m_edit, text, ARRAYSIZE(text));
        return text;
    }
    LRESULT Type(wchar_t character) { return ::SendMessageW(m_edit, WM_CHAR, character, 1); }
    LRESULT Ask() { return ::SendMessageW(m_edit, kAsked, 11, -12); }

    Owner m_owner;
    HWND m_edit = nullptr;
    LONG_PTR m_ownProcedure = 0;
    std::unique_ptr<CContainedWindow> m_contained;
};

TEST_F(FrameworkContainedWindowTest, MessagesReachTheOwnersMapWithTheSectionsNumber) {
    int replaced = 0;
    const auto setLong =
        REPLACE_IMPORT(SetWindowLongPtrW, [&](auto original, HWND window, int index, LONG_PTR value) {
            if (index == GWLP_WNDPROC) ++replaced;
            return original(window, index, value);
        });
    ASSERT_TRUE(m_contained->SubclassWindow(m_edit));
    EXPECT_EQ(replaced, 1);
    EXPECT_NE(Procedure(), m_ownProcedure);
    EXPECT_EQ(m_contained->Handle(), m_edit);
    Ask();
    EXPECT_EQ(m_owner.last, std::tuple(m_edit, kAsked, 11u, -12, kSection));
}

TEST_F(FrameworkContainedWindowTest, AControlThatCannotBeSubclassedStaysAsItIs) {
    for (const int refused : {GWLP_USERDATA, GWLP_WNDPROC}) {
        CContainedWindow contained(m_owner, kSection);
        const auto set =
            REPLACE_IMPORT(SetWindowLongPtrW, [&](auto original, HWND control, int index, LONG_PTR value) {
                return index == refused ? 0 : original(control, index, value);
            });
        EXPECT_FALSE(contained.SubclassWindow(m_edit)) << refused;
        EXPECT_EQ(contained.Handle(), m_edit);
        EXPECT_EQ(Procedure(), m_ownProcedure);
    }
    Type(L'7');
    EXPECT_EQ(Text(), L"7");
}

TEST_F(FrameworkContainedWindowTest, AControlIsSubclassedOnce) {
    ASSERT_TRUE(m_contained->SubclassWindow(m_edit));
    EXPECT_TRUE(m_contained->SubclassWindow(m_edit));
    Type(L'7');
    EXPECT_EQ(Text(), L"7");
    m_contained.reset();
    EXPECT_EQ(Procedure(), m_ownProcedure);
}

// As when somebody who does not know of this owner stores something else with the control.
TEST_F(FrameworkContainedWindowTest, AControlWithoutItsObjectGetsDefaultProcessing) {
    m_contained->SubclassWindow(m_edit);
    ::SetWindowLongPtrW(m_edit, GWLP_USERDATA, 0);
    EXPECT_TRUE(::SendMessageW(m_edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"title")));
    wchar_t title[16] = {};
    ::InternalGetWindowText(m_edit, title, ARRAYSIZE(title));
    EXPECT_STREQ(title, L"title");
    EXPECT_THAT(m_owner.messages, IsEmpty());
}

TEST_F(FrameworkContainedWindowTest, WhatTheOwnerDoesNotHandleGoesToTheReplacedProcedure) {
    m_contained->SubclassWindow(m_edit);
    m_owner.answer = 99;  // does not count
    Type(L'7');
    EXPECT_EQ(Text(), L"7");
    EXPECT_EQ(::SendMessageW(m_edit, WM_GETTEXTLENGTH, 0, 0), 1);
}

TEST_F(FrameworkContainedWindowTest, WhatTheOwnerHandlesStaysWithItAndItsResultIsReturned) {
    m_contained->SubclassWindow(m_edit);
    m_owner.handles = true;
    m_owner.answer = 99;
    EXPECT_EQ(Type(L'7'), 99);
    m_owner.answer.reset();
    EXPECT_EQ(Ask(), 0) << "without a result it is zero";
    m_owner.handles = false;
    EXPECT_EQ(Text(), L"");
}

TEST_F(FrameworkContainedWindowTest, TheControlMayEndFirstAndItsProcedureGetsTheLastMessageToo) {
    UINT last = 0;
    const auto call = REPLACE_IMPORT(
        CallWindowProcW, [&](auto original, WNDPROC procedure, HWND window, UINT message, auto... arguments) {
            last = message;
            EXPECT_EQ(reinterpret_cast<LONG_PTR>(procedure), m_ownProcedure);
            return original(procedure, window, message, arguments...);
        });
    m_contained->SubclassWindow(m_edit);
    ::DestroyWindow(m_edit);
    EXPECT_EQ(last, static_cast<UINT>(WM_NCDESTROY));
    EXPECT_EQ(m_contained->Handle(), nullptr);
    int changes = 0;
    const auto setLong = REPLACE_IMPORT(SetWindowLongPtrW, [&](HWND, int, LONG_PTR) { return ++changes; });
    m_contained.reset();
    EXPECT_EQ(changes, 0) << "a window that is destroyed, and whose handle may be another's, was changed";
}

TEST_F(FrameworkContainedWindowTest, AWindowForMessagesIsGivenUpBeforeItIsDestroyed) {
    for (const bool isSubclassed : {true, false}) {
        SCOPED_TRACE(isSubclassed);
        const auto set =
            REPLACE_IMPORT(SetWindowLongPtrW, [&](auto original, HWND window, int index, LONG_PTR value) {
                return isSubclassed ? original(window, index, value) : 0;
            });
        m_contained->CreateMessageOnly();
        const HWND window = m_contained->Handle();
        ASSERT_TRUE(::IsWindow(window));
        ::SendMessageW(window, kAsked, 0, 0);
        EXPECT_EQ(m_owner.messages.size(), isSubclassed ? 1u : 0u);
        m_owner.messages.clear();
        const auto destroy = REPLACE_IMPORT(DestroyWindow, [&](auto original, HWND destroyed) {
            EXPECT_EQ(m_contained->Handle(), nullptr);
            return original(destroyed);
        });
        m_contained->Destroy();
        EXPECT_FALSE(::IsWindow(window));
        EXPECT_THAT(m_owner.messages, IsEmpty());
    }
}

TEST_F(FrameworkContainedWindowTest, TheObjectMayEndFirst) {
    m_contained->SubclassWindow(m_edit);
    m_contained.reset();
    m_owner.messages.clear();
    EXPECT_EQ(Procedure(), m_ownProcedure);
    EXPECT_EQ(::GetWindowLongPtrW(m_edit, GWLP_USERDATA), 0)
        << "the control keeps the address of a destroyed object";
    Type(L'7');
    EXPECT_EQ(Text(), L"7");
    EXPECT_THAT(m_owner.messages, IsEmpty());
}

TEST_F(FrameworkContainedWindowTest, TheObjectMayEndWhileItsMessageIsHandled) {
    m_contained->SubclassWindow(m_edit);
    m_owner.during = [this](UINT message) {
        if (message == WM_CHAR) m_contained.reset();
    };
    Type(L'7');
    EXPECT_EQ(Text(), L"7") << "the replaced procedure did not get the message";
    EXPECT_EQ(Procedure(), m_ownProcedure);
}

TEST_F(FrameworkContainedWindowTest, TheControlMayEndWhileItsMessageIsHandled) {
    m_contained->SubclassWindow(m_edit);
    m_owner.handles = true;
    m_owner.during = [this](UINT message) {
        if (message == kAsked) ::DestroyWindow(m_edit);
    };
    m_owner.answer = 5;
    EXPECT_EQ(Ask(), 5);
    EXPECT_EQ(m_contained->Handle(), nullptr);
}

}  // namespace
