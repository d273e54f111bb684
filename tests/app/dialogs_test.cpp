// The dialogs that the window opens: the one that adds files, the folder browser, the About box; and what
// happens to a log that is gone.
#include "tests/app/app_fixture.h"

#include "tests/app/system_processes.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/shipped_version.h"
#include "tests/equipment/wine.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class AddDialog : public AppTest {};

TEST_F(AddDialog, AddsOneFileAndEnablesConvert) {
    const auto a = installed.MakePdf(L"Été & hiver.pdf");
    Start();
    AddByDialog(a);
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(a));
    EXPECT_TRUE(IsEnabled(id::kConvert));
}

TEST_F(AddDialog, AddsSeveralFilesOfAFolder) {
    const auto a = installed.MakePdf(L"a.pdf");
    const auto b = installed.MakePdf(L"b b.pdf");
    const auto c = installed.MakePdf(L"c.pdf");
    startOptions.directory = installed.PdfFolder();
    Start();
    AddByDialog(L"\"c.pdf\" \"a.pdf\" \"b b.pdf\"");
    EXPECT_THAT(driver::ColumnTexts(List(), 0), testing::UnorderedElementsAre(a, b, c));
    EXPECT_TRUE(IsEnabled(id::kConvert));
}

TEST_F(AddDialog, TakesAFileOfAnotherKind) {
    const auto other = installed.MakePdf(L"notes.txt");
    Start();
    AddByDialog(other);
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(other));
}

TEST_F(AddDialog, LeavesOutWhatTheListHas) {
    const auto a = installed.MakePdf(L"a.pdf");
    Start();
    Window().DropPdfs({a});
    AddByDialog(a);
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(a));
    EXPECT_TRUE(IsEnabled(id::kConvert));
}

// More than there is room for: nothing is added, and nothing but that comes of it.
TEST_F(AddDialog, SelectionThatIsTooLargeIsLeftOutAndASmallOneIsTakenAfterIt) {
    const auto a = installed.MakePdf(L"a.pdf");
    const auto b = installed.MakePdf(L"b.pdf");
    std::wstring names;
    for (int number = 1000; number < 1400; ++number) {
        const std::wstring name = std::wstring(80, L'n') + std::to_wstring(number) + L".pdf";
        static_cast<void>(installed.MakePdf(name));
        names += L'"' + name + L"\" ";
    }
    startOptions.directory = installed.PdfFolder();
    Start();
    Window().DropPdfs({a});
    AddByDialog(names);
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(a));
    AddByDialog(b);
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(a, b));
    EXPECT_TRUE(IsEnabled(id::kConvert));
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_F(AddDialog, CancelledOverAnEmptyListChangesNothing) {
    Start();
    Window().OpenAndCancelAddDialog();
    EXPECT_EQ(driver::RowCount(List()), 0);
    EXPECT_FALSE(IsEnabled(id::kConvert));
}

class Dialogs : public AppTest {};

TEST_F(Dialogs, CancelledFolderBrowserLeavesTheFolderAlone) {
    Start();
    Window().Tick(id::kOutputFolderBox);
    Window().Type(id::kOutputFolder, installed.PdfFolder());
    driver::Click(Control(id::kBrowse));
    AnswerBox(IDCANCEL);
    EXPECT_EQ(Text(id::kOutputFolder), installed.PdfFolder());
    EXPECT_TRUE(IsChecked(id::kOutputFolderBox));
}

TEST_F(Dialogs, AboutTellsNameAndVersion) {
    Start();
    driver::Click(Control(id::kAbout));
    const HWND about = WaitForBox();
    EXPECT_EQ(driver::Text(about), L"À propos...");
    EXPECT_EQ(::GetWindow(about, GW_OWNER), Window().Window());
    const std::wstring text = driver::AllText(about) + L"\n";
    EXPECT_THAT(text, HasSubstr(L"\nTalvenor \n"));
    EXPECT_THAT(text, HasSubstr(std::wstring(L"\n") + shipped::kAboutLine + L"\n"));
    EXPECT_THAT(text, HasSubstr(L"\nUne interface graphique pour pdf2djvu Win32\nUtilisation libre\n"));
    AnswerBox(IDOK);
    EXPECT_TRUE(driver::IsEnabled(Window().Window()));
}

TEST_F(Dialogs, AboutStandsInTheMiddleOfTheWindow) {
    Start();
    // Away from the middle of the screen, where it opens.
    RECT window = {};
    ::GetWindowRect(Window().Window(), &window);
    const LONG before = window.left;
    constexpr LONG kAway = 150;
    ::SetWindowPos(Window().Window(), nullptr, window.left - kAway, window.top - kAway, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_TRUE(Comes([&] {
        ::GetWindowRect(Window().Window(), &window);
        return before - window.left > kAway / 2;
    }));
    driver::Click(Control(id::kAbout));
    RECT about = {};
    ::GetWindowRect(WaitForBox(), &about);
    ::GetWindowRect(Window().Window(), &window);
    // Where a window manager adds a frame of its own, a window moves by part of that frame.
    constexpr LONG kFrame = 32;
    EXPECT_NEAR(about.left + about.right, window.left + window.right, kFrame);
    EXPECT_NEAR(about.top + about.bottom, window.top + window.bottom, kFrame);
    AnswerBox(IDOK);
}

TEST_F(Dialogs, AboutClosesByEscapeWithoutLeavingTheProgram) {
    Start();
    driver::Click(Control(id::kAbout));
    const HWND about = WaitForBox();
    driver::PressKey(driver::Control(about, IDOK), VK_ESCAPE);
    EXPECT_TRUE(Comes([&] { return !::IsWindow(about); }));
    EXPECT_FALSE(Process().HasEnded());
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_F(Dialogs, AboutShowsTheProgramsIconWhole) {
    Start();
    driver::Click(Control(id::kAbout));
    const HWND about = WaitForBox();
    for (HWND child = nullptr; (child = ::FindWindowExW(about, child, L"Static", nullptr)) != nullptr;) {
        if ((::GetWindowLongPtrW(child, GWL_STYLE) & SS_TYPEMASK) != SS_ICON) continue;
        RECT area = {};
        ::GetClientRect(child, &area);
        EXPECT_GE(area.right, ::GetSystemMetrics(SM_CXICON));
        EXPECT_GE(area.bottom, ::GetSystemMetrics(SM_CYICON));
        return;
    }
    FAIL() << "the box has no icon";
}

TEST_F(Dialogs, DestinationIsOpenedByTheSystemsExplorer) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows shows the folder in a process of its own";
    Start();
    Window().Tick(id::kOutputFolderBox);
    Window().Type(id::kOutputFolder, installed.PdfFolder());
    ASSERT_TRUE(Comes([&] { return IsEnabled(id::kOpenDestination); }));
    driver::Click(Control(id::kOpenDestination));
    const auto explorers = [&] { return ChildrenOf(Process().Id(), L"explorer.exe"); };
    ASSERT_TRUE(Comes([&] { return !explorers().empty(); })) << "none is started";
    wchar_t folder[MAX_PATH] = {};
    ::GetWindowsDirectoryW(folder, MAX_PATH);
    EXPECT_THAT(explorers(), Each(testing::StartsWith(folder)));
    EXPECT_EQ(Window().OpenBox(), nullptr);
}

TEST_F(Dialogs, LogThatIsGoneIsAnError) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier run");
    Start();
    ASSERT_TRUE(::DeleteFileW(installed.Log().c_str()));
    driver::Click(Control(id::kOpenLog));
    // The shell tells it in its own words first, then the program does.
    if (driver::Text(WaitForBox()) != L"Talvenor") AnswerBox(IDOK);
    const HWND box = WaitForBox();
    EXPECT_EQ(driver::Text(box), L"Talvenor");
    EXPECT_THAT(driver::AllText(box), HasSubstr(L"\nErreur ShellExecute : "));
    AnswerBox(IDOK);
    EXPECT_FALSE(Process().HasEnded());
}

}  // namespace
