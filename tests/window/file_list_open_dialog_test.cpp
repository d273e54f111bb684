// The button that adds PDFs: what the open dialog is asked for, and what its answers add.
#include "tests/support/replaced_late_import.h"
#include "tests/window/main_window_fixture.h"
#include "tests/window/watched_window.h"

#include <commdlg.h>
#include <shlwapi.h>

#include <functional>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Stands in for the system's dialog: writes `answer` into the buffer and closes with `result`.
struct OpenDialog {
    static inline OPENFILENAMEW asked = {};
    static inline std::wstring filter;  // with the nulls in it
    static inline std::wstring initialName;
    static inline int shown = 0;
    static inline std::wstring answer;
    static inline BOOL result = TRUE;
    static inline bool writes = true;
    static inline std::function<void()> during;

    static BOOL WINAPI Run(LPOPENFILENAMEW dialog) {
        ++shown;
        asked = *dialog;
        const wchar_t* end = dialog->lpstrFilter;
        while (end[0] != L'\0' || end[1] != L'\0') ++end;
        filter.assign(dialog->lpstrFilter, end);
        if (writes) {
            initialName = dialog->lpstrFile;
            std::copy(answer.begin(), answer.end(), dialog->lpstrFile);
        }
        if (during) during();
        return result;
    }
};

// Texts as the dialog leaves them: each with its null, the last with two.
std::wstring Names(const std::vector<std::wstring>& names) {
    std::wstring buffer;
    for (const std::wstring& name : names) buffer.append(name).append(1, L'\0');
    return buffer.append(1, L'\0');
}

class FileListOpenDialogTest : public MainWindowFixture {
protected:
    FileListOpenDialogTest() {
        OpenDialog::asked = {};
        OpenDialog::shown = 0;
        OpenDialog::during = nullptr;
        Create();
    }

    // Presses the button; the dialog closes with these texts in its buffer.
    void Add(const std::vector<std::wstring>& names, BOOL result = TRUE) {
        OpenDialog::answer = Names(names);
        OpenDialog::result = result;
        Click(IDC_ADD);
    }

private:
    ReplacedLateImport m_dialog{"GetOpenFileNameW", &OpenDialog::Run};
};

constexpr BOOL kCancelled = FALSE;

TEST_F(FileListOpenDialogTest, TheDialogIsAskedForSeveralPdfsThatExist) {
    Add({}, kCancelled);
    ASSERT_EQ(OpenDialog::shown, 1);
    const OPENFILENAMEW& asked = OpenDialog::asked;
    EXPECT_EQ(asked.lStructSize, sizeof(OPENFILENAMEW));
    EXPECT_EQ(asked.hwndOwner, Dialog());
    EXPECT_EQ(OpenDialog::filter, std::wstring(L"Fichiers PDF (*.pdf)\0*.pdf", 26));
    EXPECT_EQ(asked.lpstrCustomFilter, nullptr);
    EXPECT_EQ(asked.nMaxCustFilter, 0u);
    EXPECT_EQ(asked.nFilterIndex, 1u);
    EXPECT_EQ(OpenDialog::initialName, L"");
    EXPECT_EQ(asked.nMaxFile, 25'740u);
    EXPECT_EQ(asked.lpstrFileTitle, nullptr);
    EXPECT_EQ(asked.lpstrInitialDir, nullptr);
    EXPECT_EQ(asked.lpstrTitle, nullptr);
    EXPECT_EQ(asked.lpstrDefExt, nullptr);
    EXPECT_EQ(asked.lpTemplateName, nullptr);
    EXPECT_EQ(asked.FlagsEx, 0u);
    // Hide read-only, multi-selection, path and file must exist, explorer, hook, sizing.
    EXPECT_EQ(asked.Flags, 0x4u | 0x200u | 0x800u | 0x1000u | 0x80000u | 0x20u | 0x800000u);
}

TEST_F(FileListOpenDialogTest, TheHookDoesNothing) {
    Add({}, kCancelled);
    ASSERT_NE(OpenDialog::asked.lpfnHook, nullptr);
    const WatchedWindow openDialog;  // the hook's own window is a child of the dialog's
    for (const UINT message : std::initializer_list<UINT>{WM_INITDIALOG, WM_NOTIFY, WM_COMMAND, WM_DESTROY}) {
        EXPECT_EQ(OpenDialog::asked.lpfnHook(openDialog.Child(), message, 0, 0), 0u);
    }
    EXPECT_EQ(openDialog.Messages(), 0);
}

TEST_F(FileListOpenDialogTest, OneFileIsAddedByItsFullPath) {
    Add({L"C:\\in\\a b.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a b.pdf"));
    EXPECT_THAT(Column(1), ElementsAre(L""));
    EXPECT_TRUE(IsEnabled(IDOK));
}

TEST_F(FileListOpenDialogTest, SeveralFilesAreJoinedWithTheirFolderInTheDialogsOrder) {
    Add({L"C:\\in", L"c.pdf", L"a.pdf", L"b.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\c.pdf", L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"));
    EXPECT_TRUE(IsEnabled(IDOK));
}

TEST_F(FileListOpenDialogTest, ADrivesRootJoinsWithoutASecondBackslash) {
    Add({L"C:\\", L"a.pdf", L"b.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\a.pdf", L"C:\\b.pdf"));
}

TEST_F(FileListOpenDialogTest, NamesThatAreNoPdfsAreAddedAsTheyAre) {
    Add({L"C:\\in\\a.txt"});
    Add({L"C:\\in", L"noextension", L"b.PDF.bak"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.txt", L"C:\\in\\noextension", L"C:\\in\\b.PDF.bak"));
}

TEST_F(FileListOpenDialogTest, CancellingWithoutRowsLeavesTheConvertButtonDisabled) {
    Add({}, kCancelled);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(IsEnabled(IDOK));
}

TEST_F(FileListOpenDialogTest, CancellingWithRowsEnablesTheConvertButton) {
    Drop({L"C:\\in\\a.pdf"});
    ASSERT_FALSE(IsEnabled(IDOK));
    Add({}, kCancelled);
    EXPECT_EQ(RowCount(), 1);
    EXPECT_TRUE(IsEnabled(IDOK));
}

TEST_F(FileListOpenDialogTest, CancellingWithoutRowsDisablesAConvertButtonThatWasEnabled) {
    ::EnableWindow(Control(IDOK), TRUE);
    Add({}, kCancelled);
    EXPECT_FALSE(IsEnabled(IDOK));
}

TEST_F(FileListOpenDialogTest, AFailedDialogAddsNothingWhateverItsBufferHolds) {
    Add({L"C:\\in\\a.pdf"}, FALSE);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_THAT(calls.Calls(), IsEmpty());
    EXPECT_FALSE(IsEnabled(IDOK));
}

TEST_F(FileListOpenDialogTest, DuplicatesBeepInTurnAndTheOthersAreAdded) {
    Add({L"C:\\in\\a.pdf"});
    Add({L"C:\\in", L"b.pdf", L"a.pdf", L"c.pdf", L"b.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"));
    EXPECT_THAT(calls.Calls(), ElementsAre("Beep 440 100", "Beep 440 100"));
}

TEST_F(FileListOpenDialogTest, DroppedRowsAndChosenFilesAreComparedWithEachOther) {
    Drop({L"C:\\in\\a.pdf"});
    Add({L"C:\\in\\a.pdf"});
    EXPECT_EQ(RowCount(), 1);
    EXPECT_THAT(calls.Calls(), ElementsAre("Beep 440 100"));
    EXPECT_TRUE(IsEnabled(IDOK));
}

TEST_F(FileListOpenDialogTest, RowsThatCameWhileTheDialogWasOpenAreKnown) {
    OpenDialog::during = [this] { Drop({L"C:\\in\\a.pdf"}); };
    Add({L"C:\\in\\a.pdf"});
    EXPECT_EQ(RowCount(), 1);
    EXPECT_THAT(calls.Calls(), ElementsAre("Beep 440 100"));
}

TEST_F(FileListOpenDialogTest, TheWholeBufferMayBeFilled) {
    // 25,740 characters without the final nulls: the folder with 3 and its null, the first name with 25,700
    // and its null, and a second name that the buffer's end cuts.
    const std::wstring longName(25'700, L'n');
    const std::wstring cutName(25'740 - 4 - 25'701, L'c');
    OpenDialog::answer = std::wstring(L"C:\\") + L'\0' + longName + L'\0' + cutName;
    ASSERT_EQ(OpenDialog::answer.size(), 25'740u);
    OpenDialog::result = TRUE;
    Click(IDC_ADD);
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(1, 0), L"C:\\" + cutName);
}

// What Wine makes of a selection that does not fit: it writes on, and reports success.
TEST_F(FileListOpenDialogTest, ASelectionThatReachesBeyondTheBufferAddsNothing) {
    Drop({L"C:\\in\\a.pdf"});
    for (const std::size_t length : {25'741u, 25'742u, 30'000u, 1'000'000u}) {
        SCOPED_TRACE(length);
        OpenDialog::answer = std::wstring(L"C:\\") + L'\0' + std::wstring(length - 4, L'n');
        OpenDialog::result = TRUE;
        ::EnableWindow(Control(IDOK), FALSE);
        Click(IDC_ADD);
        EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf"));
        EXPECT_TRUE(IsEnabled(IDOK)) << "as after Cancel";
    }
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListOpenDialogTest, ATerminatorBeyondTheBufferIsBeyondItToo) {
    OpenDialog::answer = std::wstring(L"C:\\") + L'\0' + std::wstring(25'740 - 4, L'n') + L'\0';
    OpenDialog::result = TRUE;
    Click(IDC_ADD);
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(FileListOpenDialogTest, ATooLargeSelectionLeavesTheNextOneAlone) {
    OpenDialog::answer = std::wstring(40'000, L'n');
    OpenDialog::result = TRUE;
    Click(IDC_ADD);
    Add({L"C:\\in\\a.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf"));
}

TEST_F(FileListOpenDialogTest, WithoutMemoryForTheNamesNothingIsAdded) {
    const ReplacedImport heap(
        "HeapAlloc", +[](HANDLE, DWORD, SIZE_T) WINAPI -> LPVOID { return nullptr; });
    OpenDialog::result = TRUE;
    OpenDialog::writes = false;
    Click(IDC_ADD);
    OpenDialog::writes = true;
    EXPECT_EQ(OpenDialog::asked.lpstrFile, nullptr);
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(FileListOpenDialogTest, OneLongPathIsAddedWhole) {
    const std::wstring longPath = L"C:\\" + std::wstring(5'000, L'd') + L".pdf";
    Add({longPath});
    EXPECT_EQ(Cell(0, 0), longPath);
}

TEST_F(FileListOpenDialogTest, AJoinThatIsTooLongGivesWhatTheSystemMakesOfIt) {
    const std::wstring longFolder = L"C:\\" + std::wstring(250, L'd');
    Add({longFolder, L"a.pdf", L"much-too-long-for-this-folder.pdf"});
    wchar_t joined[600] = {};
    ::lstrcpyW(joined, longFolder.c_str());
    ::PathAppendW(joined, L"much-too-long-for-this-folder.pdf");
    EXPECT_THAT(Column(0), ElementsAre(longFolder + L"\\a.pdf", std::wstring(joined)));
}

TEST_F(FileListOpenDialogTest, OnlyClicksOpenTheDialog) {
    for (const int code : {BN_PAINT, BN_DOUBLECLICKED, BN_SETFOCUS, BN_KILLFOCUS}) Command(IDC_ADD, code);
    EXPECT_EQ(OpenDialog::shown, 0);
}

}  // namespace
