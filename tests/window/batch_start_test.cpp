// The Convert command: what it refuses, the thread that it starts, and the batch that has no files.
#include "tests/window/batch_fixture.h"

#include <process.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kBadFolder[] =
    "MessageBoxW owner=main text=Le dossier de destination est incorrect ! caption=Talvenor type=0x10";

// Records thread starts as "_beginthread stack=0 argument=dialog", and refuses them unless `starts`.
class BatchStartTest : public BatchFixture {
protected:
    BatchStartTest() {
        s_this = this;
        s_starts = true;
        s_threads.Clear();
    }

    static inline CallRecord s_threads;
    static inline bool s_starts = true;

private:
    static std::uintptr_t __cdecl Begin(void(__cdecl* entry)(void*), unsigned stackSize, void* argument) {
        s_threads.Add("_beginthread stack=" + std::to_string(stackSize) +
                      (argument == s_this->dialog.get() ? " argument=dialog" : " argument=other"));
        if (!s_starts) return static_cast<std::uintptr_t>(-1);
        return s_this->m_begin.Original<decltype(::_beginthread)>()(entry, stackSize, argument);
    }

    static inline BatchStartTest* s_this = nullptr;
    ReplacedImport m_begin{"_beginthread", &Begin};
};

TEST_F(BatchStartTest, StartsOneThreadOfDefaultSizeForTheDialog) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    RunBatch();
    EXPECT_THAT(s_threads.Calls(), ElementsAre("_beginthread stack=0 argument=dialog"));
}

TEST_F(BatchStartTest, LeavesEverythingAsItIsUntilTheThreadRuns) {
    AddFiles({L"C:\\in\\a.pdf"});
    s_starts = false;
    PressConvert();
    ASSERT_THAT(s_threads.Calls(), SizeIs(1));
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_TRUE(IsEnabled(IDC_FILE_LIST));
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_FALSE(dialog->IsRunning());
}

TEST_F(BatchStartTest, AThreadThatCannotBeHadIsNotReported) {
    AddFiles({L"C:\\in\\a.pdf"});
    s_starts = false;
    PressConvert();
    EXPECT_FALSE(dialog->HasWorker());
    EXPECT_THAT(calls.Calls(), IsEmpty());
    s_starts = true;  // and it can be tried again
    RunBatch();
    EXPECT_EQ(Cell(0, 1), L"00:00:00");
}

TEST_F(BatchStartTest, ASecondCommandBeforeTheThreadRunsStartsASecondThread) {
    AddFiles({L"C:\\in\\a.pdf"});
    // No message is served in between, so that no worker can have disabled the button.
    Command(IDOK, BN_CLICKED);
    Command(IDOK, BN_CLICKED);
    EXPECT_THAT(s_threads.Calls(), SizeIs(2));
    WaitForEnd();
}

TEST_F(BatchStartTest, ACommandWhileABatchRunsStartsASecondThread) {
    AddFiles({L"C:\\in\\a.pdf"});
    converters.Plan({{.held = true}, {.held = true}});
    PressConvert();
    WaitForConverter(1);
    ASSERT_TRUE(dialog->IsRunning());
    Command(IDOK, BN_CLICKED);  // the button itself is disabled
    EXPECT_THAT(s_threads.Calls(), SizeIs(2));
    WaitForConverter(2);
    converters.ReleaseAll();
    WaitForEnd();
}

TEST_F(BatchStartTest, AnyNotificationOfTheButtonCounts) {
    s_starts = false;
    for (const int code : {BN_CLICKED, BN_PAINT, BN_SETFOCUS, BN_KILLFOCUS, 0x7FFF}) {
        s_threads.Clear();
        Command(IDOK, code);
        EXPECT_THAT(s_threads.Calls(), SizeIs(1)) << code;
    }
}

struct FolderCase {
    const char* name;
    const wchar_t* text;  // after the temporary folder, when it begins with a backslash
    bool accepted;
};
class BatchFolderTest : public BatchStartTest, public testing::WithParamInterface<FolderCase> {};

TEST_P(BatchFolderTest, MustBeAnExistingFolder) {
    std::filesystem::create_directory(folder.Path() / "sous dossier");
    AddFiles({L"C:\\in\\a.pdf"});
    const std::wstring text = GetParam().text;
    SetChecked(IDC_OUTPUT_FOLDER_CHECK, true);
    SetText(IDC_OUTPUT_FOLDER, (text.starts_with(L'\\') ? folder.Path().wstring() + text : text).c_str());
    PressConvert();
    if (GetParam().accepted) {
        EXPECT_THAT(s_threads.Calls(), SizeIs(1));
        WaitForEnd();
        EXPECT_THAT(Boxes(), ElementsAre("Conversion terminée !"));
        return;
    }
    EXPECT_THAT(calls.Calls(), ElementsAre(kBadFolder));
    EXPECT_THAT(s_threads.Calls(), IsEmpty());
    EXPECT_FALSE(dialog->HasWorker());
    EXPECT_TRUE(IsEnabled(IDOK));
}

INSTANTIATE_TEST_SUITE_P(All, BatchFolderTest,
                         testing::Values(FolderCase{"Existing", L"\\sous dossier", true},
                                         FolderCase{"TrailingBackslash", L"\\sous dossier\\", true},
                                         FolderCase{"RelativeToTheCurrentFolder", L".", true},
                                         FolderCase{"Missing", L"\\absent", false},
                                         FolderCase{"File", L"\\pdf2djvu.exe", false},
                                         FolderCase{"Empty", L"", false},
                                         FolderCase{"Quoted", L"\"C:\\\"", false},
                                         FolderCase{"NoSuchDrive", L"Q:\\x", false}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(BatchStartTest, ABadFolderDoesNotMatterWhileItsBoxIsUnchecked) {
    AddFiles({L"C:\\in\\a.pdf"});
    SetText(IDC_OUTPUT_FOLDER, L"Q:\\absent");
    RunBatch();
    EXPECT_THAT(Boxes(), ElementsAre("Conversion terminée !"));
    EXPECT_EQ(Cell(0, 1), L"00:00:00");
}

// The Delete key leaves the Convert button as it is, so that a batch without files can be started.
class BatchWithoutFilesTest : public BatchFixture {
protected:
    void StartWithEmptyList() {
        AddFiles({L"C:\\in\\a.pdf"});
        SelectRow(0);
        PressListKey(VK_DELETE);
        ASSERT_EQ(RowCount(), 0);
        WriteLog("of an earlier batch");
        PressConvert();
        WaitForEnd();
    }
};

TEST_F(BatchWithoutFilesTest, WaitsInTheRunningStateUntilItIsStopped) {
    StartWithEmptyList();
    EXPECT_TRUE(dialog->IsRunning());
    EXPECT_FALSE(IsEnabled(IDOK));
    EXPECT_FALSE(IsEnabled(IDC_FILE_LIST));
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
    PressStop();
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_NE(dialog->Handle(), nullptr);
    EXPECT_THAT(Boxes(),
                ElementsAre("Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?"));
}

TEST_F(BatchWithoutFilesTest, TakesNoOtherStepOfABatch) {
    SetChecked(IDC_HIDE_OUTPUT, true);
    SetChecked(IDC_SHUT_DOWN, true);
    StartWithEmptyList();
    EXPECT_TRUE(LogExists());
    EXPECT_EQ(ColumnWidth(1), 0);
    EXPECT_THAT(
        worker.Of({"DeleteFileW", "EnableWindow 1024", "ShowWindow", "LVM_SETCOLUMNWIDTH", "LoadCursorW",
                   "SetCursor", "CreateProcessW", "DialogBoxParamW", "MessageBoxW", "SetWindowTextW 1004"}),
        IsEmpty());
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

// The rows are counted once more when the batch has made itself ready.
class BatchEmptiedTest : public BatchFixture, public testing::WithParamInterface<const char*> {};

TEST_P(BatchEmptiedTest, EndsWithoutAConverterAndWithTheMessage) {
    AddFiles({L"C:\\in\\a.pdf"});
    worker.At(GetParam(), 1, [&] { ::SendMessageW(Control(IDC_FILE_LIST), LVM_DELETEALLITEMS, 0, 0); });
    RunBatch();
    ASSERT_EQ(RowCount(), 0);
    EXPECT_THAT(converters.Starts(), IsEmpty());
    EXPECT_THAT(worker.Of({"LVM_GETITEMTEXTW", "SetTimer"}), IsEmpty());
    EXPECT_THAT(Boxes(), ElementsAre("Conversion terminée !"));
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_EQ(Text(IDC_STATUS), L"");
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_TRUE(IsEnabled(IDOK));
}

INSTANTIATE_TEST_SUITE_P(All, BatchEmptiedTest,
                         testing::Values("DeleteFileW", "UpdateWindow 1040", "SetCursor busy"),
                         [](const auto& row) {
                             const std::string call = row.param;
                             return call.substr(0, call.find(' '));
                         });

}  // namespace
