// The file list: what a drop adds, how rows are told apart, and what a row is.
#include "tests/window/control_calls.h"
#include "tests/window/forwarding_import.h"
#include "tests/window/forwarding_import.h"
#include "tests/window/main_window_fixture.h"

#include <shellapi.h>
#include <shlobj.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FileListTest : public MainWindowFixture {
protected:
    FileListTest() { Create(); }
};

TEST_F(FileListTest, DropAddsPdfsInTheirOrderAndNothingElse) {
    Drop({L"C:\\in\\A.PDF", L"C:\\in\\b.pdf", L"C:\\in\\c.txt", L"C:\\in\\d"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\A.PDF", L"C:\\in\\b.pdf"));
    EXPECT_THAT(Column(1), ElementsAre(L"", L""));
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListTest, DropLeavesTheConvertButtonDisabledInAFreshWindow) {
    Drop({L"C:\\in\\a.pdf"});
    EXPECT_FALSE(IsEnabled(IDOK));
}

TEST_F(FileListTest, DropLeavesTheConvertButtonEnabledToo) {
    ::EnableWindow(Control(IDOK), TRUE);
    Drop({L"C:\\in\\a.pdf"});
    Drop({L"C:\\in\\a.txt"});
    EXPECT_TRUE(IsEnabled(IDOK));
}

TEST_F(FileListTest, OnlyTheLastComponentsExtensionCounts) {
    Drop({L"C:\\in\\report.pdf.bak", L"C:\\in\\noextension", L"C:\\in.pdf\\noextension", L"C:\\in\\.pdf",
          L"C:\\in\\a.b.Pdf", L"C:\\in\\pdf", L"C:\\in\\a.pdfx", L"C:\\in\\a.", L"C:\\in\\a.pdf "});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\.pdf", L"C:\\in\\a.b.Pdf"));
    EXPECT_THAT(calls.Calls(), IsEmpty()) << "what is ignored is ignored in silence";
}

TEST_F(FileListTest, AFolderThatIsCalledLikeAPdfIsAddedLikeAFile) {
    const std::filesystem::path likePdf = folder.Path() / "folder.pdf";
    std::filesystem::create_directory(likePdf);
    std::filesystem::create_directory(folder.Path() / "folder");
    Drop({likePdf.wstring(), folder.File(L"folder")});
    EXPECT_THAT(Column(0), ElementsAre(likePdf.wstring()));
}

TEST_F(FileListTest, PathsAreKeptAsTheyCome) {
    const std::vector<std::wstring> paths = {
        L"c:\\In\\..\\in\\A.pDf",          L"\\\\server\\share\\a b.pdf", L"C:/in/a.pdf",           L"a.pdf",
        L"C:\\in\\\u00E9t\u00E9 & co.pdf", L"C:\\in\\\u65E5\u672C.pdf",   L"C:\\in\\\U0001F4C4.pdf"};
    Drop(paths);
    EXPECT_EQ(Column(0), paths);
}

TEST_F(FileListTest, AFileDroppedTwiceLeavesOneRowAndBeepsOnce) {
    Drop({L"C:\\in\\a.pdf"});
    Drop({L"C:\\in\\a.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf"));
    EXPECT_THAT(calls.Calls(), ElementsAre("Beep 440 100"));
}

TEST_F(FileListTest, EveryDuplicateBeepsAndTheOtherFilesAreStillAdded) {
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    Drop({L"C:\\in\\b.pdf", L"C:\\in\\c.pdf", L"C:\\in\\a.pdf", L"C:\\in\\c.pdf", L"C:\\in\\d.pdf"});
    EXPECT_THAT(Column(0),
                ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf", L"C:\\in\\d.pdf"));
    EXPECT_THAT(calls.Calls(), ElementsAre("Beep 440 100", "Beep 440 100", "Beep 440 100"));
}

TEST_F(FileListTest, PathsThatDifferInOneUnitOnlyAreDifferentRows) {
    const std::vector<std::wstring> paths = {L"C:\\a.pdf",      L"c:\\A.PDF",       L"C:\\a.PDF",
                                             L"C:\\\\a.pdf",    L"C:\\.\\a.pdf",    L"C:/a.pdf",
                                             L"C:\\\u00E9.pdf", L"C:\\e\u0301.pdf", L"C:\\\u00C9.pdf"};
    Drop(paths);
    EXPECT_EQ(Column(0), paths);
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListTest, ARowCarriesNothingButItsPath) {
    {
        const ControlCalls recorded(calls);
        Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    }
    EXPECT_THAT(Only({"LVM_INSERTITEMW", "LVM_SETITEMW"}, calls.Calls()),
                ElementsAre("LVM_INSERTITEMW 1040 row=0 column=0 mask=1 \"C:\\in\\a.pdf\"",
                            "LVM_INSERTITEMW 1040 row=1 column=0 mask=1 \"C:\\in\\b.pdf\""));
    LVITEMW item = {};
    item.mask = LVIF_PARAM;
    item.lParam = 5;
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(item.lParam, 0);
}

TEST_F(FileListTest, RowsComeAtTheEndBehindThoseThatWereThere) {
    Drop({L"C:\\z.pdf"});
    Drop({L"C:\\a.pdf", L"C:\\m.pdf"});
    Drop({L"C:\\b.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\z.pdf", L"C:\\a.pdf", L"C:\\m.pdf", L"C:\\b.pdf"));
}

TEST_F(FileListTest, ARowThatCannotBeAddedIsLeftOutInSilence) {
    bool refused = false;
    const ControlCalls recorded(calls, [&](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != LVM_INSERTITEMW || refused) return std::nullopt;
        refused = true;
        return -1;
    });
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\a.pdf", L"C:\\in\\a.pdf"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\b.pdf", L"C:\\in\\a.pdf"));
    EXPECT_THAT(Only({"Beep"}, calls.Calls()), ElementsAre("Beep 440 100"))
        << "only the last one is a duplicate of a row";
}

TEST_F(FileListTest, TheListIsNotDrawnWhileRowsAreAdded) {
    const ControlCalls recorded(calls);
    Drop({L"C:\\in\\a.txt", L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    EXPECT_THAT(
        Only({"WM_SETREDRAW", "LVM_INSERTITEMW"}, calls.Calls()),
        ElementsAre("WM_SETREDRAW 1040 0 0", "LVM_INSERTITEMW 1040 row=0 column=0 mask=1 \"C:\\in\\a.pdf\"",
                    "LVM_INSERTITEMW 1040 row=1 column=0 mask=1 \"C:\\in\\b.pdf\"", "WM_SETREDRAW 1040 1 0"));
}

// While drawing is off the list forgets what it would have drawn.
struct Invalidation {
    static inline std::vector<HWND> whole;
    static BOOL WINAPI Invalidate(HWND window, const RECT* area, BOOL erases) {
        if (!area && erases) whole.push_back(window);
        return original<&Invalidate>(window, area, erases);
    }
};

TEST_F(FileListTest, TheWholeListIsDueToBeDrawnAfterADropThatAddedRows) {
    const auto invalidate = ReplaceAndForward<&Invalidation::Invalidate>("InvalidateRect");
    Invalidation::whole.clear();
    Drop({L"C:\\in\\a.txt"});
    EXPECT_THAT(Invalidation::whole, IsEmpty());
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    EXPECT_THAT(Invalidation::whole, ElementsAre(Control(IDC_FILE_LIST)));
}

TEST_F(FileListTest, ADropThatAddsNothingDrawsNothing) {
    const ControlCalls recorded(calls);
    Drop({L"C:\\in\\a.txt"});
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListTest, TheListIsDrawnAgainAfterwards) {
    ::ShowWindow(Dialog(), SW_SHOWNA);
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\a.pdf"});
    EXPECT_NE(::GetWindowLongPtrW(Control(IDC_FILE_LIST), GWL_STYLE) & WS_VISIBLE, 0);
    ::UpdateWindow(Control(IDC_FILE_LIST));
    Drop({L"C:\\in\\b.pdf"});
    EXPECT_TRUE(::GetUpdateRect(Control(IDC_FILE_LIST), nullptr, FALSE)) << "the new row would not be seen";
}

TEST_F(FileListTest, ADropIsAnsweredWithZeroAndNotFinished) {
    const HGLOBAL block = ::GlobalAlloc(GHND, sizeof(DROPFILES) + 64);
    auto* const header = static_cast<DROPFILES*>(::GlobalLock(block));
    header->pFiles = sizeof(DROPFILES);
    header->fWide = TRUE;
    ::lstrcpyW(reinterpret_cast<wchar_t*>(header + 1), L"C:\\a.pdf");
    ::GlobalUnlock(block);
    EXPECT_EQ(::SendMessageW(Control(IDC_FILE_LIST), WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0), 0);
    EXPECT_EQ(RowCount(), 1);
    EXPECT_GE(::GlobalSize(block), sizeof(DROPFILES) + 64) << "the block is gone";
    ::GlobalFree(block);
}

std::vector<std::string> g_queries;
UINT WINAPI TwoFilesThenNone(HDROP, UINT index, LPWSTR path, UINT size) {
    g_queries.push_back(std::to_string(index) + " of " + std::to_string(size));
    if (index == 2) return 0;
    ::lstrcpyW(path, index == 0 ? L"C:\\a.pdf" : index == 1 ? L"C:\\b.pdf" : L"C:\\c.pdf");
    return 8;
}

TEST_F(FileListTest, FilesAreAskedForUntilThereIsNone) {
    g_queries.clear();
    const ReplacedImport query("DragQueryFileW", &TwoFilesThenNone);
    ::SendMessageW(Control(IDC_FILE_LIST), WM_DROPFILES, 1, 0);
    EXPECT_THAT(g_queries, ElementsAre("0 of 260", "1 of 260", "2 of 260"));
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\a.pdf", L"C:\\b.pdf"));
}

}  // namespace
