// What the command interpreter is started with for each file.
#include "tests/window/batch_fixture.h"

#include <cstring>

namespace {

using testing::ElementsAre;
using testing::SizeIs;

using BatchInterpreterTest = BatchFixture;

TEST_F(BatchInterpreterTest, IsThatOfTheSystemInTheProgramsFolderAndHiddenWithItsErrorsInTheLogOrShown) {
    for (const bool isHidden : {false, true}) {
        SCOPED_TRACE(isHidden);
        Check(IDC_HIDE_OUTPUT, isHidden);
        Convert(1);
        Start start = converters.Starts().back();
        EXPECT_EQ(start.interpreter, L"C:\\système\\cmd.exe");
        EXPECT_EQ(start.arguments,
                  std::wstring(L"/C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\"") +
                      (isHidden ? L" 2>>TalvenorLog.txt" : L""));
        EXPECT_EQ(start.folder, folder.Path().wstring());
        EXPECT_TRUE(start.inheritsHandles);
        EXPECT_EQ(start.flags, 0u);
        EXPECT_FALSE(start.ownEnvironment);
        EXPECT_FALSE(start.ownSecurity);
        // Nothing but the way to show the window, and the title, whose address is the batch's own.
        start.startup.lpTitle = nullptr;
        STARTUPINFOW expected = {};
        expected.cb = 104;
        expected.dwFlags = STARTF_USESHOWWINDOW;
        expected.wShowWindow = isHidden ? SW_HIDE : SW_SHOW;
        EXPECT_EQ(std::memcmp(&start.startup, &expected, sizeof expected), 0);
    }
}

TEST_F(BatchInterpreterTest, RunsEachFileInTheFolderThatTheProgramHadAtTheStart) {
    AddFiles({L"C:\\Docs\\a.pdf", L"C:\\Docs\\b.pdf"});
    worker.At("WaitForSingleObject process 1", 1, [] { programPath = L"C:\\Ailleurs\\Talvenor.exe"; });
    RunBatch();
    ASSERT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_EQ(converters.Starts()[1].folder, folder.Path().wstring());
}

TEST_F(BatchInterpreterTest, CarriesTheNameOfTheFileInItsTitle) {
    // A drop carries 260 characters at most; other programs can fill the list too.
    const std::wstring longName = std::wstring(300, L'x') + L".pdf";
    InsertRow(L"C:\\" + longName);
    AddFiles({L"C:\\Docs\\Rapport annuel.pdf", L"\\\\serveur\\partage\\Été.PDF", L"C:\\a.b\\v1.0 final.pdf",
              L"C:\\Docs\\Отчёт 報告.pdf"});
    RunBatch();
    std::vector<std::wstring> titles;
    for (const Start& start : converters.Starts()) titles.push_back(start.title);
    EXPECT_THAT(titles, ElementsAre(longName, L"Rapport annuel.pdf", L"Été.PDF", L"v1.0 final.pdf",
                                    L"Отчёт 報告.pdf"));
    EXPECT_TRUE(converters.Starts()[0].arguments.ends_with(L" \"C:\\" + longName + L"\"\""));
}

// Which control makes which option. What the options make of the command line is a rule of its own.
TEST_F(BatchInterpreterTest, GetsTheOptionOfEachControl) {
    static const struct {
        std::vector<int> checked;
        int edit;
        const wchar_t* text;
        const wchar_t* options;  // between "-v " and the PDF
    } kCases[] = {
        {{IDC_RESOLUTION_CHECK}, IDC_RESOLUTION, L"50", L"-d 50"},
        {{}, IDC_RESOLUTION, L"300", L""},
        {{IDC_NO_METADATA}, 0, L"", L" --no-metadata"},
        {{IDC_NO_OUTLINE}, 0, L"", L" --no-outline"},
        {{IDC_NO_HYPERLINKS}, 0, L"", L" --no-hyperlinks"},
        {{IDC_NO_TEXT}, 0, L"", L" --no-text"},
        {{IDC_LINES}, 0, L"", L" --lines"},
        {{IDC_NO_TEXT, IDC_LINES}, 0, L"", L" --no-text"},
        {{IDC_MONOCHROME}, 0, L"", L" --monochrome"},
        {{}, IDC_EXTRA_OPTIONS, L"  --a=\"b c\" >x & y ", L"   --a=\"b c\" >x & y "},
        {{IDC_PAGES_CHECK}, IDC_PAGES, L" 1 , 2-4 ", L" -p \"1,2-4\""},
        {{}, IDC_PAGES, L"1-3", L""},
        {{}, IDC_OUTPUT_FOLDER, L"D:\\Sortie", L""},
    };
    AddFiles({L"C:\\Docs\\a.pdf"});
    for (const auto& row : kCases) {
        for (const int id : row.checked) Check(id, true);
        if (row.edit != 0) SetText(row.edit, row.text);
        RunBatch();
        EXPECT_EQ(converters.Starts().back().arguments,
                  std::wstring(L"/C \"pdf2djvu.exe -o \"C:\\Docs\\a.djvu\" -v ") + row.options +
                      L" \"C:\\Docs\\a.pdf\"\"");
        for (const int id : row.checked) Check(id, false);
        if (row.edit != 0) SetText(row.edit, L"");
    }
    Check(IDC_OUTPUT_FOLDER_CHECK);
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    RunBatch();
    EXPECT_EQ(converters.Starts().back().arguments,
              L"/C \"pdf2djvu.exe -o \"" + folder.File(L"a.djvu") + L"\" -v  \"C:\\Docs\\a.pdf\"\"");
}

}  // namespace
