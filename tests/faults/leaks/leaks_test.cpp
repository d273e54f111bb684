// What the program holds does not grow with what is done: over many conversions, stops, dialogs and starts.
#include "tests/equipment/file_bytes.h"
#include "tests/faults/harness/leak_counts.h"
#include "tests/faults/options.h"
#include "tests/faults/scenarios/scenarios.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace {

using testing::Each;
using testing::Pair;

// How much each may grow in a part of the time; 0: never at all. The system takes things of its own when they
// are first needed: images to draw with, an event for a lock that two threads want at once, a piece of
// memory. That passes: what leaks grows in every part.
const Counts kPassing = {
    {"handles", 1},  // what is lost each time is at least two in a part
    {"gdi", 1},
    {"windows", 0},
    {"icons", 0},    // loaded by the program and not destroyed
    {"blocks", 0},   // of memory, allocated by the program and not freed
    {"objects", 0},  // of COM libraries, that it has not let go of
    // Committed memory comes in pieces of 64 KB. One block of sixteen bytes lost in each of a thousand rounds
    // already shows among the program's own blocks.
    {"private KB", 128},
};

// What the process, and the program in it, hold at this moment.
Counts MeasureHeld(const Platform& platform) {
    Counts held = HeldOfTheSystem();
    held.merge(platform.Held());
    held["private KB"] = static_cast<long long>(PrivateBytes() / 1024);
    return held;
}

// Does `once` a few times, so that what the system keeps for good is there, then `times` more, at least ten,
// and expects that nothing is added with time. The figures go into the summary under `name`.
void ExpectFlat(const std::string& name, int times, const Platform& platform,
                const std::function<void()>& once) {
    constexpr int kParts = 5;
    ASSERT_GE(times, kParts * 2) << "one thing lost each time would not be noticed";
    const int rounds = std::max(3, times / 10);
    for (int i = 0; i < rounds; ++i) once();
    std::vector<Counts> held = {MeasureHeld(platform)};  // before the first part, and after each
    for (int part = 1; part <= kParts; ++part) {
        for (int i = times * (part - 1) / kParts; i < times * part / kParts; ++i) once();
        held.push_back(MeasureHeld(platform));
    }
    std::printf("[ figures  ] %-38s %4d times", name.c_str(), times);
    for (const auto& [what, count] : held.front()) {
        std::printf(", %s %lld -> %lld", what.c_str(), count, held.back()[what]);
    }
    std::printf("\n");
    for (const auto& [what, passing] : kPassing) {
        std::vector<long long> growths;
        for (std::size_t part = 1; part < held.size(); ++part) {
            growths.push_back(held[part].at(what) - held[part - 1].at(what));
        }
        std::sort(growths.begin(), growths.end());
        if (passing == 0) {
            EXPECT_EQ(held.back()[what], held.front()[what]) << what;
        } else {
            EXPECT_LE(growths[kParts / 2], passing) << what;
        }
    }
}

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
    EXPECT_GE(platform.converters.Awaited(), batches * kFilesInBatch);
}

TEST_F(Leaks, NoneInConversionsByRealProcesses) {
    const std::wstring command = driver::OwnPath().replace_filename("fatal_probe.exe nothing");
    platform.conversions = {{.realCommand = command.c_str()}};
    OpenWithFiles(user, Paths(1));
    ExpectFlat("conversions by real processes", Times(100), platform, [&] { Convert(); });
}

// Goes on longer than anybody waits for it here.
const std::wstring kEndlessConverter =
    L'"' + (driver::OwnPath().parent_path() / TALVENOR_EQUIPMENT / "stand_in_converter.exe").wstring() +
    L"\" wait30000.pdf";

// How a stop ends the converter that runs.
struct StopCase {
    const char* name;
    const char* figure;
    int full;
    Conversion converter;
    const char* request;  // made once for each stop

    friend void PrintTo(const StopCase& row, std::ostream* out) { *out << row.figure; }
};

class LeaksOfStops : public Leaks, public testing::WithParamInterface<StopCase> {};

TEST_P(LeaksOfStops, None) {
    platform.conversions = {GetParam().converter};
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
    testing::Values(
        StopCase{"ByTheWindow", "stops", 200, {.held = true, .console = kConsoleClass}, "closing"},
        StopCase{"ByTheJob", "stops by the job", 200, {.held = true}, "jobs"},
        StopCase{"OfRealProcesses",
                 "stops of real processes",
                 100,
                 {.realCommand = kEndlessConverter.c_str()},
                 "jobs"}),
    [](const auto& stop) { return std::string(stop.param.name); });

TEST_F(Leaks, NoneInStartsThatFail) {
    platform.conversions = {{.startError = ERROR_FILE_NOT_FOUND}};
    OpenWithFiles(user, Paths(1));
    ExpectFlat("converters that do not start", Times(200), platform, [&] { Convert(); });
}

TEST_F(Leaks, NoneInAboutBoxes) {
    OpenWithFiles(user, Paths(0));
    ExpectFlat("About boxes", Times(200), platform, [&] {
        const HWND about = user.PressForDialog(IDC_ABOUT, IDC_VERSION);
        EXPECT_NE(about, nullptr);
        user.CloseDialog(about, IDOK);
    });
}

TEST_F(Leaks, NoneInCountdowns) {
    OpenWithFiles(user, Paths(1));
    user.Press(IDC_SHUT_DOWN);
    ExpectFlat("countdowns", Times(200), platform, [&] {
        user.Press(IDOK);
        const HWND countdown = user.WaitForWorkersDialog(IDC_SECONDS);
        EXPECT_NE(countdown, nullptr);
        user.CloseDialog(countdown, IDCANCEL);
        user.WaitForWorkers();
    });
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
    ExpectFlat("lives of the program with a batch", Times(200), none, live);
}

}  // namespace
