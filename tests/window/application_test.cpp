// The life of the user-interface thread: the dialog's creation, the loop, and the code that comes out at the
// end.
#include "ui/application.h"

#include "tests/window/forwarding_import.h"
#include "tests/window/main_window_fixture.h"

#include <filesystem>
#include <functional>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// What happens once the dialog is shown. It stays hidden; the test acts in its place.
struct Shown {
    static inline std::vector<std::string> calls;
    static inline std::function<void(HWND dialog)> then;

    static BOOL WINAPI Show(HWND window, int command) {
        if (!window) return FALSE;  // a dialog that closed itself
        if (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) return original<&Show>(window, command);
        calls.push_back("show " + std::to_string(command));
        if (then) then(window);
        return FALSE;
    }
    static HWND WINAPI Refuse(HINSTANCE, LPCWSTR name, HWND parent, DLGPROC, LPARAM) {
        calls.push_back("create " + std::to_string(reinterpret_cast<ULONG_PTR>(name)) +
                        (parent ? " with a parent" : " without parent"));
        return nullptr;
    }
};

class ApplicationTest : public MainWindowFixture {
protected:
    ApplicationTest() {
        CAppModule::Instance().RemoveMessageLoop();  // the fixture's
        Shown::calls.clear();
        Shown::then = [](HWND window) { ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0); };
    }
    ~ApplicationTest() override {
        MSG message = {};
        EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE))
            << "a quit message is left";
    }

private:
    std::unique_ptr<ReplacedImport> m_show = ReplaceAndForward<&Shown::Show>("ShowWindow");
};

TEST_F(ApplicationTest, ShowsTheDialogAsToldAndEndsWithTwoWhenItIsQuit) {
    EXPECT_EQ(RunMainDialog(L"", SW_SHOWMINNOACTIVE), 2);
    EXPECT_THAT(Shown::calls, ElementsAre("show 7"));
    Shown::calls.clear();
    EXPECT_EQ(RunMainDialog(L"", SW_SHOWNORMAL), 2);
    EXPECT_THAT(Shown::calls, ElementsAre("show 1"));
}

TEST_F(ApplicationTest, TheCommandLineIsIgnored) {
    for (const wchar_t* const line :
         {L"", L"C:\\in\\a.pdf", L"/quit --help", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_EQ(RunMainDialog(line, SW_SHOW), 2);
    }
    EXPECT_THAT(Shown::calls, ElementsAre("show 5", "show 5", "show 5", "show 5"));
}

TEST_F(ApplicationTest, EscapeEndsItWithTwo) {
    Shown::then = [](HWND window) {
        ::PostMessageW(::GetDlgItem(window, IDC_EXTRA_OPTIONS), WM_KEYDOWN, VK_ESCAPE, 1);
    };
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
}

TEST_F(ApplicationTest, TheCloseBoxEndsItWithTwo) {
    Shown::then = [](HWND window) { ::PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); };
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
}

TEST_F(ApplicationTest, TheResultIsTheQuitMessagesCode) {
    Shown::then = [](HWND window) {
        ::DestroyWindow(window);
        ::PostQuitMessage(41);
    };
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 41);
}

TEST_F(ApplicationTest, TheThreadHasALoopAsLongAsTheDialogRuns) {
    CMessageLoop* during = nullptr;
    Shown::then = [&](HWND window) {
        during = CAppModule::Instance().MessageLoop();
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    };
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr);
    RunMainDialog(L"", SW_SHOW);
    EXPECT_NE(during, nullptr);
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr);
}

int g_focusedAtTheEnd = 0;
BOOL WINAPI NoteFocus(HWND window) {
    g_focusedAtTheEnd = ::GetDlgCtrlID(::GetFocus());
    return original<&NoteFocus>(window);
}

TEST_F(ApplicationTest, TheDialogTakesItsKeysFromTheLoop) {
    // Tab moves the focus only where the dialog filters the loop's messages.
    const auto destroy = ReplaceAndForward<&NoteFocus>("DestroyWindow");
    Shown::then = [](HWND window) {
        ::SetFocus(::GetDlgItem(window, IDC_ADD));
        ::PostMessageW(::GetDlgItem(window, IDC_ADD), WM_KEYDOWN, VK_TAB, 1);
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    };
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
    EXPECT_EQ(g_focusedAtTheEnd, IDC_CLEAR);
}

TEST_F(ApplicationTest, AcceleratorsAreInTheResourcesButNothingLoadsThem) {
    EXPECT_NE(::FindResourceW(nullptr, MAKEINTRESOURCEW(128), RT_ACCELERATOR), nullptr);
    for (const ImportSlot& slot : ImportSlots()) {
        EXPECT_TRUE(slot.name.find("Accelerator") == std::string::npos) << slot.name;
    }
}

TEST_F(ApplicationTest, ADialogThatCannotBeCreatedEndsItWithZeroInSilence) {
    const ReplacedImport create("CreateDialogParamW", &Shown::Refuse);
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 0);
    EXPECT_THAT(Shown::calls, ElementsAre("create 102 without parent"));
    EXPECT_THAT(calls.Calls(), IsEmpty());
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr);
}

TEST_F(ApplicationTest, ADialogThatClosedItselfWhileBeingCreatedEndsItWithItsCode) {
    // Some systems give no window then, others the handle of the one that was.
    const ReplacedImport create(
        "CreateDialogParamW", +[](HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM) WINAPI -> HWND {
            ::PostQuitMessage(2);
            return nullptr;
        });
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
    EXPECT_THAT(Shown::calls, IsEmpty());
}

// Windows gives the quit message when no posted message is left, whatever is asked for.
struct QueueOfWindows {
    static BOOL WINAPI Peek(LPMSG message, HWND window, UINT first, UINT last, UINT remove) {
        MSG other = {};
        if (first == WM_QUIT && original<&Peek>(&other, nullptr, 0, WM_QUIT - 1, PM_NOREMOVE)) return FALSE;
        return original<&Peek>(message, window, first, last, remove);
    }
};

TEST_F(ApplicationTest, MessagesPostedBeforeItClosedItselfDoNotHideItsCode) {
    const auto peek = ReplaceAndForward<&QueueOfWindows::Peek>("PeekMessageW");
    static int s_served = 0;
    s_served = 0;
    const ReplacedImport create(
        "CreateDialogParamW", +[](HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM) WINAPI -> HWND {
            const HWND other =
                ::CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
            ::SetWindowLongPtrW(other, GWLP_WNDPROC,
                                reinterpret_cast<LONG_PTR>(+[](HWND window, UINT message, WPARAM wParam,
                                                               LPARAM lParam) WINAPI -> LRESULT {
                                    if (message == WM_APP && ++s_served == 2) ::DestroyWindow(window);
                                    return ::DefWindowProcW(window, message, wParam, lParam);
                                }));
            ::PostMessageW(other, WM_APP, 0, 0);
            ::PostMessageW(other, WM_APP, 0, 0);
            ::PostQuitMessage(2);
            return nullptr;
        });
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
    EXPECT_EQ(s_served, 2) << "what others had to be told is lost";
}

TEST_F(ApplicationTest, AMissingConverterEndsItWithTwoAndNothingIsShown) {
    std::filesystem::remove(folder.Path() / "pdf2djvu.exe");
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
    EXPECT_THAT(calls.Calls(), ElementsAre(HasSubstr("pdf2djvu.exe est absent !")));
    EXPECT_THAT(Shown::calls, IsEmpty());
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr);
}

}  // namespace
