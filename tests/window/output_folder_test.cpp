// The folder browser: how it is opened, and what becomes of the folder that was chosen.
#include "tests/window/main_window_fixture.h"
#include "tests/window/watched_window.h"

#include <objbase.h>
#include <shlobj.h>

#include <fstream>
#include <optional>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

// The user chooses `s_path`; without one, something that is no folder of the file system when `s_chooses`,
// else nothing. The item list is of the test and its release written down.
class OutputFolderBrowseTest : public MainWindowFixture {
protected:
    OutputFolderBrowseTest() {
        s_chooses = true;
        s_path.reset();
        s_browsers.clear();
        s_callbackResults.clear();
        s_freed.clear();
        s_converted.clear();
        s_watched.emplace();
        Create();
        ::CheckDlgButton(Dialog(), IDC_OUTPUT_FOLDER_CHECK, BST_CHECKED);
        ::EnableWindow(Control(IDC_BROWSE), TRUE);
    }
    ~OutputFolderBrowseTest() override { s_watched.reset(); }
    void Browse() { Click(IDC_BROWSE); }
    void Choose(const std::wstring& path) {
        s_path = path;
        Browse();
    }

    static inline const auto kItemList = reinterpret_cast<PIDLIST_ABSOLUTE>(0x5001);
    static inline bool s_chooses = true;
    static inline std::optional<std::wstring> s_path;
    static inline std::vector<BROWSEINFOW> s_browsers;
    static inline std::vector<int> s_callbackResults;
    static inline std::vector<void*> s_freed;
    static inline std::vector<const void*> s_converted;
    static inline std::optional<WatchedWindow> s_watched;  // in the browser's place
    static inline int s_toldBrowser = -1;                  // messages to it

private:
    static PIDLIST_ABSOLUTE WINAPI BrowseForFolder(LPBROWSEINFOW browser) {
        s_browsers.push_back(*browser);
        // All of the display name's 260 characters may be written to.
        std::fill_n(browser->pszDisplayName, MAX_PATH - 1, L'n');
        browser->pszDisplayName[MAX_PATH - 1] = L'\0';
        if (browser->lpfn) {
            const int before = s_watched->Messages();
            for (const UINT event : {BFFM_INITIALIZED, BFFM_SELCHANGED, BFFM_VALIDATEFAILEDA,
                                     BFFM_VALIDATEFAILEDW, BFFM_IUNKNOWN}) {
                s_callbackResults.push_back(browser->lpfn(s_watched->Window(), event, 0, browser->lParam));
            }
            s_toldBrowser = s_watched->Messages() - before;
        }
        return s_chooses ? kItemList : nullptr;
    }
    static BOOL WINAPI GetPath(PCIDLIST_ABSOLUTE items, LPWSTR path) {
        s_converted.push_back(items);
        if (!s_path) {
            ::lstrcpynW(path, L"left over", MAX_PATH);
            return FALSE;
        }
        ::lstrcpynW(path, s_path->c_str(), MAX_PATH);
        return TRUE;
    }
    static void WINAPI Free(LPVOID block) { s_freed.push_back(block); }

    ReplacedImport m_browse{"SHBrowseForFolderW", &BrowseForFolder};
    ReplacedImport m_getPath{"SHGetPathFromIDListW", &GetPath};
    ReplacedImport m_free{"CoTaskMemFree", &Free};
};

TEST_F(OutputFolderBrowseTest, OpensForTheWindowOnTheWholeNamespaceWithFoldersOnly) {
    Browse();
    ASSERT_EQ(s_browsers.size(), 1u);
    const BROWSEINFOW& browser = s_browsers[0];
    EXPECT_EQ(browser.hwndOwner, Dialog());
    EXPECT_EQ(browser.pidlRoot, nullptr);
    EXPECT_NE(browser.pszDisplayName, nullptr);
    EXPECT_EQ(browser.lpszTitle, nullptr);
    EXPECT_EQ(browser.ulFlags, 1u);  // BIF_RETURNONLYFSDIRS
    EXPECT_EQ(browser.iImage, 0);
    EXPECT_NE(browser.lpfn, nullptr);
}

TEST_F(OutputFolderBrowseTest, PreselectsNothing) {
    Browse();
    EXPECT_THAT(s_callbackResults, ElementsAre(0, 0, 0, 0, 0));
    EXPECT_EQ(s_toldBrowser, 0);
}

TEST_F(OutputFolderBrowseTest, OpensForTheActiveWindowWhereThereIsNoWindow) {
    const HWND active = ::GetActiveWindow();
    ::SetActiveWindow(s_watched->Window());
    CMainDlg without;
    LRESULT result = 0;
    EXPECT_TRUE(
        without.DispatchDialogMessage(nullptr, WM_COMMAND, MAKEWPARAM(IDC_BROWSE, BN_CLICKED), 0, result, 0));
    ::SetActiveWindow(active);
    ASSERT_EQ(s_browsers.size(), 1u);
    EXPECT_EQ(s_browsers[0].hwndOwner, s_watched->Window());
}

TEST_F(OutputFolderBrowseTest, TheChosenFolderReplacesTheText) {
    SetText(IDC_OUTPUT_FOLDER, L"C:\\avant");
    Choose(L"D:\\Été\\sous dossier");
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), L"D:\\Été\\sous dossier");
    EXPECT_THAT(s_converted, ElementsAre(kItemList));
    EXPECT_THAT(s_freed, ElementsAre(kItemList));
}

TEST_F(OutputFolderBrowseTest, AnExistingFolderEnablesTheDestinationAtOnce) {
    ASSERT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
    Choose(folder.Path().wstring());
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
}

TEST_F(OutputFolderBrowseTest, AFolderThatIsGoneAgainDisablesTheDestination) {
    Choose(folder.Path().wstring());
    Choose(folder.File(L"absent"));
    EXPECT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
}

TEST_F(OutputFolderBrowseTest, CancelChangesNothing) {
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    s_chooses = false;
    Browse();
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), folder.Path().wstring());
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    EXPECT_THAT(s_converted, IsEmpty());
    EXPECT_THAT(s_freed, Each(nullptr));  // to free nothing is allowed
}

TEST_F(OutputFolderBrowseTest, AnItemThatIsNoFolderChangesNothingAndIsFreed) {
    SetText(IDC_OUTPUT_FOLDER, L"C:\\avant");
    Browse();
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), L"C:\\avant");
    EXPECT_THAT(s_freed, ElementsAre(kItemList));
}

TEST_F(OutputFolderBrowseTest, DoesNotTouchTheBox) {
    ::CheckDlgButton(Dialog(), IDC_OUTPUT_FOLDER_CHECK, BST_UNCHECKED);
    Choose(folder.Path().wstring());
    EXPECT_FALSE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), folder.Path().wstring());
}

TEST_F(OutputFolderBrowseTest, OnlyAClickOpensIt) {
    Command(IDC_BROWSE, BN_DBLCLK);
    Command(IDC_BROWSE, BN_SETFOCUS);
    EXPECT_TRUE(s_browsers.empty());
    Command(IDC_BROWSE, BN_CLICKED);
    EXPECT_EQ(s_browsers.size(), 1u);
}

// What the text of the output folder must name.
struct AcceptCase {
    const char* name;
    const wchar_t* text;  // after the temporary folder, when it begins with a backslash
    bool accepted;
};
class OutputFolderTextTest : public MainWindowFixture, public testing::WithParamInterface<AcceptCase> {};

TEST_P(OutputFolderTextTest, EnablesTheDestinationWhenItIsAnExistingFolder) {
    std::filesystem::create_directory(folder.Path() / "sous, dossier");
    std::ofstream(folder.Path() / "fichier") << "x";
    Create();
    const std::wstring text = GetParam().text;
    // From the other state, so that each way is a change.
    ::EnableWindow(Control(IDC_OPEN_DESTINATION), !GetParam().accepted);
    SetText(IDC_OUTPUT_FOLDER, (text.starts_with(L'\\') ? folder.Path().wstring() + text : text).c_str());
    EXPECT_EQ(IsEnabled(IDC_OPEN_DESTINATION), GetParam().accepted);
}

INSTANTIATE_TEST_SUITE_P(All, OutputFolderTextTest,
                         testing::Values(AcceptCase{"Existing", L"\\sous, dossier", true},
                                         AcceptCase{"TrailingBackslash", L"\\sous, dossier\\", true},
                                         AcceptCase{"OneCharacterMore", L"\\sous, dossiers", false},
                                         AcceptCase{"File", L"\\fichier", false},
                                         AcceptCase{"CurrentFolder", L".", true},
                                         AcceptCase{"Quoted", L"\"C:\\windows\"", false},
                                         AcceptCase{"TrailingBlanks", L"C:\\absent  ", false}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
