// Which "explorer.exe" a folder is handed to, when there are other files of that name.
#include "tests/window/main_window_fixture.h"

#include "ui/system_explorer.h"

#include <filesystem>
#include <fstream>

namespace {

constexpr wchar_t kBareName[] = L"explorer.exe";

std::filesystem::path WindowsFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetSystemWindowsDirectoryW(path, MAX_PATH);
    return path;
}

std::wstring Systems() {
    return (WindowsFolder() / kBareName).wstring();
}

void Plant(const std::filesystem::path& where) {
    std::ofstream(where / kBareName) << "MZ";
}

// The answer of the search path; `length` is what the call returns when it is not the path's own.
std::unique_ptr<ReplacedImport> AnswerSearchPath(const std::wstring& path, DWORD length = 0) {
    return Replace<decltype(::SearchPathW)>(
        "SearchPathW", [=](LPCWSTR where, LPCWSTR, LPCWSTR, DWORD, LPWSTR found, LPWSTR*) -> DWORD {
            if (where) return 0;  // in the current folder there is none
            ::lstrcpynW(found, path.c_str(), MAX_PATH);
            return length != 0 ? length : static_cast<DWORD>(path.size());
        });
}

class SystemExplorerTest : public MainWindowFixture {
protected:
    TemporaryFolder m_downloads;
};

TEST_F(SystemExplorerTest, IsTheBareNameWhereThereIsNoOther) {
    const CurrentFolder current(m_downloads.Path());
    EXPECT_EQ(SystemExplorer(), kBareName);
}

TEST_F(SystemExplorerTest, IsTheFullPathWhileAnotherIsBesideTheProgram) {
    Plant(folder.Path());
    EXPECT_EQ(SystemExplorer(), Systems());
    std::filesystem::remove(folder.Path() / kBareName);
    EXPECT_EQ(SystemExplorer(), kBareName);
}

TEST_F(SystemExplorerTest, IsTheFullPathWhileAnotherIsInTheCurrentFolder) {
    Plant(m_downloads.Path());
    const CurrentFolder current(m_downloads.Path());
    EXPECT_EQ(SystemExplorer(), Systems());
}

TEST_F(SystemExplorerTest, TheSystemsOwnInTheCurrentFolderIsNoOther) {
    const CurrentFolder current(WindowsFolder());
    EXPECT_EQ(SystemExplorer(), kBareName);
}

TEST_F(SystemExplorerTest, TheSystemsOwnBesideTheProgramIsNoOther) {
    const CurrentFolder current(m_downloads.Path());
    programPath = (WindowsFolder() / "Talvenor.exe").wstring();
    EXPECT_EQ(SystemExplorer(), kBareName);
}

TEST_F(SystemExplorerTest, IsTheFullPathWhenTheSearchPathLeadsElsewhereOrNowhere) {
    for (const wchar_t* const found : {L"C:\\Outils\\explorer.exe", L""}) {
        const auto search = AnswerSearchPath(found);
        EXPECT_EQ(SystemExplorer(), Systems()) << Utf8(found);
    }
}

TEST_F(SystemExplorerTest, ASearchResultThatDoesNotFitIsNoPathWhateverIsInTheBuffer) {
    for (const DWORD length : {MAX_PATH, MAX_PATH + 10}) {
        const auto search = AnswerSearchPath(Systems(), length);
        EXPECT_EQ(SystemExplorer(), Systems()) << length;
    }
}

TEST_F(SystemExplorerTest, AResultInTheCurrentFolderThatDoesNotFitIsNoOther) {
    const auto search = Replace<decltype(::SearchPathW)>(
        "SearchPathW", [](LPCWSTR where, LPCWSTR, LPCWSTR, DWORD, LPWSTR found, LPWSTR*) -> DWORD {
            ::lstrcpynW(found, where ? L"C:\\Outils\\explorer.exe" : Systems().c_str(), MAX_PATH);
            return where ? MAX_PATH : static_cast<DWORD>(Systems().size());
        });
    EXPECT_EQ(SystemExplorer(), kBareName);
}

// Whether the search path has the current folder is a setting of the system.
TEST_F(SystemExplorerTest, TheCurrentFolderCountsAlsoWhereTheSearchPathLeavesItOut) {
    const auto search = Replace<decltype(::SearchPathW)>(
        "SearchPathW", [](LPCWSTR where, LPCWSTR, LPCWSTR, DWORD, LPWSTR found, LPWSTR*) {
            const bool isCurrent = where && std::wstring(where) == L".";
            const std::wstring path = isCurrent ? L"C:\\Outils\\explorer.exe" : where ? L"" : Systems();
            ::lstrcpynW(found, path.c_str(), MAX_PATH);
            return static_cast<DWORD>(path.size());
        });
    EXPECT_EQ(SystemExplorer(), Systems());
}

TEST_F(SystemExplorerTest, PathsAreComparedWithoutCase) {
    std::wstring upper = Systems();
    ::CharUpperW(upper.data());
    const auto search = AnswerSearchPath(upper);
    EXPECT_EQ(SystemExplorer(), kBareName);
}

TEST_F(SystemExplorerTest, IsTheBareNameWithoutTheSystemsFolder) {
    Plant(folder.Path());
    const auto windows = Replace<decltype(::GetSystemWindowsDirectoryW)>("GetSystemWindowsDirectoryW",
                                                                         [](LPWSTR, UINT) { return 0u; });
    EXPECT_EQ(SystemExplorer(), kBareName);
}

}  // namespace
