// What the program holds does not grow with what is done: over many conversions, stops, dialogs and starts.
#include "tests/faults/leaks/held.h"
#include "tests/faults/options.h"

#include "tests/faults/harness/bare_windows.h"
#include "tests/faults/harness/child_process.h"
#include "tests/faults/harness/user.h"

#include "res/resource.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

// As often as asked for, or a short form of it.
int Times(int full, int shortForm) {
    return IsFull() ? full : shortForm;
}

class Leaks : public testing::Test {
protected:
    ~Leaks() override {
        user.WaitForWorkers();
        user.Quit();
        EXPECT_TRUE(program.WaitForEnd(std::chrono::seconds(15)));
        EXPECT_EQ(platform.Blocks(), 0);
        EXPECT_EQ(platform.Icons(), 0);
        EXPECT_EQ(platform.ComObjects(), 0);
        EXPECT_EQ(platform.AwakeThreads(), 0);
    }

    // Starts the program with `number` files in its list.
    void OpenWith(int number) {
        program.Start();
        user.WaitForWindow();
        std::vector<std::wstring> paths;
        for (int i = 0; i < number; ++i) paths.push_back(L"C:\\in\\" + std::to_wstring(i) + L".pdf");
        user.Drop(paths);
        user.Press(IDC_ADD);
    }
    void Convert() {
        user.Press(IDOK);
        user.WaitForWorkers();
    }

    Platform platform;
    CallWatch watch;
    ProgramHost program{platform, watch};
    User user{program};
};

constexpr int kFilesInBatch = 25;

TEST_F(Leaks, NoneInConversions) {
    OpenWith(kFilesInBatch);
    user.Press(IDC_HIDE_OUTPUT);  // with a record in the log for each
    const int batches = Times(1000, 250) / kFilesInBatch;
    ExpectFlat("batches of 25 conversions on paper", batches, platform, [&] { Convert(); });
    EXPECT_GE(platform.ConvertersStarted(), batches * kFilesInBatch);
}

TEST_F(Leaks, NoneInConversionsByRealProcesses) {
    platform.realConverter = TestFolder() + L"\\fatal_probe.exe nothing";
    OpenWith(1);
    ExpectFlat("conversions by real processes", Times(100, 10), platform, [&] { Convert(); });
}

TEST_F(Leaks, NoneInStops) {
    platform.converters = {{.held = true}};
    OpenWith(2);
    int started = 0;
    ExpectFlat("stops", Times(200, 10), platform, [&] {
        user.Press(IDOK);
        user.WaitForConverter(++started);
        user.Press(IDCANCEL);
        user.WaitForWorkers();
    });
    EXPECT_EQ(platform.Requests(Platform::Request::Close).size(), static_cast<std::size_t>(started));
}

TEST_F(Leaks, NoneInStopsByTheJob) {
    platform.converters = {{.held = true, .console = Console::None}};
    OpenWith(2);
    int started = 0;
    ExpectFlat("stops by the job", Times(200, 10), platform, [&] {
        user.Press(IDOK);
        user.WaitForConverter(++started);
        user.Press(IDCANCEL);
        user.WaitForWorkers();
    });
    EXPECT_EQ(platform.Requests(Platform::Request::Job).size(), static_cast<std::size_t>(started));
}

// The job ends what would else go on longer than anybody waits for it here.
TEST_F(Leaks, NoneInStopsOfRealProcesses) {
    const std::filesystem::path equipment = std::filesystem::path(TestFolder()) / TALVENOR_EQUIPMENT;
    platform.realConverter = L'"' + (equipment / L"stand_in_converter.exe").wstring() + L"\" wait30000.pdf";
    OpenWith(1);
    int started = 0;
    ExpectFlat("stops of real processes", Times(100, 10), platform, [&] {
        user.Press(IDOK);
        user.WaitForConverter(++started);
        user.Press(IDCANCEL);
        user.WaitForWorkers();
    });
    EXPECT_EQ(platform.Requests(Platform::Request::Job).size(), static_cast<std::size_t>(started));
}

TEST_F(Leaks, NoneInStartsThatFail) {
    platform.converters = {{.startError = ERROR_FILE_NOT_FOUND}};
    OpenWith(1);
    ExpectFlat("converters that do not start", Times(200, 10), platform, [&] { Convert(); });
}

TEST_F(Leaks, NoneInAboutBoxes) {
    OpenWith(0);
    int opened = 0;
    ExpectFlat("About boxes", Times(200, 10), platform, [&] {
        const HWND about = user.PressForDialog(IDC_ABOUT, IDC_VERSION);
        opened += about != nullptr;
        user.CloseDialog(about, IDOK);
    });
    EXPECT_GE(opened, Times(200, 10));
}

TEST_F(Leaks, NoneInCountdowns) {
    OpenWith(1);
    user.Press(IDC_SHUT_DOWN);
    int opened = 0;
    ExpectFlat("countdowns", Times(200, 10), platform, [&] {
        user.Press(IDOK);
        const HWND countdown = user.WaitForWorkersDialog(IDC_SECONDS);
        opened += countdown != nullptr;
        user.CloseDialog(countdown, IDCANCEL);
        user.WaitForWorkers();
    });
    EXPECT_GE(opened, Times(200, 10));
}

TEST_F(Leaks, NoneInRowsThatComeAndGo) {
    OpenWith(0);
    ExpectFlat("drops of 100 files and clearings", Times(200, 10), platform, [&] {
        std::vector<std::wstring> paths;
        for (int i = 0; i < 100; ++i) paths.push_back(L"C:\\in\\" + std::to_wstring(i) + L".pdf");
        user.Drop(paths);
        user.Press(IDC_CLEAR);
    });
}

// The whole life of the program, main window and all, in this process.
TEST(LeaksOfLives, NoneInMainWindows) {
    const Platform none;
    const auto openAndQuit = [] {
        Platform platform;
        CallWatch watch;
        ProgramHost program(platform, watch);
        User user(program);
        program.Start();
        user.WaitForWindow();
        user.Quit();
        EXPECT_TRUE(program.WaitForEnd(std::chrono::seconds(15)));
        EXPECT_EQ(program.ExitCode(), 2);
        EXPECT_EQ(platform.Blocks(), 0);
        EXPECT_EQ(platform.Icons(), 0);
    };
    ExpectFlat("main windows", Times(200, 10), none, openAndQuit, GdiObjectsKeptByTheSystem());
}

// The same with all that is made for a batch, and for a screen reader.
TEST(LeaksOfLives, NoneInMainWindowsThatConvert) {
    const Platform none;
    const auto convertAndQuit = [] {
        Platform platform;
        platform.screenReader = true;
        CallWatch watch;
        ProgramHost program(platform, watch);
        User user(program);
        program.Start();
        user.WaitForWindow();
        user.Drop({L"C:\\in\\a.pdf"});
        user.Press(IDC_ADD);
        user.Press(IDOK);
        user.WaitForWorkers();
        user.WaitForPosted();
        EXPECT_EQ(platform.ComObjects(), 2) << "the taskbar and the names";
        user.Quit();
        EXPECT_TRUE(program.WaitForEnd(std::chrono::seconds(15)));
        EXPECT_EQ(platform.Blocks(), 0);
        EXPECT_EQ(platform.Icons(), 0);
        EXPECT_EQ(platform.ComObjects(), 0);
        EXPECT_EQ(platform.Names(), "");
    };
    ExpectFlat("main windows with a batch", Times(200, 10), none, convertAndQuit,
               GdiObjectsKeptByTheSystem());
}

}  // namespace
