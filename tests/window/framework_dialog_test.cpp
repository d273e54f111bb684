// Dialogs from templates: how a window finds its object, what its procedure answers, and how both end.
#include "framework/dialog.h"

#include "tests/support/replaced_imports.h"

#include "res/resource.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace {

constexpr UINT kAsked = WM_APP + 1;
constexpr UINT kNested = WM_APP + 2;

// Answers the messages that a test names, by handlers that may ask for default processing.
class TestDialog : public CDialogImpl<TestDialog> {
public:
    static constexpr UINT kTemplateId = IDD_ABOUT;

    using Handler = std::function<void(LRESULT& result)>;

    bool ProcessWindowMessage(HWND window, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/,
                              LRESULT& result, DWORD section) override {
        EXPECT_EQ(section, 0u);
        EXPECT_EQ(window, Handle());
        const HandledFlagScope callersFlag(*this);
        messages.push_back(message);
        const auto found = handlers.find(message);
        return found != handlers.end() && Route([&] { found->second(result); });
    }
    void OnFinalMessage(HWND window) override {
        EXPECT_EQ(Handle(), nullptr);
        finalWindows.push_back(window);
        if (atTheEnd) atTheEnd();
    }
    void AskForDefaultProcessing() { SetMsgHandled(false); }

    std::map<UINT, Handler> handlers;
    std::vector<UINT> messages;
    std::function<void()> atTheEnd;
    std::vector<HWND> finalWindows;
};

class FrameworkDialogTest : public testing::Test {
protected:
    FrameworkDialogTest() { CAppModule::Instance().Init(::GetModuleHandleW(nullptr)); }
    ~FrameworkDialogTest() override {
        if (m_dialog.Handle()) ::DestroyWindow(m_dialog.Handle());
        CAppModule::Instance().Term();
    }

    LRESULT Send(UINT message) { return ::SendMessageW(m_dialog.Handle(), message, 0, 0); }
    // What the window's procedure itself answers. The object's address has a meaning to WM_INITDIALOG only.
    INT_PTR Answer(UINT message) {
        const HWND window = m_dialog.Handle();
        return TestDialog::DialogProc(window, message, 0, ::GetWindowLongPtrW(window, DWLP_USER));
    }
    [[nodiscard]] LONG_PTR StoredResult() const {
        return ::GetWindowLongPtrW(m_dialog.Handle(), DWLP_MSGRESULT);
    }

    TestDialog m_dialog;
};

TEST_F(FrameworkDialogTest, TheObjectHasItsWindowFromWmInitDialogUntilItsFinalMessage) {
    HWND during = nullptr;
    m_dialog.handlers[WM_INITDIALOG] = [&](LRESULT&) { during = m_dialog.Handle(); };
    const HWND created = m_dialog.Create(nullptr);
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(during, created);
    EXPECT_EQ(m_dialog.Handle(), created);
    EXPECT_EQ(m_dialog.messages.front(), static_cast<UINT>(WM_INITDIALOG));
    ::DestroyWindow(created);
    EXPECT_EQ(m_dialog.messages.back(), static_cast<UINT>(WM_NCDESTROY));
    EXPECT_EQ(m_dialog.finalWindows, std::vector{created});
}

TEST_F(FrameworkDialogTest, AHandledMessagesResultIsTheWindowsAnswer) {
    m_dialog.handlers[kAsked] = [](LRESULT& result) { result = 77; };
    m_dialog.Create(nullptr);
    EXPECT_EQ(Send(kAsked), 77);
    EXPECT_EQ(Answer(kAsked), TRUE);
    EXPECT_EQ(StoredResult(), 77);
    m_dialog.handlers[kAsked] = [](LRESULT&) {};
    EXPECT_EQ(Answer(kAsked), TRUE);
    EXPECT_EQ(StoredResult(), 0) << "without a result it is zero";
}

TEST_F(FrameworkDialogTest, AnUnhandledMessageGetsDefaultProcessing) {
    m_dialog.Create(nullptr);
    EXPECT_EQ(Answer(kAsked), FALSE);
    m_dialog.handlers[kAsked] = [&](LRESULT& result) {
        result = 77;
        m_dialog.AskForDefaultProcessing();
    };
    EXPECT_EQ(Answer(kAsked), FALSE);
    EXPECT_EQ(Send(kAsked), 0);
}

TEST_F(FrameworkDialogTest, SomeMessagesReturnTheirResultDirectly) {
    m_dialog.Create(nullptr);
    ::SetWindowLongPtrW(m_dialog.Handle(), DWLP_MSGRESULT, 5);
    // WM_INITDIALOG is 0x110; WM_CTLCOLORMSGBOX to WM_CTLCOLORSTATIC are 0x132 to 0x138.
    for (const UINT message : {0x0110u, 0x0039u, 0x002Eu, 0x002Fu, 0x0037u, 0x0132u, 0x0133u, 0x0134u,
                               0x0135u, 0x0136u, 0x0137u, 0x0138u}) {
        m_dialog.handlers[message] = [](LRESULT& result) { result = 0x1234; };
        EXPECT_EQ(Answer(message), 0x1234) << "message " << message;
        EXPECT_EQ(StoredResult(), 5) << "message " << message;
    }
}

TEST_F(FrameworkDialogTest, AHandlersFlagSurvivesAMessageThatItSends) {
    m_dialog.handlers[kNested] = [](LRESULT&) {};  // marks itself handled
    m_dialog.handlers[kAsked] = [&](LRESULT& result) {
        result = 77;
        m_dialog.AskForDefaultProcessing();
        Send(kNested);
    };
    m_dialog.Create(nullptr);
    EXPECT_EQ(Answer(kAsked), FALSE);

    m_dialog.handlers[kNested] = [&](LRESULT&) { m_dialog.AskForDefaultProcessing(); };
    m_dialog.handlers[kAsked] = [&](LRESULT& result) {
        Send(kNested);
        result = 77;
    };
    EXPECT_EQ(Send(kAsked), 77);
}

TEST_F(FrameworkDialogTest, TheObjectMayEndWithItsFinalMessage) {
    auto dialog = std::make_unique<TestDialog>();
    const HWND window = dialog->Create(nullptr);
    dialog->atTheEnd = [&] {
        EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_USER), 0) << "the window still carries the address";
        dialog.reset();
    };
    EXPECT_EQ(TestDialog::DialogProc(window, WM_NCDESTROY, 0, 0), FALSE);
    EXPECT_EQ(dialog, nullptr);
    ::DestroyWindow(window);
}

TEST_F(FrameworkDialogTest, AWindowThatOutlivesItsObjectHasNone) {
    auto dialog = std::make_unique<TestDialog>();
    const HWND window = dialog->Create(nullptr);
    dialog.reset();
    EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_USER), 0);
    EXPECT_EQ(TestDialog::DialogProc(window, kAsked, 0, 0), FALSE);
    ::DestroyWindow(window);
}

TEST_F(FrameworkDialogTest, AnotherWmInitDialogIsHandledAndBindsNothing) {
    int handled = 0;
    m_dialog.handlers[WM_INITDIALOG] = [&](LRESULT&) { ++handled; };
    const HWND window = m_dialog.Create(nullptr);
    TestDialog other;
    for (const LPARAM parameter : {LPARAM{0}, reinterpret_cast<LPARAM>(&other)}) {
        ::SendMessageW(window, WM_INITDIALOG, 0, parameter);
        EXPECT_EQ(m_dialog.Handle(), window);
        EXPECT_EQ(other.Handle(), nullptr);
    }
    EXPECT_EQ(handled, 3);
}

TEST_F(FrameworkDialogTest, AWindowThatCannotCarryItsObjectIsDestroyed) {
    std::vector<HWND> destroyed;
    const auto destroy = REPLACE_IMPORT(DestroyWindow, [&](auto original, HWND window) {
        EXPECT_TRUE(::IsWindow(window));
        destroyed.push_back(window);
        return original(window);
    });
    const auto setLong = REPLACE_IMPORT(SetWindowLongPtrW, [](HWND, int, LONG_PTR) { return 0; });
    EXPECT_EQ(m_dialog.Create(nullptr), nullptr);
    EXPECT_EQ(m_dialog.Handle(), nullptr);
    const HWND owner =
        ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(m_dialog.DoModal(owner), -1);
    EXPECT_TRUE(::IsWindowEnabled(owner));
    ASSERT_EQ(destroyed.size(), 2u);
    for (const HWND window : destroyed) EXPECT_FALSE(::IsWindow(window));
    ::DestroyWindow(owner);
    EXPECT_TRUE(m_dialog.messages.empty());
}

TEST_F(FrameworkDialogTest, DialogsComeFromTheResourceModuleWithTheStandardProcedure) {
    const HWND parent = ::GetDesktopWindow();
    EXPECT_EQ(m_dialog.GetDialogProc(), &TestDialog::DialogProc);
    const auto expectRequest = [&](HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM) {
        EXPECT_EQ(module, ::GetModuleHandleW(nullptr));
        EXPECT_EQ(name, MAKEINTRESOURCEW(IDD_ABOUT));
        EXPECT_EQ(owner, parent);
        EXPECT_EQ(procedure, &TestDialog::DialogProc);
    };
    const auto create = REPLACE_IMPORT(CreateDialogParamW, [&](auto /*original*/, auto... request) {
        expectRequest(request...);
        return reinterpret_cast<HWND>(0x100);
    });
    const auto run = REPLACE_IMPORT(DialogBoxParamW, [&](auto /*original*/, auto... request) {
        expectRequest(request...);
        return 12;
    });
    EXPECT_EQ(m_dialog.Create(parent), nullptr) << "a dialog that is already destroyed";
    EXPECT_EQ(m_dialog.DoModal(parent), 12);
}

}  // namespace
