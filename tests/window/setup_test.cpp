// The main window's set-up as a whole: its steps in their order, where the converter is looked for, and what
// happens without it.
#include "tests/window/main_window_fixture.h"
#include "tests/window/path_steps.h"
#include "tests/window/setup_calls.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <new>

namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr char kMissingBox[] =
    "MessageBoxW owner=none text=pdf2djvu.exe est absent !\r\n\r\n(Talvenor.exe doit se trouver dans le\r\n"
    "même dossier que \"pdf2djvu.exe\") caption=Talvenor type=0x10";

class SetUpTest : public MainWindowFixture {
protected:
    std::vector<std::string> CreateRecorded() {
        const SetUpCalls recorded(calls, folder.Path().wstring());
        Create();
        return calls.Calls();
    }

    // Creates the dialog where it may well refuse.
    HWND TryToCreate() {
        dialog = std::make_unique<CMainDlg>();
        return dialog->Create(nullptr);
    }

    void RemoveConverter() { std::filesystem::remove(folder.Path() / "pdf2djvu.exe"); }
};

TEST_F(SetUpTest, StepsComeInTheirOrder) {
    std::vector<std::string> steps;
    for (const std::string& call : CreateRecorded()) {
        if (!call.starts_with("LoadImageW 213")) steps.push_back(call);
    }
    const auto big = std::to_string(::GetSystemMetrics(SM_CXICON));
    const auto small = std::to_string(::GetSystemMetrics(SM_CXSMICON));
    EXPECT_THAT(
        steps,
        ElementsAre(
            "PathFileExistsW ~\\pdf2djvu.exe", "SetWindowPos main", "LoadImageW 128 " + big + 'x' + big,
            "WM_SETICON main 1", "LoadImageW 128 " + small + 'x' + small, "WM_SETICON main 0",
            "SetWindowLongPtrW 1014 procedure", "SetWindowLongPtrW 1040 procedure",
            "LVM_SETEXTENDEDLISTVIEWSTYLE 1040 1057 1057", "ImageList_Create 16 16 33 1 0",
            "ImageList_ReplaceIcon -1", "LVM_SETIMAGELIST 1040 1", "LVM_INSERTCOLUMNW 1040 0",
            "LVM_INSERTCOLUMNW 1040 1", "DragAcceptFiles 1040 1", "CreateWindowExW tooltips_class32",
            StartsWith("TTM_SETMAXTIPWIDTH tooltips_class32 0 "), "TTM_ADDTOOLW tooltips_class32 1014",
            "TTM_ADDTOOLW tooltips_class32 1018", "TTM_ADDTOOLW tooltips_class32 1003",
            "TTM_ADDTOOLW tooltips_class32 1019", "TTM_ADDTOOLW tooltips_class32 1026",
            "TTM_ADDTOOLW tooltips_class32 1038", "TTM_ACTIVATE tooltips_class32 1 0",
            "PathFileExistsW ~\\TalvenorLog.txt", "EnableWindow 1024 0", "ShowWindow 1024 0", "LoadIconW 128",
            "BM_SETIMAGE 1 1", "DestroyIcon 128", "LoadIconW 207", "BM_SETIMAGE 1003 1", "DestroyIcon 207",
            "LoadIconW 208", "BM_SETIMAGE 1005 1", "DestroyIcon 208", "LoadIconW 212", "BM_SETIMAGE 1028 1",
            "DestroyIcon 212"));
}

TEST_F(SetUpTest, AFinishedSetUpLeavesTheFocusToTheFirstControlThatCanHaveIt) {
    Create();
    EXPECT_EQ(::GetFocus(), Control(IDCANCEL));
}

TEST_F(SetUpTest, TheWindowStandsInTheMiddleOfTheWorkArea) {
    Create();
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(Dialog(), MONITOR_DEFAULTTONEAREST), &monitor);
    RECT window = {};
    ::GetWindowRect(Dialog(), &window);
    EXPECT_NEAR(window.left + window.right, monitor.rcWork.left + monitor.rcWork.right, 2);
    EXPECT_NEAR(window.top + window.bottom, monitor.rcWork.top + monitor.rcWork.bottom, 2);
}

TEST_F(SetUpTest, WithoutTheConverterAMessageIsShownAndNoOtherStepRuns) {
    RemoveConverter();
    const SetUpCalls recorded(calls, folder.Path().wstring());
    TryToCreate();
    EXPECT_THAT(calls.Calls(), ElementsAre("PathFileExistsW ~\\pdf2djvu.exe", kMissingBox,
                                           "WM_COMMAND main 2 0", "DestroyWindow main", "PostQuitMessage 2"));
    EXPECT_EQ(dialog->Handle(), nullptr);
}

using SetUpDeathTest = SetUpTest;

TEST_F(SetUpDeathTest, AProgramWhosePathDoesNotFitEndsWithoutAWord) {
    programPath = folder.Path().wstring() + L'\\' + std::wstring(MAX_PATH, L'a') + L".exe";
    constexpr auto kNoMemory = static_cast<int>(0xC0000017);
    EXPECT_EXIT(TryToCreate(), testing::ExitedWithCode(kNoMemory), "");
    programPath.resize(MAX_PATH - 1);  // fits
    EXPECT_NE(TryToCreate(), nullptr);
}

TEST_F(SetUpTest, WmInitDialogAnswersFalseWithoutTheConverter) {
    RemoveConverter();
    CMainDlg without;
    LRESULT result = 77;
    EXPECT_TRUE(without.DispatchDialogMessage(nullptr, WM_INITDIALOG, 0, 0, result, 0));
    EXPECT_EQ(result, FALSE);
}

TEST_F(SetUpTest, AFolderOfTheConvertersNameWillDo) {
    // The file is tested for by name only; the interpreter will tell the rest.
    RemoveConverter();
    std::filesystem::create_directory(folder.Path() / "pdf2djvu.exe");
    EXPECT_NE(TryToCreate(), nullptr);
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(SetUpTest, ARenamedProgramLooksForTheConverterBesideItself) {
    const std::filesystem::path other = folder.Path() / "other.folder";
    std::filesystem::create_directory(other);
    for (const wchar_t* const name : {L"renamed.exe", L"re.na.med.exe", L"without-extension"}) {
        programPath = (other / name).wstring();
        calls.Clear();
        TryToCreate();
        EXPECT_THAT(calls.Calls(), ElementsAre(kMissingBox)) << Utf8(name);
        std::ofstream(other / "pdf2djvu.exe") << "stand-in";
        calls.Clear();
        EXPECT_NE(TryToCreate(), nullptr) << Utf8(name);
        EXPECT_THAT(calls.Calls(), IsEmpty()) << Utf8(name);
        std::filesystem::remove(other / "pdf2djvu.exe");
        Destroy();
    }
}

// Stands in another folder than the one the program was started from.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& folder) : m_before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() { std::filesystem::current_path(m_before); }

private:
    const std::filesystem::path m_before;
};

TEST_F(SetUpTest, AConverterInTheCurrentFolderDoesNotCount) {
    const TemporaryFolder elsewhere;
    std::ofstream(elsewhere.Path() / "pdf2djvu.exe") << "stand-in";
    RemoveConverter();
    const CurrentFolder current(elsewhere.Path());
    TryToCreate();
    EXPECT_THAT(calls.Calls(), ElementsAre(kMissingBox));
}

// Which functions make the converter's path.
struct PathCalls : PathSteps {
    static DWORD WINAPI ModuleFileName(HMODULE module, LPWSTR path, DWORD size) {
        steps.push_back("GetModuleFileNameW " +
                        std::string(module == ::GetModuleHandleW(nullptr) ? "own" : "other") + ' ' +
                        std::to_string(size));
        ::lstrcpyW(path, L"C:\\a.b\\c.d.exe");
        return 14;
    }
    static BOOL WINAPI Append(LPWSTR path, LPCWSTR name) {
        steps.push_back("PathAppendW " + Utf8(path) + " + " + Utf8(name));
        ::lstrcpyW(path, L"C:\\joined");
        return TRUE;
    }
    static BOOL WINAPI Exists(LPCWSTR path) {
        steps.push_back("PathFileExistsW " + Utf8(path));
        return FALSE;
    }
};

TEST_F(SetUpTest, TheConvertersPathComesByRemovingTheExtensionThenTheNameAndAppending) {
    PathCalls::steps.clear();
    const ReplacedImport moduleFileName("GetModuleFileNameW", &PathCalls::ModuleFileName);
    const ReplacedImport removeExtension("PathRemoveExtensionW", &PathCalls::RemoveExtension);
    const ReplacedImport removeFileSpec("PathRemoveFileSpecW", &PathCalls::RemoveFileSpec);
    const ReplacedImport append("PathAppendW", &PathCalls::Append);
    const ReplacedImport exists("PathFileExistsW", &PathCalls::Exists);
    TryToCreate();
    EXPECT_THAT(PathCalls::steps,
                ElementsAre("GetModuleFileNameW own 260", "PathRemoveExtensionW C:\\a.b\\c.d.exe",
                            "PathRemoveFileSpecW C:\\without\\extension",
                            "PathAppendW C:\\folder + pdf2djvu.exe", "PathFileExistsW C:\\joined"));
}

class SetUpLogButtonTest : public SetUpTest {};

TEST_F(SetUpLogButtonTest, ALogOfAnEarlierRunShowsAndEnablesTheButton) {
    std::ofstream(folder.Path() / "TalvenorLog.txt") << "earlier";
    EXPECT_THAT(Only({"EnableWindow 1024", "ShowWindow 1024"}, CreateRecorded()),
                ElementsAre("EnableWindow 1024 1", "ShowWindow 1024 5"));
    EXPECT_TRUE(IsEnabled(IDC_OPEN_LOG));
    EXPECT_TRUE(IsShown(IDC_OPEN_LOG));
}

TEST_F(SetUpLogButtonTest, WithoutALogTheButtonIsAbsent) {
    Create();
    EXPECT_FALSE(IsEnabled(IDC_OPEN_LOG));
    EXPECT_FALSE(IsShown(IDC_OPEN_LOG));
}

TEST_F(SetUpLogButtonTest, TheLogIsLookedForInTheProgramsFolderAndNotTheCurrentOne) {
    const TemporaryFolder elsewhere;
    std::ofstream(elsewhere.Path() / "TalvenorLog.txt") << "another program's";
    const CurrentFolder current(elsewhere.Path());
    Create();
    EXPECT_FALSE(IsShown(IDC_OPEN_LOG));
}

}  // namespace
