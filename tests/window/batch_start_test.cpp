// The Convert command: what it refuses, the thread that it starts, and the batch that has no files.
#include "tests/window/batch_fixture.h"

#include <process.h>
#include <tlhelp32.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Records thread starts as "_beginthread stack=0 argument=dialog", and refuses them unless `starts`.
class BatchStartTest : public BatchFixture {
protected:
    std::vector<std::string> threads;
    bool starts = true;

private:
    Replaced m_begin = REPLACE_IMPORT(
        _beginthread, [this](auto original, void (*entry)(void*), unsigned stackSize, void* argument) {
            threads.push_back("_beginthread stack=" + std::to_string(stackSize) +
                              (argument == dialog.get() ? " argument=dialog" : " argument=other"));
            return starts ? original(entry, stackSize, argument) : static_cast<std::uintptr_t>(-1);
        });
};

TEST_F(BatchStartTest, StartsOneThreadOfDefaultSizeForTheDialogThatConvertsAllFiles) {
    Convert(2);
    EXPECT_THAT(threads, ElementsAre("_beginthread stack=0 argument=dialog"));
    const std::vector<Start> files = converters.Starts();
    ASSERT_THAT(files, SizeIs(2));
    EXPECT_NE(files[0].workerId, ::GetCurrentThreadId());
    EXPECT_EQ(files[1].workerId, files[0].workerId);
}

// Those of this process that are there and were not `before`.
std::vector<DWORD> NewThreads(const std::vector<DWORD>& before) {
    std::vector<DWORD> threads;
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Thread32First(snapshot, &entry); more; more = ::Thread32Next(snapshot, &entry)) {
        const bool isKnown = std::find(before.begin(), before.end(), entry.th32ThreadID) != before.end();
        if (entry.th32OwnerProcessID == ::GetCurrentProcessId() && !isKnown)
            threads.push_back(entry.th32ThreadID);
    }
    ::CloseHandle(snapshot);
    return threads;
}

TEST_F(BatchStartTest, RunsOnOneThreadBesideTheOneOfTheWindow) {
    AddFiles(2);
    converters.Plan({{}, {.held = true}});
    const std::vector<DWORD> before = NewThreads({});
    ASSERT_THAT(before, testing::Contains(::GetCurrentThreadId()));
    PressConvert();
    WaitForConverter(2);
    EXPECT_THAT(NewThreads(before), SizeIs(1));
    converters.Release(2);
    WaitForEnd();
    EXPECT_TRUE(WaitFor([&] { return NewThreads(before).empty(); }));
}

TEST_F(BatchStartTest, LeavesEverythingAsItIsAndReportsNothingWhenTheThreadCannotBeCreated) {
    AddFiles(1);
    starts = false;
    EXPECT_THAT(Recorded([&] { Command(IDOK, BN_CLICKED); }), IsEmpty());
    ASSERT_THAT(threads, SizeIs(1));
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_FALSE(dialog->HasWorker());
    starts = true;  // and it can be tried again
    RunBatch();
    EXPECT_EQ(Cell(0, 1), L"00:00:00");
}

TEST_F(BatchStartTest, ASecondCommandBeforeTheThreadRunsStartsASecondThread) {
    AddFiles(1);
    // No message is served in between, so that no worker can have disabled the button.
    Command(IDOK, BN_CLICKED);
    Command(IDOK, BN_CLICKED);
    EXPECT_THAT(threads, SizeIs(2));
    WaitForEnd();
}

TEST_F(BatchStartTest, ACommandWhileABatchRunsStartsASecondThread) {
    ConvertUntilHeld(1, {{.held = true}, {.held = true}});
    ASSERT_TRUE(dialog->IsRunning());
    Command(IDOK, BN_CLICKED);  // the button itself is disabled
    EXPECT_THAT(threads, SizeIs(2));
    WaitForConverter(2);
    converters.ReleaseAll();
    WaitForEnd();
}

TEST_F(BatchStartTest, NeedsAnOutputFolderThatExistsWhileItsCheckBoxIsChecked) {
    AddFiles(1);
    Check(IDC_OUTPUT_FOLDER_CHECK);
    for (const std::wstring& text : {folder.File(L"absent"), folder.File(L"pdf2djvu.exe"), std::wstring()}) {
        SetText(IDC_OUTPUT_FOLDER, text.c_str());
        EXPECT_THAT(Recorded([&] { Command(IDOK, BN_CLICKED); }),
                    ElementsAre(MessageBoxCall("Le dossier de destination est incorrect !", "0x10")))
            << Utf8(text);
    }
    EXPECT_THAT(threads, IsEmpty());
    EXPECT_FALSE(dialog->HasWorker());
    EXPECT_FALSE(std::filesystem::exists(folder.File(L"absent"))) << "no folder is ever created";
    const std::wstring readOnly = folder.File(L"lecture seule");
    std::filesystem::create_directory(readOnly);
    ::SetFileAttributesW(readOnly.c_str(), FILE_ATTRIBUTE_READONLY);
    SetText(IDC_OUTPUT_FOLDER, readOnly.c_str());
    RunBatch();
    EXPECT_TRUE(std::filesystem::is_empty(readOnly)) << "nothing is tried there";
    ::SetFileAttributesW(readOnly.c_str(), FILE_ATTRIBUTE_NORMAL);
    Check(IDC_OUTPUT_FOLDER_CHECK, false);
    SetText(IDC_OUTPUT_FOLDER, L"Q:\\absent");
    RunBatch();
    EXPECT_THAT(threads, SizeIs(2));
}

TEST_F(BatchStartTest, ARelativeOutputFolderIsLookedForInTheCurrentOne) {
    AddFiles(1);
    std::filesystem::create_directory(folder.Path() / "sortie");
    Check(IDC_OUTPUT_FOLDER_CHECK);
    SetText(IDC_OUTPUT_FOLDER, L"sortie");
    const TemporaryFolder elsewhere;
    {
        const CurrentFolder current(elsewhere.Path());
        Command(IDOK, BN_CLICKED);
        EXPECT_THAT(threads, IsEmpty());
    }
    const CurrentFolder current(folder.Path());
    RunBatch();
    ASSERT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_THAT(converters.Starts()[0].arguments, testing::HasSubstr(L" -o \"sortie\\a.djvu\" "));
}

// The Delete key leaves the Convert button as it is, so that a batch without files can be started.
class BatchWithoutFilesTest : public BatchFixture {
protected:
    void StartWithEmptyList() {
        AddFiles(1);
        SelectRow(0);
        PressListKey(VK_DELETE);
        WriteLog("of an earlier batch");
        ASSERT_TRUE(IsEnabled(IDOK));
        StartEmptyBatch();
    }
};

TEST_F(BatchWithoutFilesTest, WaitsInTheRunningStateUntilItIsStopped) {
    StartWithEmptyList();
    EXPECT_FALSE(IsEnabled(IDOK));
    EXPECT_FALSE(IsEnabled(IDC_FILE_LIST));
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
    PressStop();
    ExpectIdle();
    EXPECT_NE(dialog->Handle(), nullptr);
    EXPECT_THAT(MessageTexts(),
                ElementsAre("Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?"));
}

TEST_F(BatchWithoutFilesTest, TakesNoOtherStepOfABatch) {
    Check(IDC_HIDE_OUTPUT);
    Check(IDC_SHUT_DOWN);
    StartWithEmptyList();
    EXPECT_TRUE(LogExists());
    EXPECT_EQ(ColumnWidth(1), 0);
    EXPECT_THAT(worker.Of({"DeleteFileW", "EnableWindow 1024", "ShowWindow", "LVM_SETCOLUMNWIDTH",
                           "LoadCursorW", "SetCursor", "SetThreadExecutionState", "CreateProcessW",
                           "DialogBoxParamW", "MessageBoxW", "SetWindowTextW 1004"}),
                IsEmpty());
    EXPECT_THAT(calls.Calls(), IsEmpty());
    PressStop();
    PumpPending();
    EXPECT_THAT(taskbar.calls.Calls(), IsEmpty());
}

TEST_F(BatchWithoutFilesTest, HasNoInterpreterThatAStopCouldAskThoughABatchBeforeHadOne) {
    Convert(1);
    consoles.windows = {{Conversion().processId}};
    SendList(LVM_DELETEALLITEMS);
    StartEmptyBatch();
    PressStop();
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_THAT(consoles.requests.Calls(), IsEmpty());
}

// The rows are counted once more when the batch has made itself ready.
TEST_F(BatchWithoutFilesTest, EndsWithTheMessageWhenTheListIsEmptiedBeforeTheFirstFile) {
    for (const char* const call : {"DeleteFileW", "UpdateWindow 1040", "SetCursor busy"}) {
        SCOPED_TRACE(call);
        calls.Clear();
        worker.At(call, 1, [&] { SendList(LVM_DELETEALLITEMS); });
        Convert(1);
        ASSERT_EQ(RowCount(), 0);
        EXPECT_THAT(converters.Starts(), IsEmpty());
        EXPECT_THAT(worker.Of({"LVM_GETITEMTEXTW", "SetTimer", "SetThreadExecutionState"}), IsEmpty());
        EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
        ExpectIdle();
    }
}

}  // namespace
