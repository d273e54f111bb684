// Every text that a person reads is loaded from the string table when it is needed.
#include "tests/window/batch_fixture.h"
#include "tests/window/marked_strings.h"

#include <filesystem>
#include <fstream>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class StringTableUseTest : public BatchFixture {
protected:
    StringTableUseTest() { Drop({L"C:\\in\\a.pdf"}); }

    static std::string MarkedMessageBox(const char* text, const char* type, const char* owner = "main") {
        return MessageBoxCall(text, type, owner, "<128>");
    }

    MarkedStrings strings;
};

TEST_F(StringTableUseTest, ButtonStatusLineAndMessagesOfABatch) {
    StartBatch();
    EXPECT_EQ(Text(IDCANCEL), L"<139>");
    EXPECT_EQ(Text(IDC_STATUS), L"<132>C:\\in\\a.pdf");
    stopAnswer = IDNO;
    Click(IDCANCEL);
    EXPECT_THAT(calls.Calls(), Contains(MarkedMessageBox("<144>", "0x24")));
    Finish(1);
    EXPECT_EQ(Text(IDCANCEL), L"<141>");
    EXPECT_THAT(calls.Calls(), Contains(MarkedMessageBox("<131>", "0x40")));
}

TEST_F(StringTableUseTest, RecordsOfABatchWhoseSecondFileFails) {
    Drop({L"C:\\in\\b.pdf"});
    Click(IDC_HIDE_OUTPUT);
    converters.Plan({{}, {.exitCode = 1}});
    StartBatch();
    WaitForEnd();
    std::ifstream log(std::filesystem::path(folder.File(L"TalvenorLog.txt")));
    const std::string records(std::istreambuf_iterator<char>(log), {});
    for (const char* const text : {"<146>", "<140>", "<145>"}) EXPECT_THAT(records, HasSubstr(text));
    EXPECT_EQ(Cell(1, 1), L"<145>");
}

TEST_F(StringTableUseTest, RefusalOfAnOutputFolder) {
    Check(IDC_OUTPUT_FOLDER_CHECK);
    SetText(IDC_OUTPUT_FOLDER, L"Q:\\absent");
    Command(IDOK, BN_CLICKED);
    EXPECT_THAT(calls.Calls(), ElementsAre(MarkedMessageBox("<142>", "0x10")));
}

TEST_F(StringTableUseTest, MissingConverter) {
    Destroy();
    std::filesystem::remove(folder.Path() / "pdf2djvu.exe");
    dialog = std::make_unique<CMainDlg>();
    EXPECT_EQ(dialog->Create(nullptr), nullptr);
    EXPECT_THAT(calls.Calls(), ElementsAre(MarkedMessageBox("<130>", "0x10", "none")));
}

}  // namespace
