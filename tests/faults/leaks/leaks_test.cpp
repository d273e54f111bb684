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

// How a stop ends the converter that runs.
struct StopCase {
    const char* name;
    const char* figure;
    int full;
    Console console;               // of a converter on paper
    const wchar_t* realConverter;  // with its arguments; null: on paper
    Platform::Request request;     // made once for each stop
};

class LeaksOfStops : public Leaks, public testing::WithParamInterface<StopCase> {};

TEST_P(LeaksOfStops, None) {
    platform.converters = {{.held = true, .console = GetParam().console}};
    if (GetParam().realConverter) {
        const std::filesystem::path equipment = std::filesystem::path(TestFolder()) / TALVENOR_EQUIPMENT;
        platform.realConverter = L'"' + equipment.wstring() + L'\\' + GetParam().realConverter;
    }
    OpenWith(2);
    int started = 0;
    ExpectFlat(GetParam().figure, Times(GetParam().full, 10), platform, [&] {
        user.Press(IDOK);
        user.WaitForConverter(++started);
        user.Press(IDCANCEL);
        user.WaitForWorkers();
    });
    EXPECT_EQ(platform.Requests(GetParam().request).size(), static_cast<std::size_t>(started));
}

INSTANTIATE_TEST_SUITE_P(
    In, LeaksOfStops,
    testing::Values(StopCase{"ByTheWindow", "stops", 200, Console::Window, nullptr, Platform::Request::Close},
                    StopCase{"ByTheJob", "stops by the job", 200, Console::None, nullptr,
                             Platform::Request::Job},
                    // The job ends what would else go on longer than anybody waits for it here.
                    StopCase{"OfRealProcesses", "stops of real processes", 100, Console::None,
                             L"stand_in_converter.exe\" wait30000.pdf", Platform::Request::Job}),
    [](const auto& stop) { return std::string(stop.param.name); });

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

// The whole life of the program in this process: its main window alone, and with all that is made for a batch
// and for a screen reader.
class LeaksOfLives : public testing::TestWithParam<bool> {};

TEST_P(LeaksOfLives, None) {
    const bool converts = GetParam();
    const Platform none;
    const auto live = [&] {
        Platform platform;
        platform.screenReader = converts;
        CallWatch watch;
        ProgramHost program(platform, watch);
        User user(program);
        program.Start();
        user.WaitForWindow();
        if (converts) {
            user.Drop({L"C:\\in\\a.pdf"});
            user.Press(IDC_ADD);
            user.Press(IDOK);
            user.WaitForWorkers();
            user.WaitForPosted();
            EXPECT_EQ(platform.ComObjects(), 2) << "the taskbar and the names";
        }
        user.Quit();
        EXPECT_TRUE(program.WaitForEnd(std::chrono::seconds(15)));
        EXPECT_EQ(program.ExitCode(), 2);
        EXPECT_EQ(platform.Blocks(), 0);
        EXPECT_EQ(platform.Icons(), 0);
        EXPECT_EQ(platform.ComObjects(), 0);
        EXPECT_EQ(platform.Names(), "");
    };
    ExpectFlat(converts ? "main windows with a batch" : "main windows", Times(200, 10), none, live,
               GdiObjectsKeptByTheSystem());
}

INSTANTIATE_TEST_SUITE_P(InMainWindows, LeaksOfLives, testing::Bool(),
                         [](const auto& one) { return one.param ? "ThatConvert" : "ThatOpen"; });

}  // namespace
