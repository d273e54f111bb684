// What is handed to the shell: the destination folder and the log.
#include "tests/window/main_window_fixture.h"
#include "tests/window/path_steps.h"

#include <shellapi.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Requests are kept, and fail with `s_error` when it is not 0.
class ShellActionTest : public MainWindowFixture {
protected:
    struct Request {
        SHELLEXECUTEINFOW info;
        std::wstring verb;
        std::wstring file;
        std::wstring parameters;
    };

    ShellActionTest() {
        s_requests.clear();
        s_error = ERROR_SUCCESS;
        Create();
    }
    // The parameters of each request that opened a folder.
    [[nodiscard]] static std::vector<std::wstring> Folders() {
        std::vector<std::wstring> folders;
        for (const Request& request : s_requests) folders.push_back(request.parameters);
        return folders;
    }
    void UseOutputFolder(const wchar_t* text) {
        ::CheckDlgButton(Dialog(), IDC_OUTPUT_FOLDER_CHECK, BST_CHECKED);
        SetText(IDC_OUTPUT_FOLDER, text);
    }
    void OpenDestination() { Command(IDC_OPEN_DESTINATION, BN_CLICKED); }
    void OpenLog() { Command(IDC_OPEN_LOG, BN_CLICKED); }

    static inline std::vector<Request> s_requests;
    static inline DWORD s_error = ERROR_SUCCESS;

private:
    static BOOL WINAPI Execute(SHELLEXECUTEINFOW* info) {
        s_requests.push_back({*info, info->lpVerb ? info->lpVerb : L"(null)",
                              info->lpFile ? info->lpFile : L"(null)",
                              info->lpParameters ? info->lpParameters : L"(null)"});
        ::SetLastError(s_error);
        return s_error == ERROR_SUCCESS;
    }
    static DWORD WINAPI Describe(DWORD, LPCVOID, DWORD error, DWORD, LPWSTR text, DWORD size, va_list*) {
        ::lstrcpynW(text, (L"erreur " + std::to_wstring(error)).c_str(), static_cast<int>(size));
        return static_cast<DWORD>(::lstrlenW(text));
    }

    ReplacedImport m_execute{"ShellExecuteExW", &Execute};
    ReplacedImport m_describe{"FormatMessageW", &Describe};
};

// The fields that both requests have in common.
void ExpectPlainRequest(const SHELLEXECUTEINFOW& info, HWND owner) {
    EXPECT_EQ(info.cbSize, 112u);
    EXPECT_EQ(info.fMask, 0u);
    EXPECT_EQ(info.hwnd, owner);
    EXPECT_EQ(info.lpDirectory, nullptr);
    EXPECT_EQ(info.nShow, 5);  // SW_SHOW
    EXPECT_EQ(info.hInstApp, nullptr);
    EXPECT_EQ(info.lpIDList, nullptr);
    EXPECT_EQ(info.lpClass, nullptr);
    EXPECT_EQ(info.hkeyClass, nullptr);
    EXPECT_EQ(info.dwHotKey, 0u);
    EXPECT_EQ(info.hMonitor, nullptr);
    EXPECT_EQ(info.hProcess, nullptr);
}

TEST_F(ShellActionTest, TheDestinationIsOpenedByExplorer) {
    UseOutputFolder(L"D:\\Sortie");
    OpenDestination();
    ASSERT_THAT(s_requests, SizeIs(1));
    EXPECT_EQ(s_requests[0].verb, L"open");
    EXPECT_EQ(s_requests[0].file, L"explorer.exe");
    EXPECT_EQ(s_requests[0].parameters, L"D:\\Sortie");
    ExpectPlainRequest(s_requests[0].info, Dialog());
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

struct TextCase {
    const char* name;
    const wchar_t* text;
};
class ShellActionFolderTextTest : public ShellActionTest, public testing::WithParamInterface<TextCase> {};

TEST_P(ShellActionFolderTextTest, IsHandedOnAsItStands) {
    UseOutputFolder(GetParam().text);
    OpenDestination();
    EXPECT_THAT(Folders(), ElementsAre(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(All, ShellActionFolderTextTest,
                         testing::Values(TextCase{"Blanks", L"C:\\Mes documents\\DjVu"},
                                         TextCase{"Commas", L"C:\\a, b,c"},
                                         TextCase{"TrailingBackslash", L"D:\\Sortie\\"},
                                         TextCase{"Missing", L"Q:\\absent"},
                                         TextCase{"Relative", L"..\\Sortie"}, TextCase{"BlanksOnly", L"  "},
                                         TextCase{"Quoted", L"\"C:\\a\""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ShellActionTest, AnEmptyOutputFolderDoesNothing) {
    Drop({L"C:\\in\\a.pdf"});
    SelectRow(0);
    UseOutputFolder(L"");
    OpenDestination();
    EXPECT_THAT(Folders(), IsEmpty());
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(ShellActionTest, WithoutAnOutputFolderItIsThatOfTheSelectedFile) {
    Drop({L"C:\\in\\a.pdf", L"D:\\Mes documents, 2026\\b c.pdf"});
    SetText(IDC_OUTPUT_FOLDER, L"E:\\ignored");
    SelectRow(1);
    OpenDestination();
    SelectRow(0);
    OpenDestination();
    EXPECT_THAT(Folders(), ElementsAre(L"D:\\Mes documents, 2026", L"C:\\in"));
}

struct PdfCase {
    const char* name;
    const wchar_t* path;
    const wchar_t* folder;
};
class ShellActionPdfFolderTest : public ShellActionTest, public testing::WithParamInterface<PdfCase> {};

TEST_P(ShellActionPdfFolderTest, IsThePathWithoutItsLastComponent) {
    Drop({GetParam().path});
    SelectRow(0);
    OpenDestination();
    EXPECT_THAT(Folders(), ElementsAre(GetParam().folder));
}

INSTANTIATE_TEST_SUITE_P(
    All, ShellActionPdfFolderTest,
    testing::Values(PdfCase{"Root", L"C:\\a.pdf", L"C:\\"},
                    PdfCase{"FolderWithADot", L"C:\\v1.0 final\\a.pdf", L"C:\\v1.0 final"},
                    PdfCase{"Network", L"\\\\serveur\\partage\\d\\a.pdf", L"\\\\serveur\\partage\\d"},
                    PdfCase{"OtherAlphabet", L"C:\\Отчёт\\報告.pdf", L"C:\\Отчёт"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(ShellActionTest, TheFolderOfALongPathIsOpenedWhole) {
    const std::wstring pdfFolder = L"C:\\" + std::wstring(200, L'a') + L'\\' + std::wstring(200, L'b');
    std::wstring path = pdfFolder + L"\\c.pdf";
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.pszText = path.data();
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    SelectRow(0);
    OpenDestination();
    EXPECT_THAT(Folders(), ElementsAre(pdfFolder));
}

TEST_F(ShellActionTest, PathsLoseTheirExtensionBeforeTheirLastComponent) {
    Drop({L"C:\\in\\a.pdf"});
    SelectRow(0);
    programPath = L"C:\\Talvenor\\Talvenor.exe";
    const ReplacedImport extension("PathRemoveExtensionW", &PathSteps::RemoveExtension);
    const ReplacedImport fileSpec("PathRemoveFileSpecW", &PathSteps::RemoveFileSpec);
    PathSteps::steps.clear();
    OpenDestination();
    // The last step is of the look for another explorer beside the program.
    EXPECT_THAT(PathSteps::steps, ElementsAre("PathRemoveExtensionW C:\\in\\a.pdf",
                                              "PathRemoveFileSpecW C:\\without\\extension",
                                              "PathRemoveFileSpecW C:\\Talvenor\\Talvenor.exe"));
    EXPECT_THAT(Folders(), ElementsAre(L"C:\\folder"));
    PathSteps::steps.clear();
    OpenLog();
    EXPECT_THAT(PathSteps::steps, ElementsAre("PathRemoveExtensionW C:\\Talvenor\\Talvenor.exe",
                                              "PathRemoveFileSpecW C:\\without\\extension"));
    EXPECT_EQ(s_requests.back().file, L"C:\\folder\\TalvenorLog.txt");
}

TEST_F(ShellActionTest, WithNeitherAFolderNorASelectedRowItDoesNothing) {
    Drop({L"C:\\in\\a.pdf"});
    SelectRow(0);
    ASSERT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
    Click(IDC_OPEN_DESTINATION);
    EXPECT_THAT(Folders(), IsEmpty());
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(ShellActionTest, TheLogIsOpenedByItsOwnProgram) {
    OpenLog();
    ASSERT_THAT(s_requests, SizeIs(1));
    EXPECT_EQ(s_requests[0].verb, L"open");
    EXPECT_EQ(s_requests[0].file, folder.File(L"TalvenorLog.txt"));
    EXPECT_EQ(s_requests[0].info.lpParameters, nullptr);
    ExpectPlainRequest(s_requests[0].info, Dialog());
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(ShellActionTest, TheLogIsThatOfTheProgramsFolderWhateverTheProgramIsCalled) {
    programPath = L"C:\\Mes programmes.v2\\Talvenor 1.2.exe";
    OpenLog();
    programPath = L"C:\\Talvenor";
    OpenLog();
    ASSERT_THAT(s_requests, SizeIs(2));
    EXPECT_EQ(s_requests[0].file, L"C:\\Mes programmes.v2\\TalvenorLog.txt");
    EXPECT_EQ(s_requests[1].file, L"C:\\TalvenorLog.txt");
}

TEST_F(ShellActionTest, AFailureIsShownWithTheSystemsText) {
    s_error = ERROR_FILE_NOT_FOUND;  // the log was deleted meanwhile
    OpenLog();
    s_error = ERROR_ACCESS_DENIED;
    UseOutputFolder(L"D:\\Sortie");
    OpenDestination();
    EXPECT_THAT(calls.Calls(), ElementsAre("MessageBoxW owner=main text=Erreur ShellExecute : erreur 2 "
                                           "caption=Talvenor type=0x10",
                                           "MessageBoxW owner=main text=Erreur ShellExecute : erreur 5 "
                                           "caption=Talvenor type=0x10"));
}

TEST_F(ShellActionTest, AFailureLeavesTheWindowAsItWas) {
    s_error = ERROR_FILE_NOT_FOUND;
    UseOutputFolder(folder.Path().c_str());
    Click(IDC_OPEN_DESTINATION);
    ASSERT_THAT(s_requests, SizeIs(1));
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    EXPECT_TRUE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), folder.Path().wstring());
}

TEST_F(ShellActionTest, OnlyAClickOpensAnything) {
    UseOutputFolder(L"D:\\Sortie");
    for (const int code : {BN_DBLCLK, BN_SETFOCUS, BN_KILLFOCUS}) {
        Command(IDC_OPEN_DESTINATION, code);
        Command(IDC_OPEN_LOG, code);
    }
    EXPECT_THAT(Folders(), IsEmpty());
}

}  // namespace
