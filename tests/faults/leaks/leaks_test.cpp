// What the program holds does not grow with what is done: over many conversions, stops, dialogs and starts.
#include "tests/faults/leaks/held.h"
#include "tests/faults/options.h"

#include "tests/equipment/main_window.h"
#include "tests/equipment/wine.h"
#include "tests/faults/harness/child_process.h"
#include "tests/faults/harness/user.h"
#include "tests/faults/scenarios/usual.h"

#include "res/resource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

using testing::Each;
using testing::Pair;

// As often as asked for, or a short form of it.
int Times(int full, int shortForm = 10) {
    return IsFull() ? full : shortForm;
}

std::vector<std::wstring> Paths(int number) {
    std::vector<std::wstring> paths;
    for (int i = 0; i < number; ++i) paths.push_back(L"C:\\in\\" + std::to_wstring(i) + L".pdf");
    return paths;
}

class Leaks : public testing::Test, protected Stage {
protected:
    ~Leaks() override {
        user.WaitForWorkers();
        user.Quit();
        EXPECT_TRUE(program.WaitForEnd());
        EXPECT_THAT(platform.Held(), Each(Pair(testing::_, 0)));
        EXPECT_EQ(platform.Fact("awake"), "0");
    }

    void Convert() {
        user.Press(IDOK);
        user.WaitForWorkers();
    }
};

TEST_F(Leaks, NoneInConversions) {
    constexpr int kFilesInBatch = 25;
    OpenWithFiles(user, Paths(kFilesInBatch));
    user.Press(IDC_HIDE_OUTPUT);  // with a record in the log for each
    const int batches = Times(1000, 250) / kFilesInBatch;
    ExpectFlat("batches of 25 conversions on paper", batches, platform, [&] { Convert(); });
    EXPECT_GE(platform.ConvertersStarted(), batches * kFilesInBatch);
}

TEST_F(Leaks, NoneInConversionsByRealProcesses) {
    platform.realConverter = (TestFolder() / "fatal_probe.exe nothing").wstring();
    OpenWithFiles(user, Paths(1));
    ExpectFlat("conversions by real processes", Times(100), platform, [&] { Convert(); });
}

// How a stop ends the converter that runs.
struct StopCase {
    const char* name;
    const char* figure;
    int full;
    Console console;               // of a converter on paper
    const wchar_t* realConverter;  // with its arguments; null: on paper
    const char* request;           // made once for each stop

    friend void PrintTo(const StopCase& row, std::ostream* out) { *out << row.figure; }
};

class LeaksOfStops : public Leaks, public testing::WithParamInterface<StopCase> {};

TEST_P(LeaksOfStops, None) {
    platform.converters = {{.held = true, .console = GetParam().console}};
    if (GetParam().realConverter) {
        const std::filesystem::path equipment = TestFolder() / TALVENOR_EQUIPMENT;
        platform.realConverter = L'"' + equipment.wstring() + L'\\' + GetParam().realConverter;
    }
    OpenWithFiles(user, Paths(2));
    int started = 0;
    ExpectFlat(GetParam().figure, Times(GetParam().full), platform, [&] {
        user.Press(IDOK);
        user.WaitForConverter(++started);
        user.Press(IDCANCEL);
        user.WaitForWorkers();
    });
    EXPECT_EQ(platform.Requests(GetParam().request).size(), static_cast<std::size_t>(started));
    EXPECT_THAT(platform.Requests("messages"), Each(kQuestion)) << "a converter was not started";
}

INSTANTIATE_TEST_SUITE_P(
    In, LeaksOfStops,
    testing::Values(StopCase{"ByTheWindow", "stops", 200, Console::Window, nullptr, "closing"},
                    StopCase{"ByTheJob", "stops by the job", 200, Console::None, nullptr, "jobs"},
                    // The job ends what would else go on longer than anybody waits for it here.
                    StopCase{"OfRealProcesses", "stops of real processes", 100, Console::None,
                             L"stand_in_converter.exe\" wait30000.pdf", "jobs"}),
    [](const auto& stop) { return std::string(stop.param.name); });

TEST_F(Leaks, NoneInStartsThatFail) {
    platform.converters = {{.startError = ERROR_FILE_NOT_FOUND}};
    OpenWithFiles(user, Paths(1));
    ExpectFlat("converters that do not start", Times(200), platform, [&] { Convert(); });
}

TEST_F(Leaks, NoneInAboutBoxes) {
    OpenWithFiles(user, Paths(0));
    int opened = 0;
    ExpectFlat("About boxes", Times(200), platform, [&] {
        const HWND about = user.PressForDialog(IDC_ABOUT, IDC_VERSION);
        opened += about != nullptr;
        user.CloseDialog(about, IDOK);
    });
    EXPECT_GE(opened, Times(200));
}

TEST_F(Leaks, NoneInCountdowns) {
    OpenWithFiles(user, Paths(1));
    user.Press(IDC_SHUT_DOWN);
    int opened = 0;
    ExpectFlat("countdowns", Times(200), platform, [&] {
        user.Press(IDOK);
        const HWND countdown = user.WaitForWorkersDialog(IDC_SECONDS);
        opened += countdown != nullptr;
        user.CloseDialog(countdown, IDCANCEL);
        user.WaitForWorkers();
    });
    EXPECT_GE(opened, Times(200));
}

TEST_F(Leaks, NoneInRowsThatComeAndGo) {
    OpenWithFiles(user, Paths(0));
    ExpectFlat("drops of 100 files and clearings", Times(200), platform, [&] {
        user.Drop(Paths(100));
        user.Press(IDC_CLEAR);
    });
}

// The program's whole life in this process, with all that is made for a batch and for a screen reader.
TEST(LeaksOfLives, None) {
    const Platform none;
    const auto live = [] {
        Stage stage;
        stage.platform.screenReader = true;
        OpenWithFiles(stage.user, Paths(1));
        stage.user.Press(IDOK);
        stage.user.WaitForWorkers();
        stage.user.WaitForPosted();
        stage.user.Quit();
        EXPECT_TRUE(stage.program.WaitForEnd());
        EXPECT_THAT(stage.platform.Held(), Each(Pair(testing::_, 0)));
    };
    ExpectFlat("lives of the program with a batch", Times(200), none, live, GdiObjectsKeptByTheSystem());
}

// The program as it ships, started and quit again and again from outside: nothing of it stays in the system.
TEST(LeaksOfStarts, NoneInTheSystem) {
    const Platform platform;  // for its folder with the program in it
    const auto startAndQuit = [&] {
        const driver::Program program(platform.File(L"Talvenor.exe"));
        const driver::MainWindow window(program);
        EXPECT_EQ(window.Quit(), 2u);
    };
    const auto files = [&] {
        return std::distance(std::filesystem::directory_iterator(platform.Folder()), {});
    };
    const int times = Times(200, 5);
    for (int i = 0; i < 3; ++i) startAndQuit();
    const auto filesBefore = files();
    const Held before = {HandleCountOfOthers(), 0, WindowCountOfOthers()};
    for (int i = 0; i < times; ++i) startAndQuit();
    const Held after = {HandleCountOfOthers(), 0, WindowCountOfOthers()};
    PrintLeakFigures("starts from outside (others' things)", times, before, after);
    EXPECT_EQ(files(), filesBefore);
    // Other programs of the session go on with their own work meanwhile.
    constexpr int kOfOthers = 20;
    // On a real Windows a hundred programs of the system take and release handles all the time.
    if (UnderWine()) {
        EXPECT_LE(after[0], before[0] + kOfOthers);
    }
    EXPECT_LE(after[2], before[2] + kOfOthers);
}

}  // namespace
