// Whom a stop asks or ends: the console of the interpreter that runs, or the job when there is none that
// could be asked. That nobody is asked when no interpreter runs is in the tests of a stop at each moment of a
// batch.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kOpened[] = "OpenProcess 777 access=0x100000";
constexpr char kEnded[] = "TerminateJobObject 0xC000013A";

class BatchStopRequestTest : public BatchFixture {
protected:
    [[nodiscard]] std::vector<std::string> RequestsOfAStop() {
        ConvertUntilHeld(2, {{.held = true, .processId = 777}, {.processId = 888}});
        PressStop();
        return consoles.requests.Calls();
    }
};

struct ConsoleCase {
    const char* name;
    std::vector<ConsoleWindow> windows;
    std::vector<std::string> requests;  // behind kOpened
    bool canOpenProcesses = true;
    bool reportsClassNames = true;

    friend void PrintTo(const ConsoleCase& row, std::ostream* out) { *out << row.name; }
};
class BatchStopConsoleTest : public BatchStopRequestTest, public testing::WithParamInterface<ConsoleCase> {};

// One that ignores the request runs on until it ends by itself.
TEST_P(BatchStopConsoleTest, IsAskedToCloseAndEndedOnlyWithoutAWindowOrInATerminal) {
    consoles.windows = GetParam().windows;
    consoles.canOpenProcesses = GetParam().canOpenProcesses;
    consoles.reportsClassNames = GetParam().reportsClassNames;
    std::vector<std::string> expected = GetParam().requests;
    expected.insert(expected.begin(), kOpened);
    EXPECT_EQ(RequestsOfAStop(), expected);
    EXPECT_TRUE(dialog->HasWorker());
    Finish(1);
    EXPECT_THAT(Column(1), ElementsAre(L"*** Annulé !", L""));
    EXPECT_EQ(consoles.requests.Calls(), expected);
}

INSTANTIATE_TEST_SUITE_P(All, BatchStopConsoleTest,
                         testing::Values(ConsoleCase{"TheFirstOfTheInterpreterAndNoOther",
                                                     {{1}, {777}, {777}},
                                                     {"window 1", "window 2", "WM_SYSCOMMAND SC_CLOSE to 2"}},
                                         ConsoleCase{"None", {{1}, {2}}, {"window 1", "window 2", kEnded}},
                                         ConsoleCase{"InATerminal",
                                                     {{777, L"PseudoConsoleWindow"}, {777}},
                                                     {"window 1", "WM_SYSCOMMAND SC_CLOSE to 1", kEnded}},
                                         ConsoleCase{"OfAClassThatOnlyBeginsLikeTheTerminals",
                                                     {{777, L"PseudoConsoleWindow2"}},
                                                     {"window 1", "WM_SYSCOMMAND SC_CLOSE to 1"}},
                                         ConsoleCase{"OfUnknownClass",
                                                     {{777, L"PseudoConsoleWindow"}},
                                                     {"window 1", "WM_SYSCOMMAND SC_CLOSE to 1"},
                                                     true,
                                                     false},
                                         ConsoleCase{"OfAProcessThatCannotBeOpened",
                                                     {{777}},
                                                     {"window 1", "WM_SYSCOMMAND SC_CLOSE to 1"},
                                                     false}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(BatchStopRequestTest, ComesAfterTheFlagAndBeforeTheIdleState) {
    bool isRunning = true;
    std::wstring button;
    consoles.whenOpened = [&] {
        isRunning = dialog->IsRunning();
        button = Text(IDCANCEL);
    };
    static_cast<void>(RequestsOfAStop());
    EXPECT_FALSE(isRunning);
    EXPECT_EQ(button, L"Arrêter ");
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
}

TEST_F(BatchStopRequestTest, AnInterpreterThatEndsBeforeItIsOpenedIsNotLookedFor) {
    consoles.windows = {{777}};
    consoles.whenOpened = [this] {
        converters.Release(1);
        // Its worker goes on as far as it can without us.
        EXPECT_TRUE(WaitUnserved([&] { return worker.Count("KillTimer main 2") > 0; }));
    };
    EXPECT_THAT(RequestsOfAStop(), ElementsAre(kOpened));
    WaitForEnd();
}

// The old worker's end must not make the new one's interpreter unknown.
TEST_F(BatchStopRequestTest, AnOldInterpretersEndLeavesTheNewOneToBeFoundByItsOwnId) {
    consoles.windows = {{777}, {888}};
    ConvertUntilHeld(1, {{.held = true, .processId = 777}, {.held = true, .processId = 888}});
    PressStop();
    consoles.requests.Clear();
    PressConvert();
    WaitForConverter(2);
    worker.At("KillTimer main 2", 1, [this] { PressStop(); });
    converters.Release(1);
    ASSERT_TRUE(WaitFor([&] { return !dialog->IsRunning(); }));
    EXPECT_THAT(consoles.requests.Calls(), ElementsAre("OpenProcess 888 access=0x100000", "window 1",
                                                       "window 2", "WM_SYSCOMMAND SC_CLOSE to 2"));
}

// The job that holds the interpreters, before the dialog that makes it.
template <bool kIsRefused>
struct JobAnswer {
    int created = 0;
    Replaced create =
        REPLACE_IMPORT(CreateJobObjectW, [this](auto original, LPSECURITY_ATTRIBUTES security, LPCWSTR name) {
            ++created;
            EXPECT_EQ(security, nullptr);
            EXPECT_EQ(name, nullptr);
            return kIsRefused ? nullptr : original(security, name);
        });
};
class BatchJobTest : public JobAnswer<false>, public BatchFixture {};
class BatchWithoutAJobTest : public JobAnswer<true>, public BatchFixture {};

TEST_F(BatchJobTest, IsMadeOnceAndHoldsEveryInterpreter) {
    Convert(2);
    RunBatch();
    EXPECT_EQ(created, 1);
    EXPECT_THAT(worker.Of({"AssignProcessToJobObject"}),
                ElementsAre("AssignProcessToJobObject process 1", "AssignProcessToJobObject process 2",
                            "AssignProcessToJobObject process 3", "AssignProcessToJobObject process 4"));
    EXPECT_THAT(consoles.requests.Calls(), IsEmpty());
}

// Closing it ends nothing: nothing has asked the system for that.
TEST_F(BatchJobTest, HasNoLimits) {
    for (const ImportSlot& slot : ImportSlots()) EXPECT_NE(slot.name, "SetInformationJobObject");
}

TEST_F(BatchWithoutAJobTest, GoesAsItWouldWithOne) {
    ConvertUntilHeld(2, {{.durationMs = 5'000}, {.held = true, .processId = 777}});
    PressStop();
    EXPECT_THAT(consoles.requests.Calls(), ElementsAre(kOpened)) << "there is no job to be ended";
    Finish(2);
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:05", L"*** Annulé !"));
    EXPECT_EQ(worker.Count("AssignProcessToJobObject"), 0);
}

}  // namespace
