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

class SystemExplorerTest : public MainWindowFixture {
protected:
    TemporaryFolder m_downloads;
};

TEST_F(SystemExplorerTest, IsTheFullPathWhileAnotherIsBesideTheProgramOrInTheCurrentFolder) {
    const CurrentFolder current(m_downloads.Path());
    for (const std::filesystem::path& where : {folder.Path(), m_downloads.Path()}) {
        EXPECT_EQ(SystemExplorer(), kBareName);
        Plant(where);
        EXPECT_EQ(SystemExplorer(), Systems()) << where;
        std::filesystem::remove(where / kBareName);
    }
}

TEST_F(SystemExplorerTest, TheSystemsOwnBesideTheProgramOrInTheCurrentFolderIsNoOther) {
    {
        const CurrentFolder current(WindowsFolder());
        EXPECT_EQ(SystemExplorer(), kBareName);
    }
    const CurrentFolder current(m_downloads.Path());
    programPath = (WindowsFolder() / "Talvenor.exe").wstring();
    EXPECT_EQ(SystemExplorer(), kBareName);
}

// Whether the search path has the current folder is a setting of the system: that folder is asked on its own.
TEST_F(SystemExplorerTest, IsTheBareNameOnlyWhileTheSearchPathLeadsToTheSystemsOwn) {
    std::wstring inCapitals = Systems();
    ::CharUpperW(inCapitals.data());
    const struct {
        const char* name;
        std::wstring found;
        std::wstring expected;
        std::wstring inCurrentFolder = {};
        // What is returned for a path that does not fit, whatever is in the buffer.
        DWORD tooLong = 0;
        DWORD tooLongInCurrentFolder = 0;
    } cases[] = {
        {"the system's", Systems(), kBareName},
        {"in another case", inCapitals, kBareName},
        {"elsewhere", L"C:\\Outils\\explorer.exe", Systems()},
        {"nowhere", L"", Systems()},
        {"another in the current folder", Systems(), Systems(), L"C:\\Outils\\explorer.exe"},
        {"a path that does not fit", Systems(), Systems(), L"", MAX_PATH + 10},
        {"a path that just does not fit", Systems(), Systems(), L"", MAX_PATH},
        {"one of the current folder that does not fit", Systems(), kBareName, L"C:\\Outils\\explorer.exe", 0,
         MAX_PATH},
    };
    for (const auto& row : cases) {
        const auto search =
            REPLACE_IMPORT(SearchPathW, [&](LPCWSTR where, LPCWSTR, LPCWSTR, DWORD, LPWSTR found, LPWSTR*) {
                const bool isCurrentFolder = where && std::wstring(where) == L".";
                const std::wstring path = isCurrentFolder ? row.inCurrentFolder : where ? L"" : row.found;
                ::lstrcpynW(found, path.c_str(), MAX_PATH);
                const DWORD tooLong = where ? row.tooLongInCurrentFolder : row.tooLong;
                return tooLong != 0 ? tooLong : static_cast<DWORD>(path.size());
            });
        EXPECT_EQ(SystemExplorer(), row.expected) << row.name;
    }
}

TEST_F(SystemExplorerTest, IsTheBareNameWithoutTheSystemsFolder) {
    Plant(folder.Path());
    const auto windows = REPLACE_IMPORT(GetSystemWindowsDirectoryW, [](LPWSTR path, UINT) {
        ::lstrcpyW(path, L"C:\\left over");
        return 0u;
    });
    EXPECT_EQ(SystemExplorer(), kBareName);
}

}  // namespace
