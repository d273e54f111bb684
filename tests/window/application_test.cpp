// The life of the user-interface thread: the dialog's creation, the loop, and the code that comes out at the
// end.
#include "ui/application.h"

#include "tests/window/main_window_fixture.h"

#include <filesystem>
#include <functional>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The dialog stays hidden: once it is to be shown, the test acts in its place.
class ApplicationTest : public MainWindowFixture {
protected:
    ApplicationTest() {
        CAppModule::Instance().RemoveMessageLoop();  // the fixture's
    }
    ~ApplicationTest() override {
        MSG message = {};
        EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE))
            << "a quit message is left";
    }

    std::vector<int> shown;  // commands
    std::function<void(HWND dialog)> then = [](HWND window) {
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    };

private:
    Replaced m_show = REPLACE_IMPORT(ShowWindow, [this](auto original, HWND window, int command) -> BOOL {
        if (!window) return FALSE;  // a dialog that closed itself
        if (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) return original(window, command);
        shown.push_back(command);
        then(window);
        return FALSE;
    });
};

TEST_F(ApplicationTest, ShowsTheDialogAsAskedWhateverTheCommandLineAndEndsWithTwoWhenItIsQuit) {
    for (const wchar_t* const line :
         {L"", L"C:\\in\\a.pdf", L"/quit --help", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_EQ(RunMainDialog(line, SW_SHOWMINNOACTIVE), 2);
        EXPECT_EQ(RunMainDialog(line, SW_SHOWNORMAL), 2);
    }
    EXPECT_THAT(shown, ElementsAre(7, 1, 7, 1, 7, 1, 7, 1));
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr) << "the thread has its loop no longer";
}

TEST_F(ApplicationTest, TheResultIsTheQuitMessagesCode) {
    then = [](HWND window) {
        ::DestroyWindow(window);
        ::PostQuitMessage(41);
    };
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 41);
}

TEST_F(ApplicationTest, TheDialogTakesItsKeysFromTheLoop) {
    // Tab moves the focus only where the dialog filters the loop's messages.
    int focusedAtTheEnd = 0;
    const auto destroy = REPLACE_IMPORT(DestroyWindow, [&](auto original, HWND window) {
        focusedAtTheEnd = ::GetDlgCtrlID(::GetFocus());
        return original(window);
    });
    then = [](HWND window) {
        ::SetFocus(::GetDlgItem(window, IDC_ADD));
        ::PostMessageW(::GetDlgItem(window, IDC_ADD), WM_KEYDOWN, VK_TAB, 1);
        ::PostMessageW(::GetDlgItem(window, IDC_CLEAR), WM_KEYDOWN, VK_ESCAPE, 1);
    };
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
    EXPECT_EQ(focusedAtTheEnd, IDC_CLEAR);
}

TEST_F(ApplicationTest, AcceleratorsAreInTheResourcesButNothingLoadsThem) {
    EXPECT_NE(::FindResourceW(nullptr, MAKEINTRESOURCEW(128), RT_ACCELERATOR), nullptr);
    for (const ImportSlot& slot : ImportSlots()) {
        EXPECT_TRUE(slot.name.find("Accelerator") == std::string::npos) << slot.name;
    }
}

TEST_F(ApplicationTest, ADialogThatCannotBeCreatedEndsItWithZeroInSilence) {
    const auto create =
        REPLACE_IMPORT(CreateDialogParamW, [](HINSTANCE, LPCWSTR name, HWND parent, DLGPROC, LPARAM) -> HWND {
            EXPECT_EQ(name, MAKEINTRESOURCEW(IDD_MAIN));
            EXPECT_EQ(parent, nullptr);
            return nullptr;
        });
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 0);
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_THAT(calls.Calls(), IsEmpty());
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr);
}

// Some systems return no window for a dialog that closed itself, others its former handle. Windows returns
// the quit message when no posted message is left, whatever is asked for.
TEST_F(ApplicationTest, MessagesPostedBeforeItClosedItselfAreServedAndDoNotHideItsCode) {
    const auto peek = REPLACE_IMPORT(
        PeekMessageW, [](auto original, LPMSG message, HWND window, UINT first, UINT last, UINT remove) {
            MSG other = {};
            if (first == WM_QUIT && original(&other, nullptr, 0, WM_QUIT - 1, PM_NOREMOVE)) return FALSE;
            return original(message, window, first, last, remove);
        });
    static int s_served = 0;
    s_served = 0;
    const auto create =
        REPLACE_IMPORT(CreateDialogParamW, [](HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM) -> HWND {
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
    EXPECT_EQ(s_served, 2) << "messages of others are lost";
    EXPECT_THAT(shown, IsEmpty());
}

TEST_F(ApplicationTest, AMissingConverterEndsItWithTwoAndNothingIsShown) {
    std::filesystem::remove(folder.Path() / "pdf2djvu.exe");
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
    EXPECT_THAT(calls.Calls(), ElementsAre(HasSubstr("pdf2djvu.exe est absent !")));
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr);
}

}  // namespace
