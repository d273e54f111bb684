// Whom a stop asks or ends: the console of the interpreter that runs, the job when there is none that could
// be asked, and nobody when no interpreter runs.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kOpened[] = "OpenProcess 777 access=0x100000";
constexpr char kEnded[] = "TerminateJobObject 0xC000013A";

class BatchStopRequestTest : public BatchFixture {
protected:
    [[nodiscard]] std::vector<std::string> RequestsOfAStop() {
        StartHeldBatch();
        PressStop();
        return consoles.requests.Calls();
    }
    // The requests of a stop at a call of the worker, with windows for every process that ever ran.
    [[nodiscard]] std::vector<std::string> RequestsOfAStopAt(const std::string& call,
                                                             std::vector<Conversion> plan) {
        consoles.windows = {{777}, {888}};
        AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
        converters.Plan(std::move(plan));
        int stops = 0;
        worker.At(call, 1, [&] {
            ++stops;
            PressStop();
        });
        RunBatch();
        EXPECT_EQ(stops, 1);
        return consoles.requests.Calls();
    }
};

TEST_F(BatchStopRequestTest, TheFirstWindowOfTheInterpreterIsAskedToCloseAndNoOther) {
    consoles.windows = {{1}, {777}, {777}};
    EXPECT_THAT(RequestsOfAStop(),
                ElementsAre(kOpened, "window 1", "window 2", "WM_SYSCOMMAND SC_CLOSE to 2"));
}

TEST_F(BatchStopRequestTest, AConsoleThatIgnoresTheRequestIsNotEnded) {
    consoles.windows = {{777}};
    EXPECT_THAT(RequestsOfAStop(), ElementsAre(kOpened, "window 1", "WM_SYSCOMMAND SC_CLOSE to 1"));
    EXPECT_TRUE(dialog->HasWorker());
    converters.Release(1);
    WaitForEnd();
    EXPECT_THAT(Column(1), ElementsAre(L"*** Annulé !", L""));
    EXPECT_THAT(consoles.requests.Calls(), testing::Not(testing::Contains(kEnded)));
}

TEST_F(BatchStopRequestTest, AnInterpreterWithoutAWindowIsEnded) {
    consoles.windows = {{1}, {2}};
    EXPECT_THAT(RequestsOfAStop(), ElementsAre(kOpened, "window 1", "window 2", kEnded));
}

TEST_F(BatchStopRequestTest, AnInterpreterInATerminalIsAskedFirstAndThenEnded) {
    consoles.windows = {{777, L"PseudoConsoleWindow"}, {777}};
    EXPECT_THAT(RequestsOfAStop(), ElementsAre(kOpened, "window 1", "WM_SYSCOMMAND SC_CLOSE to 1", kEnded));
}

TEST_F(BatchStopRequestTest, AClassThatOnlyBeginsLikeTheTerminalsIsAnOrdinaryOne) {
    consoles.windows = {{777, L"PseudoConsoleWindow2"}};
    EXPECT_THAT(RequestsOfAStop(), ElementsAre(kOpened, "window 1", "WM_SYSCOMMAND SC_CLOSE to 1"));
}

TEST_F(BatchStopRequestTest, AWindowOfUnknownClassIsAnOrdinaryOne) {
    consoles.windows = {{777, L"PseudoConsoleWindow"}};
    consoles.reportsClassNames = false;
    EXPECT_THAT(RequestsOfAStop(), ElementsAre(kOpened, "window 1", "WM_SYSCOMMAND SC_CLOSE to 1"));
}

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

TEST_F(BatchStopRequestTest, AProcessThatCannotBeOpenedIsAskedAllTheSame) {
    consoles.windows = {{777}};
    consoles.canOpenProcesses = false;
    EXPECT_THAT(RequestsOfAStop(), ElementsAre(kOpened, "window 1", "WM_SYSCOMMAND SC_CLOSE to 1"));
}

TEST_F(BatchStopRequestTest, NoEndsNothing) {
    stopAnswer = IDNO;
    EXPECT_THAT(RequestsOfAStop(), IsEmpty());
    converters.Release(1);
    WaitForEnd();
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00"));
    EXPECT_THAT(consoles.requests.Calls(), IsEmpty());
}

TEST_F(BatchStopRequestTest, AnInterpreterThatEndsBeforeItIsOpenedIsNotLookedFor) {
    consoles.windows = {{777}};
    consoles.whenOpened = [this] {
        converters.Release(1);
        // Its worker goes on as far as it can without us: we do not serve its messages.
        const ULONGLONG deadline = ::GetTickCount64() + 10'000;
        while (worker.Count("KillTimer main 2") == 0 && ::GetTickCount64() < deadline) ::Sleep(1);
    };
    EXPECT_THAT(RequestsOfAStop(), ElementsAre(kOpened));
    WaitForEnd();
}

class BatchStopWithoutInterpreterTest
    : public BatchStopRequestTest,
      public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(BatchStopWithoutInterpreterTest, AsksNobody) {
    Check(IDC_SHUT_DOWN);
    const bool startFails = std::string(GetParam().second).starts_with("MessageBoxW");
    const DWORD startError = startFails ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
    EXPECT_THAT(RequestsOfAStopAt(GetParam().second,
                                  {{.processId = 777}, {.startError = startError, .processId = 888}}),
                IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(At, BatchStopWithoutInterpreterTest,
                         testing::Values(std::pair("TheStartOfTheBatch", "DeleteFileW"),
                                         std::pair("TheStartOfTheInterpreter", "CreateProcessW"),
                                         std::pair("ItsEnd", "KillTimer main 2"),
                                         std::pair("TheClosingOfItsHandles", "CloseHandle process 1"),
                                         std::pair("TheNextFile", "LVM_GETITEMTEXTW 1,0"),
                                         std::pair("TheMessageOfAFailedStart",
                                                   "MessageBoxW Erreur CreateProcess"),
                                         std::pair("TheCountdown", "DialogBoxParamW 101")),
                         [](const auto& row) { return std::string(row.param.first); });

TEST_F(BatchStopRequestTest, InABatchWithoutFilesNobodyIsAsked) {
    consoles.windows = {{777}};
    AddFiles({L"C:\\in\\a.pdf"});
    converters.Plan({{.processId = 777}});
    RunBatch();
    SendList(LVM_DELETEALLITEMS);
    PressConvert();
    ASSERT_TRUE(WaitFor([&] { return dialog->IsRunning() && !dialog->HasWorker(); }));
    PressStop();
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_THAT(consoles.requests.Calls(), IsEmpty());
}

TEST_F(BatchStopRequestTest, TheSecondInterpreterIsLookedForByItsOwnId) {
    consoles.windows = {{777}, {888}};
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    converters.Plan({{.processId = 777}, {.held = true, .processId = 888}});
    PressConvert();
    WaitForConverter(2);
    PressStop();
    EXPECT_THAT(consoles.requests.Calls(), ElementsAre("OpenProcess 888 access=0x100000", "window 1",
                                                       "window 2", "WM_SYSCOMMAND SC_CLOSE to 2"));
}

// The old worker's end must not make the new one's interpreter unknown.
TEST_F(BatchStopRequestTest, AnOldInterpretersEndLeavesTheNewOneToBeFound) {
    consoles.windows = {{888}};
    AddFiles({L"C:\\in\\a.pdf"});
    converters.Plan({{.held = true, .processId = 777}, {.held = true, .processId = 888}});
    PressConvert();
    WaitForConverter(1);
    PressStop();
    consoles.requests.Clear();
    PressConvert();
    WaitForConverter(2);
    worker.At("KillTimer main 2", 1, [this] { PressStop(); });
    converters.Release(1);
    ASSERT_TRUE(WaitFor([&] { return !dialog->IsRunning(); }));
    EXPECT_THAT(consoles.requests.Calls(),
                ElementsAre("OpenProcess 888 access=0x100000", "window 1", "WM_SYSCOMMAND SC_CLOSE to 1"));
}

// The job that holds the interpreters, before the dialog that makes it.
struct JobAnswer {
    explicit JobAnswer(bool isRefused) : refused(isRefused) {}

    int created = 0;
    bool refused;
    std::unique_ptr<ReplacedImport> create = Replace<decltype(::CreateJobObjectW)>(
        "CreateJobObjectW", [this](auto original, LPSECURITY_ATTRIBUTES security, LPCWSTR name) {
            ++created;
            EXPECT_EQ(security, nullptr);
            EXPECT_EQ(name, nullptr);
            return refused ? nullptr : original(security, name);
        });
};
struct GrantedJob : JobAnswer {
    GrantedJob() : JobAnswer(false) {}
};
struct RefusedJob : JobAnswer {
    RefusedJob() : JobAnswer(true) {}
};
class BatchJobTest : public GrantedJob, public BatchFixture {};
class BatchWithoutAJobTest : public RefusedJob, public BatchFixture {};

TEST_F(BatchJobTest, IsMadeOnceAndHoldsEveryInterpreter) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    RunBatch();
    RunBatch();
    EXPECT_EQ(created, 1);
    EXPECT_THAT(worker.Of({"CreateProcessW", "AssignProcessToJobObject", "WaitForSingleObject"}),
                ElementsAre("CreateProcessW", "AssignProcessToJobObject process 1",
                            "WaitForSingleObject process 1 INFINITE", "CreateProcessW",
                            "AssignProcessToJobObject process 2", "WaitForSingleObject process 2 INFINITE",
                            "CreateProcessW", "AssignProcessToJobObject process 3",
                            "WaitForSingleObject process 3 INFINITE", "CreateProcessW",
                            "AssignProcessToJobObject process 4", "WaitForSingleObject process 4 INFINITE"));
    EXPECT_THAT(consoles.requests.Calls(), IsEmpty());
}

// Closing it ends nothing: nothing has asked the system for that.
TEST_F(BatchJobTest, HasNoLimits) {
    for (const ImportSlot& slot : ImportSlots()) EXPECT_NE(slot.name, "SetInformationJobObject");
}

TEST_F(BatchWithoutAJobTest, GoesAsItWouldWithOne) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    converters.Plan({{.durationMs = 5'000}, {.held = true, .processId = 777}});
    PressConvert();
    WaitForConverter(2);
    PressStop();
    EXPECT_THAT(consoles.requests.Calls(), ElementsAre(kOpened)) << "there is no job to be ended";
    converters.Release(2);
    WaitForEnd();
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:05", L"*** Annulé !"));
    EXPECT_EQ(worker.Count("AssignProcessToJobObject"), 0);
}

}  // namespace
