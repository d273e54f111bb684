// Dialogs from templates: how a window finds its object, what its procedure answers, and how both end.
#include "framework/dialog.h"

#include "tests/support/replaced_imports.h"

#include "res/resource.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
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
        finalWindow = window;
        handleAtTheEnd = Handle();
        ++finalMessages;
        if (atTheEnd) atTheEnd();
    }
    void AskForDefaultProcessing() { SetMsgHandled(false); }

    std::map<UINT, Handler> handlers;
    std::vector<UINT> messages;
    std::function<void()> atTheEnd;
    int finalMessages = 0;
    HWND finalWindow = nullptr;
    HWND handleAtTheEnd = reinterpret_cast<HWND>(1);
};

class DialogWithoutTemplate : public CDialogImpl<DialogWithoutTemplate> {
public:
    static constexpr UINT kTemplateId = 9999;
    bool ProcessWindowMessage(HWND, UINT, WPARAM, LPARAM, LRESULT&, DWORD) override { return false; }
};

class FrameworkDialogTest : public testing::Test {
protected:
    FrameworkDialogTest() { CAppModule::Instance().Init(::GetModuleHandleW(nullptr)); }
    ~FrameworkDialogTest() override {
        if (m_dialog.Handle()) ::DestroyWindow(m_dialog.Handle());
        CAppModule::Instance().Term();
    }

    LRESULT Send(UINT message) { return ::SendMessageW(m_dialog.Handle(), message, 0, 0); }

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
    EXPECT_EQ(m_dialog.finalMessages, 1);
    EXPECT_EQ(m_dialog.finalWindow, created);
    EXPECT_EQ(m_dialog.handleAtTheEnd, nullptr);
}

TEST_F(FrameworkDialogTest, AHandledMessagesResultIsTheWindowsAnswer) {
    m_dialog.handlers[kAsked] = [](LRESULT& result) { result = 77; };
    m_dialog.Create(nullptr);
    EXPECT_EQ(Send(kAsked), 77);
    EXPECT_EQ(TestDialog::DialogProc(m_dialog.Handle(), kAsked, 0, 0), TRUE);
    EXPECT_EQ(::GetWindowLongPtrW(m_dialog.Handle(), DWLP_MSGRESULT), 77);
    m_dialog.handlers[kAsked] = [](LRESULT&) {};
    EXPECT_EQ(TestDialog::DialogProc(m_dialog.Handle(), kAsked, 0, 0), TRUE);
    EXPECT_EQ(::GetWindowLongPtrW(m_dialog.Handle(), DWLP_MSGRESULT), 0) << "without a result it is zero";
}

TEST_F(FrameworkDialogTest, AnUnhandledMessageGetsDefaultProcessing) {
    m_dialog.Create(nullptr);
    EXPECT_EQ(TestDialog::DialogProc(m_dialog.Handle(), kAsked, 0, 0), FALSE);
    m_dialog.handlers[kAsked] = [&](LRESULT& result) {
        result = 77;
        m_dialog.AskForDefaultProcessing();
    };
    EXPECT_EQ(TestDialog::DialogProc(m_dialog.Handle(), kAsked, 0, 0), FALSE);
    EXPECT_EQ(Send(kAsked), 0);
}

TEST_F(FrameworkDialogTest, SomeMessagesReturnTheirResultDirectly) {
    m_dialog.Create(nullptr);
    ::SetWindowLongPtrW(m_dialog.Handle(), DWLP_MSGRESULT, 5);
    // WM_CTLCOLORMSGBOX to WM_CTLCOLORSTATIC are 0x132 to 0x138.
    for (const UINT message : {0x0039u, 0x002Eu, 0x002Fu, 0x0037u, 0x0132u, 0x0133u, 0x0134u, 0x0135u,
                               0x0136u, 0x0137u, 0x0138u}) {
        m_dialog.handlers[message] = [](LRESULT& result) { result = 0x1234; };
        EXPECT_EQ(TestDialog::DialogProc(m_dialog.Handle(), message, 0, 0), 0x1234) << "message " << message;
        EXPECT_EQ(::GetWindowLongPtrW(m_dialog.Handle(), DWLP_MSGRESULT), 5) << "message " << message;
    }
}

TEST_F(FrameworkDialogTest, WmInitDialogReturnsItsResultDirectly) {
    for (const LRESULT wanted : {0, 1}) {
        TestDialog dialog;
        dialog.handlers[WM_INITDIALOG] = [wanted](LRESULT& result) { result = wanted; };
        const HWND window = dialog.Create(nullptr);
        const auto parameter = ::GetWindowLongPtrW(window, DWLP_USER);
        EXPECT_EQ(TestDialog::DialogProc(window, WM_INITDIALOG, 0, parameter), wanted);
        ::DestroyWindow(window);
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
    EXPECT_EQ(TestDialog::DialogProc(m_dialog.Handle(), kAsked, 0, 0), FALSE);

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
    bool unbound = false;
    dialog->atTheEnd = [&] {
        unbound = ::GetWindowLongPtrW(window, DWLP_USER) == 0;
        dialog.reset();
    };
    ::DestroyWindow(window);
    EXPECT_TRUE(unbound) << "the window still carries the address";
    EXPECT_EQ(dialog, nullptr);
}

TEST_F(FrameworkDialogTest, AWindowThatOutlivesItsObjectHasNone) {
    auto dialog = std::make_unique<TestDialog>();
    dialog->handlers[kAsked] = [](LRESULT& result) { result = 77; };
    const HWND window = dialog->Create(nullptr);
    dialog.reset();
    EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_USER), 0);
    EXPECT_EQ(::SendMessageW(window, kAsked, 0, 0), 0);
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

TEST_F(FrameworkDialogTest, MessagesOfTwoDialogsReachTheirOwnObjects) {
    TestDialog other;
    m_dialog.handlers[kAsked] = [](LRESULT& result) { result = 1; };
    other.handlers[kAsked] = [](LRESULT& result) { result = 2; };
    m_dialog.Create(nullptr);
    other.Create(nullptr);
    EXPECT_EQ(Send(kAsked), 1);
    EXPECT_EQ(::SendMessageW(other.Handle(), kAsked, 0, 0), 2);
    ::DestroyWindow(other.Handle());
}

TEST_F(FrameworkDialogTest, WithoutItsTemplateADialogIsNotCreated) {
    DialogWithoutTemplate dialog;
    EXPECT_EQ(dialog.Create(nullptr), nullptr);
    EXPECT_EQ(dialog.DoModal(nullptr), -1);
}

TEST_F(FrameworkDialogTest, AModalDialogReturnsTheResultOfEndDialog) {
    m_dialog.handlers[WM_INITDIALOG] = [&](LRESULT& result) {
        result = TRUE;
        ::PostMessageW(m_dialog.Handle(), kAsked, 0, 0);
    };
    m_dialog.handlers[kAsked] = [&](LRESULT&) { ::EndDialog(m_dialog.Handle(), 4711); };
    EXPECT_EQ(m_dialog.DoModal(nullptr), 4711);
    EXPECT_EQ(m_dialog.finalMessages, 1);
    EXPECT_EQ(m_dialog.Handle(), nullptr);
}

int CountWindowsOfThisThread() {
    int count = 0;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND, LPARAM counter) -> BOOL {
            ++*reinterpret_cast<int*>(counter);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
}

TEST_F(FrameworkDialogTest, AWindowThatCannotCarryItsObjectIsDestroyed) {
    const int before = CountWindowsOfThisThread();
    const auto setLong = REPLACE_IMPORT(SetWindowLongPtrW, [](HWND, int, LONG_PTR) { return 0; });
    EXPECT_EQ(m_dialog.Create(nullptr), nullptr);
    EXPECT_EQ(m_dialog.Handle(), nullptr);
    EXPECT_EQ(CountWindowsOfThisThread(), before);
    const HWND owner =
        ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    m_dialog.DoModal(owner);  // returns: nobody could close it
    EXPECT_TRUE(::IsWindowEnabled(owner));
    ::DestroyWindow(owner);
    EXPECT_EQ(CountWindowsOfThisThread(), before);
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
