// How the program starts and ends: what it needs beside it, what it keeps, its exit codes.
#include "tests/app/app_fixture.h"

#include "tests/equipment/file_bytes.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

class Start : public AppTest {
protected:
    explicit Start(Converter converter = Converter::StandIn) : AppTest(converter) {}
};

class StartWithoutConverter : public Start {
protected:
    StartWithoutConverter() : Start(Converter::None) {}

    // The message box, once it is there. It must be all that is there.
    [[nodiscard]] HWND WaitForOnlyBox() const {
        std::vector<HWND> dialogs;
        EXPECT_TRUE(Comes([&] { return !(dialogs = driver::Dialogs(Process())).empty(); })) << "no message";
        EXPECT_EQ(dialogs.size(), 1u);
        return dialogs.empty() ? nullptr : dialogs.front();
    }
};

TEST_F(StartWithoutConverter, ShowsOneMessageAndEndsWith2) {
    Launch();
    const HWND box = WaitForOnlyBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(driver::Text(box), L"Talvenor");
    EXPECT_THAT(driver::AllText(box), testing::HasSubstr(L"pdf2djvu.exe est absent !\r\n\r\n"
                                                         L"(Talvenor.exe doit se trouver dans le\r\n"
                                                         L"même dossier que \"pdf2djvu.exe\")"));
    EXPECT_EQ(::GetWindow(box, GW_OWNER), nullptr);
    EXPECT_EQ(driver::PushButtons(box).size(), 1u);
    EXPECT_EQ(::GetDlgItem(box, id::kFileList), nullptr) << "the main window is shown";

    driver::PressDialogButton(box, IDOK);
    EXPECT_EQ(Process().WaitForExit(kSoon), 2u);
}

TEST_F(StartWithoutConverter, MessageAlsoClosesByEscape) {
    Launch();
    const HWND box = WaitForOnlyBox();
    ASSERT_NE(box, nullptr);
    driver::PressKey(driver::OnlyButton(box), VK_ESCAPE);
    EXPECT_EQ(Process().WaitForExit(kSoon), 2u);
}

TEST_F(StartWithoutConverter, ConverterInTheCurrentDirectoryDoesNotCount) {
    driver::StartOptions options;
    options.directory = installed.MakeFolder(L"Ailleurs");
    ASSERT_TRUE(::CopyFileW(Equipment(L"stand_in_converter.exe").c_str(),
                            (options.directory + L"\\pdf2djvu.exe").c_str(), TRUE));
    Launch(options);
    const HWND box = WaitForOnlyBox();
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(driver::AllText(box), testing::HasSubstr(L"pdf2djvu.exe est absent !"));
    driver::PressDialogButton(box, IDOK);
    EXPECT_EQ(Process().WaitForExit(kSoon), 2u);
}

TEST_F(Start, FindsTheConverterBesideItWhateverTheCurrentDirectory) {
    startOptions.directory = installed.MakeFolder(L"Ailleurs");
    AppTest::Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    Convert();
    ASSERT_EQ(Runs().size(), 1u);
    EXPECT_EQ(Runs()[0].directory, installed.Folder());
}

TEST_F(Start, UnderAnotherNameStillLooksInItsOwnFolder) {
    const std::wstring renamed = installed.Folder() + L"\\Mon outil v1.2.beta";
    ASSERT_TRUE(::MoveFileExW(installed.Program().c_str(), renamed.c_str(), 0));
    driver::WriteFileBytes(installed.Log(), "left by an earlier run");
    const driver::Program program(renamed);
    const driver::MainWindow window(program);
    EXPECT_TRUE(driver::IsVisible(window.Control(id::kOpenLog)));
    EXPECT_TRUE(driver::IsEnabled(window.Control(id::kOpenLog)));
    EXPECT_EQ(window.Quit(), 2u);
}

TEST_F(Start, ShowsTheLogButtonOnlyForALogBesideTheProgram) {
    startOptions.directory = installed.MakeFolder(L"Ailleurs");
    driver::WriteFileBytes(startOptions.directory + L"\\TalvenorLog.txt", "not ours");
    AppTest::Start();
    EXPECT_FALSE(driver::IsVisible(Control(id::kOpenLog)));
    EXPECT_FALSE(IsEnabled(id::kOpenLog));
}

TEST_F(Start, ShowsAnEmptyWindowInTheMiddleOfTheWorkArea) {
    AppTest::Start();
    EXPECT_EQ(driver::Text(Window().Window()), L"Talvenor");
    EXPECT_EQ(driver::RowCount(List()), 0);
    EXPECT_EQ(Text(id::kStatus), L"");
    EXPECT_FALSE(IsEnabled(id::kConvert));

    RECT window = {};
    ::GetWindowRect(Window().Window(), &window);
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(Window().Window(), MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    // Where a window manager adds a frame of its own, the window moves by part of that frame.
    constexpr LONG kFrame = 32;
    EXPECT_NEAR(window.left + window.right, work.left + work.right, kFrame);
    EXPECT_NEAR(window.top + window.bottom, work.top + work.bottom, kFrame);
}

// In an order in which none of them undoes another: "--no-text" disables "--lines", and the output folder's
// edit must not be left empty.
constexpr int kBoxes[] = {id::kPagesBox,     id::kResolutionBox, id::kNoMetadata,     id::kNoOutline,
                          id::kNoHyperlinks, id::kLines,         id::kNoText,         id::kMonochrome,
                          id::kHideOutput,   id::kShutdown,      id::kOutputFolderBox};
constexpr int kEdits[] = {id::kPages, id::kResolution, id::kExtraOptions, id::kOutputFolder};

std::vector<std::wstring> KeysOfTheUser() {
    std::vector<std::wstring> names;
    HKEY software = nullptr;
    EXPECT_EQ(::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, &software), ERROR_SUCCESS);
    wchar_t name[256] = {};
    for (DWORD index = 0; ::RegEnumKeyW(software, index, name, 256) == ERROR_SUCCESS; ++index)
        names.push_back(name);
    ::RegCloseKey(software);
    return names;
}

std::vector<std::wstring> FilesIn(const std::wstring& folder) {
    std::vector<std::wstring> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().wstring());
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(Start, KeepsNothingFromOneRunToTheNext) {
    const auto pdf = installed.MakePdf(L"a.pdf");
    const auto files = FilesIn(installed.Folder());
    const auto keys = KeysOfTheUser();
    {
        const driver::Program program(installed.Program());
        const driver::MainWindow window(program);
        window.DropPdfs({pdf});
        for (const int box : kBoxes) window.Tick(box);
        window.Type(id::kOutputFolder, installed.PdfFolder());
        window.Type(id::kPages, L"1-3");
        window.Type(id::kResolution, L"600");
        window.Type(id::kExtraOptions, L"--verbose");
        ASSERT_EQ(window.Quit(), 2u);
    }
    EXPECT_EQ(FilesIn(installed.Folder()), files);
    EXPECT_EQ(KeysOfTheUser(), keys);

    const driver::Program program(installed.Program());
    const driver::MainWindow window(program);
    EXPECT_EQ(driver::RowCount(window.Control(id::kFileList)), 0);
    for (const int box : kBoxes) EXPECT_FALSE(driver::IsChecked(window.Control(box))) << box;
    for (const int edit : kEdits) EXPECT_EQ(driver::Text(window.Control(edit)), L"") << edit;
    EXPECT_EQ(window.Quit(), 2u);
}

TEST_F(Start, OpensAsItIsAskedTo) {
    startOptions.show = SW_SHOWMINNOACTIVE;
    AppTest::Start();
    EXPECT_TRUE(Comes([&] { return ::IsIconic(Window().Window()) != FALSE; }));
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_F(Start, IgnoresItsCommandLine) {
    startOptions.arguments = L"/? --help \"" + installed.MakePdf(L"a.pdf") + L"\"";
    AppTest::Start();
    EXPECT_EQ(driver::RowCount(List()), 0);
    EXPECT_EQ(Window().OpenBox(), nullptr);
}

struct WayOut {
    const char* name;
    void (*leave)(HWND mainWindow);
};

class Quitting : public AppTest, public testing::WithParamInterface<WayOut> {};

TEST_P(Quitting, EndsWith2) {
    Start();
    GetParam().leave(Window().Window());
    EXPECT_EQ(Process().WaitForExit(kSoon), 2u);
}

INSTANTIATE_TEST_SUITE_P(
    EveryWay, Quitting,
    testing::Values(
        WayOut{"Button", [](HWND window) { driver::Click(driver::Control(window, id::kQuit)); }},
        WayOut{"Escape",
               [](HWND window) { driver::PressKey(driver::Control(window, id::kFileList), VK_ESCAPE); }},
        WayOut{"CloseBox", [](HWND window) { ::PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); }}),
    [](const auto& way) { return std::string(way.param.name); });

}  // namespace
