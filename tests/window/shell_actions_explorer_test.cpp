// Which "explorer.exe" a folder is handed to, when there are other files of that name.
#include "tests/window/main_window_fixture.h"

#include <shellapi.h>

#include <filesystem>
#include <fstream>

namespace {

// The current directory, until the end.
class CurrentDirectory {
public:
    explicit CurrentDirectory(const std::filesystem::path& folder)
        : m_before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;
    ~CurrentDirectory() { std::filesystem::current_path(m_before); }

private:
    std::filesystem::path m_before;
};

class ShellActionExplorerTest : public MainWindowFixture {
protected:
    ShellActionExplorerTest() {
        Create();
        ::CheckDlgButton(Dialog(), IDC_OUTPUT_FOLDER_CHECK, BST_CHECKED);
        SetText(IDC_OUTPUT_FOLDER, L"D:\\a, b");
        s_file.clear();
    }
    // The file that the shell was asked to open the folder with. All else is as without other files.
    [[nodiscard]] std::wstring Asked() {
        Command(IDC_OPEN_DESTINATION, BN_CLICKED);
        return s_file;
    }
    static void Plant(const std::filesystem::path& where) { std::ofstream(where / "explorer.exe") << "MZ"; }
    [[nodiscard]] static std::wstring Systems() {
        wchar_t folder[MAX_PATH] = {};
        ::GetSystemWindowsDirectoryW(folder, MAX_PATH);
        return std::wstring(folder) + L"\\explorer.exe";
    }

    TemporaryFolder m_downloads;

private:
    static BOOL WINAPI Execute(SHELLEXECUTEINFOW* request) {
        s_file = request->lpFile;
        EXPECT_STREQ(request->lpParameters, L"D:\\a, b");
        EXPECT_STREQ(request->lpVerb, L"open");
        EXPECT_EQ(request->lpDirectory, nullptr);
        return TRUE;
    }

    static inline std::wstring s_file;
    ReplacedImport m_execute{"ShellExecuteExW", &Execute};
};

TEST_F(ShellActionExplorerTest, IsNamedBarelyWhereThereIsNoOther) {
    const CurrentDirectory current(m_downloads.Path());
    EXPECT_EQ(Asked(), L"explorer.exe");
}

TEST_F(ShellActionExplorerTest, IsTheSystemsByItsFullPathWhenOneLiesBesideTheProgram) {
    Plant(folder.Path());
    EXPECT_EQ(Asked(), Systems());
}

TEST_F(ShellActionExplorerTest, IsTheSystemsByItsFullPathWhenOneLiesInTheCurrentDirectory) {
    Plant(m_downloads.Path());
    const CurrentDirectory current(m_downloads.Path());
    EXPECT_EQ(Asked(), Systems());
}

TEST_F(ShellActionExplorerTest, IsNamedBarelyAgainWhenTheOtherIsGone) {
    Plant(folder.Path());
    EXPECT_EQ(Asked(), Systems());
    std::filesystem::remove(folder.Path() / "explorer.exe");
    EXPECT_EQ(Asked(), L"explorer.exe");
}

TEST_F(ShellActionExplorerTest, TheSystemsOwnInTheCurrentDirectoryIsNoOther) {
    const CurrentDirectory current(std::filesystem::path(Systems()).parent_path());
    EXPECT_EQ(Asked(), L"explorer.exe");
}

TEST_F(ShellActionExplorerTest, TheSystemsOwnBesideTheProgramIsNoOther) {
    const CurrentDirectory current(m_downloads.Path());
    programPath = (std::filesystem::path(Systems()).parent_path() / "Talvenor.exe").wstring();
    EXPECT_EQ(Asked(), L"explorer.exe");
}

struct SearchPathAnswer {
    static inline const wchar_t* path = nullptr;
    static inline DWORD length = 0;

    static DWORD WINAPI Search(LPCWSTR folder, LPCWSTR, LPCWSTR, DWORD, LPWSTR found, LPWSTR*) {
        if (folder) return 0;
        ::lstrcpynW(found, path, MAX_PATH);
        return length != 0 ? length : static_cast<DWORD>(::lstrlenW(path));
    }
};

TEST_F(ShellActionExplorerTest, IsTheSystemsByItsFullPathWhenTheSearchPathLeadsElsewhere) {
    const ReplacedImport search("SearchPathW", &SearchPathAnswer::Search);
    SearchPathAnswer::length = 0;
    SearchPathAnswer::path = L"C:\\Outils\\explorer.exe";
    EXPECT_EQ(Asked(), Systems());
    SearchPathAnswer::path = L"";  // nowhere
    EXPECT_EQ(Asked(), Systems());
    // What does not fit is no path, whatever is in the buffer.
    const std::wstring systems = Systems();
    SearchPathAnswer::path = systems.c_str();
    SearchPathAnswer::length = MAX_PATH + 10;
    EXPECT_EQ(Asked(), systems);
}

// Whether the search path has the current directory is a setting of the system.
TEST_F(ShellActionExplorerTest, TheCurrentDirectoryCountsAlsoWhereTheSearchPathLeavesItOut) {
    const ReplacedImport search(
        "SearchPathW", +[](LPCWSTR where, LPCWSTR, LPCWSTR, DWORD, LPWSTR found, LPWSTR*) WINAPI -> DWORD {
            const std::wstring path = where ? L"C:\\Outils\\explorer.exe" : Systems();
            ::lstrcpynW(found, path.c_str(), MAX_PATH);
            return static_cast<DWORD>(path.size());
        });
    EXPECT_EQ(Asked(), Systems());
}

TEST_F(ShellActionExplorerTest, ThePathOfTheSystemsIsComparedWithoutCase) {
    const ReplacedImport search("SearchPathW", &SearchPathAnswer::Search);
    std::wstring upper = Systems();
    ::CharUpperW(upper.data());
    SearchPathAnswer::length = 0;
    SearchPathAnswer::path = upper.c_str();
    EXPECT_EQ(Asked(), L"explorer.exe");
}

TEST_F(ShellActionExplorerTest, WithoutTheSystemsFolderItIsNamedBarely) {
    Plant(folder.Path());
    const ReplacedImport windows(
        "GetSystemWindowsDirectoryW", +[](LPWSTR, UINT) WINAPI -> UINT { return 0; });
    EXPECT_EQ(Asked(), L"explorer.exe");
}

}  // namespace
