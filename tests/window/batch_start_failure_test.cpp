// A converter that cannot be started: the message, the duration up to its end, and a batch that ends as if it
// had gone well.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::SizeIs;

// The system's texts are "Texte de l'erreur <code>.\r\n".
class BatchStartFailureTest : public BatchFixture {
private:
    static DWORD WINAPI Describe(DWORD /*flags*/, LPCVOID /*source*/, DWORD error, DWORD /*language*/,
                                 LPWSTR text, DWORD size, va_list* /*arguments*/) {
        const std::wstring description = L"Texte de l'erreur " + std::to_wstring(error) + L".\r\n";
        ::lstrcpynW(text, description.c_str(), static_cast<int>(size));
        return static_cast<DWORD>(description.size());
    }

    ReplacedImport m_describe{"FormatMessageW", &Describe};
};

TEST_F(BatchStartFailureTest, ShowsTheSystemsTextAndThenThatTheBatchIsFinished) {
    AddFiles({L"C:\\in\\a.pdf"});
    converters.Plan({{.startError = ERROR_FILE_NOT_FOUND}});
    RunBatch();
    EXPECT_THAT(calls.Calls(),
                ElementsAre("MessageBoxW owner=main text=Erreur CreateProcess :  Texte de l'erreur 2.\r\n "
                            "caption=Talvenor type=0x10",
                            "MessageBoxW owner=main text=Conversion terminée ! caption=Talvenor type=0x40"));
}

TEST_F(BatchStartFailureTest, TheDurationLastsUntilTheBoxIsClosed) {
    AddFiles({L"C:\\in\\a.pdf"});
    converters.Plan({{.startError = ERROR_FILE_NOT_FOUND}});
    worker.At("MessageBoxW Erreur CreateProcess", 1, [&] { converters.tick += 65'000; });
    RunBatch();
    EXPECT_EQ(Cell(0, 1), L"00:01:05");
}

TEST_F(BatchStartFailureTest, TheFilesAfterItAreNotConverted) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    converters.Plan({{.durationMs = 5'000}, {.startError = ERROR_ACCESS_DENIED}});
    RunBatch();
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:05", L"00:00:00", L""));
    EXPECT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_THAT(Boxes(),
                ElementsAre("Erreur CreateProcess :  Texte de l'erreur 5.\r\n", "Conversion terminée !"));
}

TEST_F(BatchStartFailureTest, TheBatchCountsAsRunningUntilItsEnd) {
    AddFiles({L"C:\\in\\a.pdf"});
    SetChecked(IDC_SHUT_DOWN, true);
    converters.Plan({{.startError = ERROR_FILE_NOT_FOUND}});
    std::vector<bool> running;
    const auto look = [&] { running.push_back(dialog->IsRunning()); };
    worker.At("MessageBoxW Erreur CreateProcess", 1, look);
    worker.At("DialogBoxParamW 101", 1, look);
    worker.At("MessageBoxW Conversion", 1, look);
    RunBatch();
    EXPECT_THAT(running, ElementsAre(true, true, true));
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
}

TEST_F(BatchStartFailureTest, NothingIsWaitedForOrClosed) {
    AddFiles({L"C:\\in\\a.pdf"});
    converters.Plan({{.startError = ERROR_FILE_NOT_FOUND}});
    RunBatch();
    EXPECT_EQ(worker.Count("WaitForSingleObject"), 0);
    EXPECT_EQ(worker.Count("GetExitCodeProcess"), 0);
    EXPECT_EQ(worker.Count("CloseHandle"), 0);
    EXPECT_EQ(worker.Count("KillTimer main 2"), 1);
}

TEST_F(BatchStartFailureTest, TheNextBatchRunsAsUsual) {
    AddFiles({L"C:\\in\\a.pdf"});
    converters.Plan({{.startError = ERROR_FILE_NOT_FOUND}, {.durationMs = 4'000}});
    RunBatch();
    RunBatch();
    EXPECT_EQ(Cell(0, 1), L"00:00:04");
}

// Memory that is given back leaves another error behind, as any call may.
class BatchStartErrorTest : public BatchStartFailureTest {
private:
    using Free = void(__cdecl*)(void*);

    static void __cdecl FreeAndSpoilError(void* block) {
        s_free(block);
        ::SetLastError(ERROR_INVALID_ADDRESS);
    }

    static inline const Free s_free = reinterpret_cast<Free>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"msvcrt.dll"), "free")));
    ReplacedImport m_free{"free", &FreeAndSpoilError};
};

TEST_F(BatchStartErrorTest, IsTheOneThatTheFailedStartLeft) {
    AddFiles({L"C:\\in\\a.pdf"});
    converters.Plan({{.startError = ERROR_FILE_NOT_FOUND}});
    RunBatch();
    ASSERT_EQ(Boxes().size(), 2u);
    EXPECT_EQ(Boxes()[0], "Erreur CreateProcess :  Texte de l'erreur 2.\r\n");
}

}  // namespace
