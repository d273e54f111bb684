// The program's folder and the files in it, whatever the program is called and wherever it is.
#include "base/program_folder.h"

#include "tests/window/main_window_fixture.h"
#include "tests/window/path_steps.h"

#include <shlwapi.h>

namespace {

using testing::ElementsAre;

class ProgramFolderTest : public MainWindowFixture {
protected:
    static void ExpectFolderAndFile(const std::wstring& program, const std::wstring& programFolder,
                                    const std::wstring& file) {
        SCOPED_TRACE(Utf8(program));
        programPath = program;
        EXPECT_EQ(ProgramFolder(), programFolder);
        EXPECT_EQ(FileInProgramFolder(L"nom.txt"), file);
        EXPECT_EQ(FileBeside(GetProgramPath(), L"nom.txt"), file);
    }
};

TEST_F(ProgramFolderTest, IsWhereTheProgramIsWhateverItIsCalled) {
    for (const wchar_t* const name : {L"Talvenor.exe", L"Mon Talvenor 1.2.exe", L"without-extension"}) {
        ExpectFolderAndFile(std::wstring(L"C:\\v2.0 final\\") + name, L"C:\\v2.0 final",
                            L"C:\\v2.0 final\\nom.txt");
    }
    ExpectFolderAndFile(L"Q:\\Talvenor.exe", L"Q:\\", L"Q:\\nom.txt");
}

TEST_F(ProgramFolderTest, IsWhereAPathThatIsCutPoints) {
    const std::wstring parent = L"Q:\\" + std::wstring(100, L'a');
    ExpectFolderAndFile(parent + L"\\" + std::wstring(200, L'b') + L"\\Talvenor.exe", parent,
                        parent + L"\\nom.txt");
}

TEST_F(ProgramFolderTest, LeavesAFileWithoutRoomForItsNameToTheSystem) {
    const std::wstring programFolder = L"Q:\\" + std::wstring(245, L'd');
    wchar_t joined[600] = {};
    ::lstrcpyW(joined, programFolder.c_str());
    ASSERT_FALSE(::PathAppendW(joined, L"TalvenorLog.txt"));
    programPath = programFolder + L"\\T.exe";
    EXPECT_EQ(ProgramFolder(), programFolder);
    EXPECT_EQ(FileInProgramFolder(L"TalvenorLog.txt"), joined);
}

TEST_F(ProgramFolderTest, IsAskedForOfTheModuleAndAFileBesideItLosesTheProgramsExtensionBeforeItsName) {
    PathSteps path;
    const auto moduleFileName =
        REPLACE_IMPORT(GetModuleFileNameW, [&](HMODULE module, LPWSTR text, DWORD size) {
            EXPECT_EQ(module, ::GetModuleHandleW(nullptr));
            path.steps.push_back("GetModuleFileNameW " + std::to_string(size));
            ::lstrcpyW(text, L"C:\\a.b\\c.d.exe");
            return 14u;
        });
    const auto append = REPLACE_IMPORT(PathAppendW, [&](LPWSTR text, LPCWSTR name) {
        path.steps.push_back("PathAppendW " + Utf8(text) + " + " + Utf8(name));
        return TRUE;
    });
    EXPECT_EQ(FileBeside(GetProgramPath(), L"nom.txt"), L"C:\\folder");
    EXPECT_THAT(path.steps, ElementsAre("GetModuleFileNameW 260", "PathRemoveExtensionW C:\\a.b\\c.d.exe",
                                        "PathRemoveFileSpecW C:\\without\\extension",
                                        "PathAppendW C:\\folder + nom.txt"));
}

}  // namespace
