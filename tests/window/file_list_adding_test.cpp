// How files become rows: what a drop adds, what the open dialog is asked for and what its answers add, and
// how rows are told apart. Many drops are a subject of the model's, and of the set of texts.
#include "ui/open_file_buffer.h"

#include "tests/support/dropped_files.h"
#include "tests/support/replaced_late_import.h"
#include "tests/window/main_window_fixture.h"
#include "tests/window/watched_window.h"

#include <commdlg.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <algorithm>
#include <functional>
#include <tuple>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FileListDropTest : public MainWindowFixture {
protected:
    FileListDropTest() { Create(); }
};

TEST_F(FileListDropTest, AddsPdfsInTheirOrderAndNothingElseWithoutAWord) {
    const std::wstring likeAPdf = folder.File(L"folder.pdf");
    std::filesystem::create_directory(likeAPdf);
    Drop({L"C:\\in\\A.PDF", L"C:\\in\\report.pdf.bak", L"C:\\in\\noextension", L"C:\\in.pdf\\noextension",
          L"C:\\in\\.pdf", L"C:\\in\\a.b.Pdf", L"C:\\in\\pdf", likeAPdf});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\A.PDF", L"C:\\in\\.pdf", L"C:\\in\\a.b.Pdf", likeAPdf));
    EXPECT_THAT(Column(1), testing::Each(L""));
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListDropTest, KeepsPathsAsTheyComeAndThoseThatDifferInOneUnitApart) {
    const std::vector<std::wstring> paths(
        {L"c:\\In\\..\\in\\A.pDf", L"\\\\server\\share\\a b.pdf", L"C:\\in\\\u65E5\u672C \U0001F4C4.pdf",
         L"a.pdf", L"C:\\\u00E9.pdf", L"C:\\e\u0301.pdf", L"C:\\a.pdf", L"c:\\A.PDF", L"C:/a.pdf"});
    Drop(paths);
    EXPECT_EQ(Column(0), paths);
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListDropTest, BeepsForEveryDuplicateAndStillAddsTheOtherFiles) {
    const std::wstring longPath = L"C:\\" + std::wstring(252, L'x') + L".pdf";  // longer than a first reading
    Drop({L"C:\\a.pdf", longPath});
    EXPECT_THAT(Recorded(
                    [&] {
                        Drop({longPath, L"C:\\b.pdf", L"C:\\a.pdf", L"C:\\b.pdf", L"C:\\c.pdf"});
                    },
                    {"Beep", "LVM_INSERTITEMW"}),
                ElementsAre("Beep 440 100", "LVM_INSERTITEMW 1040 row=2 column=0 mask=1 \"C:\\b.pdf\"",
                            "Beep 440 100", "Beep 440 100",
                            "LVM_INSERTITEMW 1040 row=3 column=0 mask=1 \"C:\\c.pdf\""));
}

// A row carries nothing but its path, the list is not drawn meanwhile, and "Convertir" stays as it is.
TEST_F(FileListDropTest, TakesItsStepsInOrder) {
    const auto invalidate =
        REPLACE_IMPORT(InvalidateRect, [](auto original, HWND window, const RECT* area, BOOL erases) {
            calls.Add(CallText("InvalidateRect", window, area ? "area" : "whole", erases));
            return original(window, area, erases);
        });
    EXPECT_THAT(Recorded([&] { Drop({L"C:\\in\\a.txt"}); }), IsEmpty());
    EXPECT_THAT(
        Recorded([&] {
            Drop({L"C:\\in\\a.txt", L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
        }),
        ElementsAre("WM_SETREDRAW 1040 0 0", "LVM_INSERTITEMW 1040 row=0 column=0 mask=1 \"C:\\in\\a.pdf\"",
                    "LVM_INSERTITEMW 1040 row=1 column=0 mask=1 \"C:\\in\\b.pdf\"", "WM_SETREDRAW 1040 1 0",
                    "InvalidateRect 1040 whole 1"));
}

TEST_F(FileListDropTest, LeavesOutARowThatCannotBeAddedInSilence) {
    bool refused = false;
    EXPECT_THAT(Recorded(
                    [&] {
                        Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\a.pdf", L"C:\\in\\a.pdf"});
                    },
                    {"Beep"},
                    [&](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
                        if (message != LVM_INSERTITEMW || std::exchange(refused, true)) return std::nullopt;
                        return -1;
                    }),
                ElementsAre("Beep 440 100"))
        << "only the last one is a duplicate of a row";
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\b.pdf", L"C:\\in\\a.pdf"));
}

TEST_F(FileListDropTest, IsAnsweredWithZeroAndNotFinished) {
    const DroppedFiles drop({L"C:\\a.pdf"});
    EXPECT_EQ(SendList(WM_DROPFILES, reinterpret_cast<WPARAM>(drop.Get())), 0);
    EXPECT_EQ(RowCount(), 1);
    EXPECT_NE(::GlobalSize(drop.Get()), 0u) << "the block is freed";
}

TEST_F(FileListDropTest, AsksForFilesUntilThereIsNone) {
    std::vector<std::string> queries;
    const auto query = REPLACE_IMPORT(DragQueryFileW, [&](HDROP, UINT index, LPWSTR path, UINT size) {
        queries.push_back(std::to_string(index) + " of " + std::to_string(size));
        ::lstrcpyW(path, (L"C:\\" + std::to_wstring(index) + L".pdf").c_str());
        return index == 2 ? 0u : 8u;
    });
    SendList(WM_DROPFILES, 1);
    EXPECT_THAT(queries, ElementsAre("0 of 260", "1 of 260", "2 of 260"));
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\0.pdf", L"C:\\1.pdf"));
}

class FileListOpenDialogTest : public MainWindowFixture {
protected:
    FileListOpenDialogTest() {
        s_current = this;
        Create();
    }

    // Presses the button; the dialog closes with these texts in its buffer, each with its null and the last
    // with two.
    void Add(const std::vector<std::wstring>& names, BOOL dialogResult = TRUE) {
        std::wstring buffer;
        for (const std::wstring& name : names) buffer.append(name).append(1, L'\0');
        AddBuffer(buffer.append(1, L'\0'), dialogResult);
    }
    void AddBuffer(const std::wstring& buffer, BOOL dialogResult = TRUE) {
        answer = buffer;
        result = dialogResult;
        Click(IDC_ADD);
    }

    OPENFILENAMEW asked = {};
    std::wstring filter;  // with the nulls in it
    std::wstring initialName;
    int shown = 0;
    std::wstring answer;
    BOOL result = TRUE;
    std::function<void()> during;

private:
    // Takes the place of the system's dialog.
    static BOOL WINAPI Run(LPOPENFILENAMEW dialog) {
        FileListOpenDialogTest& test = *s_current;
        ++test.shown;
        test.asked = *dialog;
        const wchar_t* end = dialog->lpstrFilter;
        while (end[0] != L'\0' || end[1] != L'\0') ++end;
        test.filter.assign(dialog->lpstrFilter, end);
        if (dialog->lpstrFile) {
            test.initialName = dialog->lpstrFile;
            std::ranges::copy(test.answer, dialog->lpstrFile);
        }
        if (test.during) test.during();
        return test.result;
    }

    static inline FileListOpenDialogTest* s_current = nullptr;
    ReplacedLateImport m_dialog{"GetOpenFileNameW", &Run};
};

constexpr BOOL kCancelled = FALSE;

TEST_F(FileListOpenDialogTest, IsAskedForSeveralPdfsThatExist) {
    Add({}, kCancelled);
    ASSERT_EQ(shown, 1);
    EXPECT_EQ(std::tuple(asked.lStructSize, asked.hwndOwner, asked.hInstance, filter, asked.nFilterIndex,
                         initialName, asked.nMaxFile),
              std::tuple(sizeof(OPENFILENAMEW), Dialog(), ::GetModuleHandleW(nullptr),
                         std::wstring(L"Fichiers PDF (*.pdf)\0*.pdf", 26), 1u, L"", 25'740u));
    EXPECT_EQ(
        std::tuple(asked.lpstrCustomFilter, asked.nMaxCustFilter, asked.lpstrFileTitle, asked.lpstrInitialDir,
                   asked.lpstrTitle, asked.lpstrDefExt, asked.lpTemplateName, asked.FlagsEx),
        std::tuple(nullptr, 0u, nullptr, nullptr, nullptr, nullptr, nullptr, 0u));
    // Hide read-only, multi-selection, path and file must exist, explorer, hook, sizing.
    EXPECT_EQ(asked.Flags, 0x4u | 0x200u | 0x800u | 0x1000u | 0x80000u | 0x20u | 0x800000u);
}

TEST_F(FileListOpenDialogTest, HasAHookThatDoesNothing) {
    Add({}, kCancelled);
    ASSERT_NE(asked.lpfnHook, nullptr);
    const WatchedWindow openDialog;  // the hook's own window is a child of the dialog's
    for (const UINT message : std::initializer_list<UINT>{WM_INITDIALOG, WM_NOTIFY, WM_COMMAND, WM_DESTROY}) {
        EXPECT_EQ(asked.lpfnHook(openDialog.Child(), message, 0, 0), 0u);
    }
    EXPECT_EQ(openDialog.Messages(), 0);
}

TEST_F(FileListOpenDialogTest, AddsOneFileByItsFullPathWhateverItsKind) {
    const std::wstring longPath = L"C:\\" + std::wstring(5'000, L'd') + L".pdf";
    for (const std::wstring& path :
         {std::wstring(L"C:\\in\\a b.pdf"), std::wstring(L"C:\\a.txt"), longPath}) {
        Add({path});
    }
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a b.pdf", L"C:\\a.txt", longPath));
    EXPECT_THAT(Column(1), ElementsAre(L"", L"", L""));
    EXPECT_TRUE(IsEnabled(IDOK));
}

TEST_F(FileListOpenDialogTest, JoinsSeveralFilesWithTheirFolderInTheDialogsOrder) {
    Add({L"C:\\in", L"c.pdf", L"a.pdf", L"noextension"});
    Add({L"C:\\", L"a.pdf", L"b.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\c.pdf", L"C:\\in\\a.pdf", L"C:\\in\\noextension",
                                       L"C:\\a.pdf", L"C:\\b.pdf"));
}

TEST_F(FileListOpenDialogTest, LeavesAJoinThatIsTooLongToTheSystem) {
    const std::wstring longFolder = L"C:\\" + std::wstring(250, L'd');
    Add({longFolder, L"a.pdf", L"much-too-long-for-this-folder.pdf"});
    wchar_t joined[600] = {};
    ::lstrcpyW(joined, longFolder.c_str());
    ::PathAppendW(joined, L"much-too-long-for-this-folder.pdf");
    EXPECT_THAT(Column(0), ElementsAre(longFolder + L"\\a.pdf", std::wstring(joined)));
}

TEST_F(FileListOpenDialogTest, EnablesConvertIfTheListHasRowsAlsoWhenCancelled) {
    ::EnableWindow(Control(IDOK), TRUE);
    Add({L"C:\\in\\a.pdf"}, kCancelled);  // whatever its buffer holds
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(IsEnabled(IDOK));
    Drop({L"C:\\in\\b.pdf"});
    ASSERT_FALSE(IsEnabled(IDOK));
    Add({}, kCancelled);
    EXPECT_EQ(RowCount(), 1);
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListOpenDialogTest, BeepsForWhatTheListHasAlsoWhenThatCameWhileItWasOpen) {
    during = [this] { Drop({L"C:\\in\\a.pdf"}); };
    Add({L"C:\\in", L"b.pdf", L"a.pdf", L"c.pdf", L"b.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"));
    EXPECT_THAT(calls.Calls(), ElementsAre("Beep 440 100", "Beep 440 100"));
}

TEST_F(FileListOpenDialogTest, MayFillTheWholeBuffer) {
    // 25,740 characters without the final nulls: the folder with 3 and its null, the first name with 25,700
    // and its null, and a second name that the buffer's end cuts.
    const std::wstring cutName(25'740 - 4 - 25'701, L'c');
    const std::wstring full = std::wstring(L"C:\\") + L'\0' + std::wstring(25'700, L'n') + L'\0' + cutName;
    ASSERT_EQ(full.size(), 25'740u);
    AddBuffer(full);
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(1, 0), L"C:\\" + cutName);
}

// What Wine makes of a selection that does not fit: it writes on, and reports success.
TEST_F(FileListOpenDialogTest, AddsNothingOfASelectionThatReachesBeyondTheBuffer) {
    Drop({L"C:\\in\\a.pdf"});
    const auto selection = [](std::size_t length) {
        return std::wstring(L"C:\\") + L'\0' + std::wstring(length - 4, L'n');
    };
    for (const std::wstring& tooLong : {selection(25'740) + L'\0', selection(25'741), selection(25'742),
                                        selection(30'000), selection(1'000'000)}) {
        SCOPED_TRACE(tooLong.size());
        ::EnableWindow(Control(IDOK), FALSE);
        AddBuffer(tooLong);
        EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf"));
        EXPECT_TRUE(IsEnabled(IDOK)) << "as after Cancel";
    }
    EXPECT_THAT(calls.Calls(), IsEmpty());
    Add({L"C:\\in\\b.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\b.pdf")) << "the next one is left alone";
}

TEST_F(FileListOpenDialogTest, HasRoomForThirtyThousandNamesBehindItsBuffer) {
    OpenFileBuffer buffer;
    EXPECT_EQ(::HeapSize(::GetProcessHeap(), 0, buffer.Data()), (25'740u + 30'000u * 260u) * sizeof(wchar_t));
}

TEST_F(FileListOpenDialogTest, AddsNothingWithoutMemoryForTheNames) {
    const auto heap = REPLACE_IMPORT(HeapAlloc, [](HANDLE, DWORD, SIZE_T) -> LPVOID { return nullptr; });
    Click(IDC_ADD);
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(asked.lpstrFile, nullptr);
    EXPECT_EQ(RowCount(), 0);
}

}  // namespace
