// The list by mouse, keyboard and the system's open dialog: what selects, removes, shows and adds.
#include "tests/app/input_fixture.h"

#include <commctrl.h>

namespace {

using testing::ElementsAre;

class FileList : public InputTest {
protected:
    [[nodiscard]] bool Selects(int row) const {
        return Comes([&] { return driver::SelectedRow(List()) == row; });
    }
};

TEST_F(FileList, ClickAndArrowSelectARowWhoseCommandLineAKeyShowsAndWhichAnotherDeletes) {
    const std::vector<std::wstring> rows = {installed.MakePdf(L"c.pdf"), installed.MakePdf(L"a.pdf"),
                                            installed.MakePdf(L"b.pdf")};
    Start();
    Window().DropPdfs(rows);
    Window().Check(IDC_NO_TEXT);
    Window().Check(IDC_HIDE_OUTPUT);
    BringToFront();
    EXPECT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
    const RECT area = driver::RowArea(List(), 1);
    input::PointAt(List(), 60, (area.top + area.bottom) / 2);
    input::Click();
    EXPECT_TRUE(Selects(1));
    EXPECT_EQ(Text(IDC_STATUS), rows[1]);
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    input::Press(VK_DOWN, {VK_SHIFT});
    EXPECT_TRUE(Selects(2));
    EXPECT_EQ(driver::Ask(List(), LVM_GETSELECTEDCOUNT), 1);
    input::Press(VK_F7);
    const HWND message = WaitForDialog();
    EXPECT_EQ(driver::Text(message), L"Talvenor");
    EXPECT_THAT(driver::AllText(message) + L"\n",
                testing::HasSubstr(L"\npdf2djvu.exe -o \"" + installed.PdfFolder() +
                                   L"\\b.djvu\" -v  --no-text \"" + rows[2] + L"\"\n"));
    AnswerDialog(IDOK);
    EXPECT_THAT(Runs(), testing::IsEmpty()) << "shown, not run";
    BringToFront();
    input::Press(VK_DELETE);
    EXPECT_TRUE(Comes([&] { return driver::RowCount(List()) == 2; }));
    EXPECT_THAT(Paths(), ElementsAre(rows[0], rows[1]));
}

TEST_F(FileList, DropLeavesOutOtherFilesAndPathsThatAreTooLong) {
    const auto named = installed.MakeFolder(L"dossier.pdf");
    const auto ofLength = [](std::size_t length) {
        return L"C:\\" + std::wstring(length - 7, L'n') + L".pdf";
    };
    Start();
    driver::DropFiles(List(), {L"C:\\A.PDF", L"C:\\c.txt", installed.Folder(), ofLength(260), ofLength(320),
                               ofLength(259), named});
    EXPECT_TRUE(Comes([&] { return driver::RowCount(List()) == 3; }));
    EXPECT_THAT(Paths(), ElementsAre(L"C:\\A.PDF", ofLength(259), named)) << "in the order of the drop";
}

class OpenDialog : public AppTest {
protected:
    // Names files as a person types them, and accepts.
    void Add(const std::wstring& names) const {
        driver::Click(Control(IDC_ADD));
        const HWND dialog = WaitForDialog();
        const HWND open = driver::Control(dialog, IDOK);
        ASSERT_TRUE(Comes([&] { return driver::IsVisible(open) && driver::IsEnabled(open); }));
        constexpr int kName = 0x047C;  // a combo box
        driver::SetText(driver::Control(dialog, kName), names);
        driver::Click(open);
        ASSERT_TRUE(Comes([&] { return !::IsWindow(dialog) && driver::IsEnabled(Window().Window()); }));
        driver::Ask(Window().Window(), WM_NULL);
    }
};

TEST_F(OpenDialog, AddsFilesOfAnyKindOneOrSeveralThatTheListDoesNotHave) {
    const auto pdf = installed.MakePdf(L"Été & hiver.pdf");
    const auto other = installed.MakePdf(L"notes.txt");
    const auto b = installed.MakePdf(L"b b.pdf");
    const auto c = installed.MakePdf(L"c.pdf");
    startOptions.directory = installed.PdfFolder();
    Start();
    Add(pdf);
    EXPECT_TRUE(IsEnabled(IDOK));
    Add(other);
    Add(pdf);
    EXPECT_THAT(Paths(), ElementsAre(pdf, other));
    Add(L"\"c.pdf\" \"notes.txt\" \"b b.pdf\"");
    EXPECT_THAT(Paths(), testing::UnorderedElementsAre(pdf, other, b, c));
}

// More than there is room for: nothing is added, and nothing else happens.
TEST_F(OpenDialog, LeavesOutASelectionThatIsTooLargeAndTakesASmallOneAfterIt) {
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
    Add(names);
    EXPECT_THAT(Paths(), ElementsAre(a));
    Add(b);
    EXPECT_THAT(Paths(), ElementsAre(a, b));
    EXPECT_EQ(Window().Quit(), 2u);
}

}  // namespace
