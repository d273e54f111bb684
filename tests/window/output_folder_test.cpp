// The folder browser, and the folder that is opened as the destination.
#include "tests/window/main_window_fixture.h"
#include "tests/window/path_steps.h"
#include "tests/window/scripted_shell.h"
#include "tests/window/watched_window.h"

#include <objbase.h>
#include <shlobj.h>

#include <fstream>
#include <optional>
#include <tuple>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The user chooses `path`; without one, something that is no folder of the file system when `chooses`, else
// nothing. The item list is the test's and its release written down.
class OutputFolderBrowseTest : public MainWindowFixture {
protected:
    OutputFolderBrowseTest() {
        Create();
        Check(IDC_OUTPUT_FOLDER_CHECK);
        ::EnableWindow(Control(IDC_BROWSE), TRUE);
    }

    static inline const auto kItemList = reinterpret_cast<PIDLIST_ABSOLUTE>(0x5001);
    bool chooses = true;
    std::optional<std::wstring> path;
    std::vector<BROWSEINFOW> browsers;
    std::vector<int> callbackResults;
    std::vector<void*> freed;
    std::vector<const void*> converted;
    const WatchedWindow watched;  // in the browser's place
    int messagesToBrowser = -1;

private:
    PIDLIST_ABSOLUTE RunBrowser(BROWSEINFOW& browser) {
        browsers.push_back(browser);
        // All of the display name's 260 characters may be written to.
        std::fill_n(browser.pszDisplayName, MAX_PATH - 1, L'n');
        browser.pszDisplayName[MAX_PATH - 1] = L'\0';
        const int before = watched.Messages();
        for (const UINT event :
             {BFFM_INITIALIZED, BFFM_SELCHANGED, BFFM_VALIDATEFAILEDA, BFFM_VALIDATEFAILEDW, BFFM_IUNKNOWN}) {
            callbackResults.push_back(browser.lpfn(watched.Window(), event, 0, browser.lParam));
        }
        messagesToBrowser = watched.Messages() - before;
        return chooses ? kItemList : nullptr;
    }

    Replaced m_browse =
        REPLACE_IMPORT(SHBrowseForFolderW, [this](LPBROWSEINFOW browser) { return RunBrowser(*browser); });
    Replaced m_getPath =
        REPLACE_IMPORT(SHGetPathFromIDListW, [this](PCIDLIST_ABSOLUTE items, LPWSTR text) -> BOOL {
            converted.push_back(items);
            ::lstrcpynW(text, path ? path->c_str() : L"left over", MAX_PATH);
            return path.has_value();
        });
    Replaced m_free = REPLACE_IMPORT(CoTaskMemFree, [this](LPVOID block) { freed.push_back(block); });
};

TEST_F(OutputFolderBrowseTest, OpensForTheWindowOnTheWholeNamespaceWithFoldersOnlyAndPreselectsNone) {
    const HWND active = ::SetActiveWindow(watched.Window());
    Command(IDC_BROWSE, BN_CLICKED);
    CMainDlg without;
    LRESULT result = 0;
    EXPECT_TRUE(
        without.DispatchDialogMessage(nullptr, WM_COMMAND, MAKEWPARAM(IDC_BROWSE, BN_CLICKED), 0, result, 0));
    ::SetActiveWindow(active);
    ASSERT_THAT(browsers, SizeIs(2));
    const BROWSEINFOW& asked = browsers[0];
    EXPECT_EQ(std::tuple(asked.hwndOwner, asked.pidlRoot, asked.lpszTitle, asked.ulFlags, asked.iImage),
              std::tuple(Dialog(), nullptr, nullptr, 1u, 0));  // BIF_RETURNONLYFSDIRS
    EXPECT_THAT(callbackResults, Each(0));
    EXPECT_EQ(messagesToBrowser, 0);
    EXPECT_EQ(browsers[1].hwndOwner, watched.Window()) << "where there is no window";
}

TEST_F(OutputFolderBrowseTest, TheChosenFolderReplacesTheTextAndTheCheckBoxStays) {
    SetText(IDC_OUTPUT_FOLDER, L"C:\\avant");
    Check(IDC_OUTPUT_FOLDER_CHECK, false);
    path = L"D:\\Été\\sous dossier";
    Click(IDC_BROWSE);
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), L"D:\\Été\\sous dossier");
    EXPECT_FALSE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
    EXPECT_THAT(converted, ElementsAre(kItemList));
    EXPECT_THAT(freed, ElementsAre(kItemList));
}

TEST_F(OutputFolderBrowseTest, CancelOrAnItemThatIsNoFolderChangesNothing) {
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    const auto press = [this] { Click(IDC_BROWSE); };
    chooses = false;
    EXPECT_THAT(Recorded(press), IsEmpty());
    EXPECT_THAT(converted, IsEmpty());
    EXPECT_THAT(freed, Each(nullptr));  // to free nothing is allowed
    freed.clear();
    chooses = true;
    EXPECT_THAT(Recorded(press), IsEmpty());
    EXPECT_THAT(freed, ElementsAre(kItemList));
}

class OutputFolderOpenTest : public MainWindowFixture {
protected:
    OutputFolderOpenTest() { Create(); }

    void UseOutputFolder(const wchar_t* text) {
        Check(IDC_OUTPUT_FOLDER_CHECK);
        SetText(IDC_OUTPUT_FOLDER, text);
    }
    void OpenDestination() { Command(IDC_OPEN_DESTINATION, BN_CLICKED); }

    ScriptedShell shell;
};

TEST_F(OutputFolderOpenTest, TheOutputFolderIsOpenedByExplorerAsItIs) {
    const std::vector<std::wstring> texts = {L"D:\\Sortie", L"C:\\Mes documents\\DjVu",
                                             L"C:\\a, b,c", L"D:\\Sortie\\",
                                             L"Q:\\absent", L"..\\Sortie",
                                             L"  ",         L"\"C:\\a\""};
    for (const std::wstring& text : texts) {
        SCOPED_TRACE(Utf8(text));
        UseOutputFolder(text.c_str());
        OpenDestination();
        ExpectPlainRequest(shell.requests.back(), Dialog(), L"explorer.exe", text);
    }
    EXPECT_EQ(shell.Folders(), texts);
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(OutputFolderOpenTest, TheSystemsExplorerIsNamedInFullBesideAnother) {
    std::ofstream(folder.Path() / "explorer.exe") << "MZ";
    UseOutputFolder(L"D:\\Sortie");
    OpenDestination();
    wchar_t windowsFolder[MAX_PATH] = {};
    ::GetSystemWindowsDirectoryW(windowsFolder, MAX_PATH);
    ASSERT_THAT(shell.requests, SizeIs(1));
    EXPECT_EQ(shell.requests[0].file, std::wstring(windowsFolder) + L"\\explorer.exe");
}

TEST_F(OutputFolderOpenTest, AnEmptyOutputFolderOrNeitherAFolderNorASelectedRowDoesNothing) {
    Drop({L"C:\\in\\a.pdf"});
    SelectRow(0);
    UseOutputFolder(L"");
    OpenDestination();
    Check(IDC_OUTPUT_FOLDER_CHECK, false);
    ClearSelection();
    OpenDestination();
    EXPECT_THAT(shell.requests, IsEmpty());
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(OutputFolderOpenTest, WithoutAnOutputFolderItIsThatOfTheSelectedFile) {
    Drop({L"C:\\in\\a.pdf", L"D:\\Mes documents, 2026\\b c.pdf", L"C:\\a.pdf", L"C:\\v1.0 final\\a.pdf",
          L"\\\\serveur\\partage\\d\\a.pdf", L"C:\\Отчёт\\報告.pdf"});
    SetText(IDC_OUTPUT_FOLDER, L"E:\\ignored");
    for (const int row : {1, 0, 2, 3, 4, 5}) {
        SelectRow(row);
        OpenDestination();
    }
    EXPECT_THAT(shell.Folders(), ElementsAre(L"D:\\Mes documents, 2026", L"C:\\in", L"C:\\",
                                             L"C:\\v1.0 final", L"\\\\serveur\\partage\\d", L"C:\\Отчёт"));
}

TEST_F(OutputFolderOpenTest, ThePathLosesItsExtensionBeforeItsLastComponent) {
    Drop({L"C:\\in\\a.pdf"});
    SelectRow(0);
    programPath = L"C:\\Talvenor\\Talvenor.exe";
    PathSteps path;
    OpenDestination();
    // The last step is of the look for another explorer beside the program.
    EXPECT_THAT(path.steps, ElementsAre("PathRemoveExtensionW C:\\in\\a.pdf",
                                        "PathRemoveFileSpecW C:\\without\\extension",
                                        "PathRemoveFileSpecW C:\\Talvenor\\Talvenor.exe"));
    EXPECT_THAT(shell.Folders(), ElementsAre(L"C:\\folder"));
}

TEST_F(OutputFolderOpenTest, AFailureIsShownWithTheSystemsTextAndLeavesTheWindowAsItWas) {
    shell.error = ERROR_ACCESS_DENIED;
    UseOutputFolder(folder.Path().c_str());
    EXPECT_THAT(Recorded([&] { OpenDestination(); }),
                ElementsAre(MessageBoxCall("Erreur ShellExecute : erreur 5", "0x10")));
}

}  // namespace
