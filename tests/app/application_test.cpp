// How the program starts: what it needs beside it, where it looks, and what it keeps.
#include "tests/app/app_fixture.h"

#include <set>

namespace {

class ApplicationWithoutConverter : public AppTest {
protected:
    ApplicationWithoutConverter() : AppTest(Converter::None) {}
};

TEST_F(ApplicationWithoutConverter, ShowsOneMessageAndEndsWith2ThoughTheCurrentDirectoryHasOne) {
    startOptions.directory = installed.MakeFolder(L"Ailleurs");
    ASSERT_TRUE(::CopyFileW(Equipment(L"stand_in_converter.exe").c_str(),
                            (startOptions.directory + L"\\pdf2djvu.exe").c_str(), TRUE));
    Launch();
    std::vector<HWND> dialogs;
    ASSERT_TRUE(Comes([&] { return !(dialogs = driver::Dialogs(Process())).empty(); })) << "no message";
    ASSERT_EQ(dialogs.size(), 1u);
    EXPECT_THAT(driver::AllText(dialogs[0]), testing::HasSubstr(L"pdf2djvu.exe est absent !"));
    EXPECT_EQ(driver::FindControl(dialogs[0], IDC_FILE_LIST), nullptr) << "the main window is shown";
    driver::PressKey(dialogs[0], VK_ESCAPE);
    EXPECT_EQ(Process().WaitForExit(), 2u);
}

class Application : public AppTest {
protected:
    static std::vector<std::wstring> RegistryKeysOfTheUser() {
        std::vector<std::wstring> names;
        HKEY software = nullptr;
        EXPECT_EQ(::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, &software), ERROR_SUCCESS);
        wchar_t name[256] = {};
        for (DWORD index = 0; ::RegEnumKeyW(software, index, name, 256) == ERROR_SUCCESS; ++index)
            names.push_back(name);
        ::RegCloseKey(software);
        return names;
    }
    [[nodiscard]] std::set<std::filesystem::path> FilesBesideIt() const {
        const std::filesystem::directory_iterator files(installed.Folder());
        return {begin(files), end(files)};
    }
};

TEST_F(Application, KeepsNothingFromOneRunToTheNext) {
    const auto pdf = installed.MakePdf(L"a.pdf");
    const auto files = FilesBesideIt();
    const auto keys = RegistryKeysOfTheUser();
    Start();
    const auto state = State();
    Window().DropPdfs({pdf});
    // In an order in which none of them undoes another: "--no-text" disables "--lines", and the output
    // folder's edit must not be left empty.
    for (const int checkBox :
         {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_NO_METADATA, IDC_NO_OUTLINE, IDC_NO_HYPERLINKS,
          IDC_LINES, IDC_NO_TEXT, IDC_MONOCHROME, IDC_HIDE_OUTPUT, IDC_SHUT_DOWN, IDC_OUTPUT_FOLDER_CHECK})
        Window().Check(checkBox);
    Window().Type(IDC_OUTPUT_FOLDER, installed.PdfFolder());
    Window().Type(IDC_PAGES, L"1-3");
    Window().Type(IDC_RESOLUTION, L"600");
    Window().Type(IDC_EXTRA_OPTIONS, L"--verbose");
    ASSERT_EQ(Window().Quit(), 2u);
    EXPECT_EQ(FilesBesideIt(), files);
    EXPECT_EQ(RegistryKeysOfTheUser(), keys);

    Start();
    EXPECT_EQ(driver::RowCount(List()), 0);
    EXPECT_EQ(State(), state);
}

TEST_F(Application, OpensMinimisedWhenItsStarterAsksForThat) {
    startOptions.show = SW_SHOWMINNOACTIVE;
    Start();
    EXPECT_TRUE(Comes([&] { return ::IsIconic(Window().Window()) != FALSE; }));
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_F(Application, OpensItsWindowWhenItsPathHasTheGreatestLength) {
    constexpr std::size_t kLongest = 259;  // leaves room for a terminator in 260 characters
    const std::wstring file = L"\\Talvenor.exe";
    const std::wstring parent = installed.MakeFolder(std::wstring(100, L'p')) + L'\\';
    const std::wstring folder = parent + std::wstring(kLongest - parent.size() - file.size(), L'q');
    std::filesystem::rename(installed.Folder(), folder);
    const driver::Program program(folder + file);
    const driver::MainWindow window(program);
    EXPECT_EQ(window.Quit(), 2u);
}

}  // namespace
