// Where the DjVu file of a PDF goes. Shell path functions decide, hence on Windows only.
#include "engine/output_path.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <shlwapi.h>

#include <string>
#include <vector>

namespace {

ConversionOptions IntoFolder(const std::wstring& folder, bool isChecked = true) {
    ConversionOptions options;
    options.outputFolderEnabled = isChecked;
    options.outputFolder = folder;
    return options;
}

struct BesideCase {
    const char* name;
    const wchar_t* pdfPath;
    const wchar_t* djvuPath;
};

constexpr BesideCase kBesideThePdf[] = {
    {"Plain", L"C:\\Docs\\Rapport annuel.pdf", L"C:\\Docs\\Rapport annuel.djvu"},
    {"SeveralDots", L"C:\\a\\b.c.pdf", L"C:\\a\\b.c.djvu"},
    {"NoExtension", L"C:\\a\\scan", L"C:\\a\\scan.djvu"},
    {"BlankBeforeTheExtension", L"C:\\a\\v1.0 final.pdf", L"C:\\a\\v1.0 final.djvu"},
    {"BlankAfterTheLastDot", L"C:\\a\\notes.v2 final", L"C:\\a\\notes.v2 final.djvu"},
    {"UpperCase", L"C:\\a\\B.PDF", L"C:\\a\\B.djvu"},
    {"OtherExtension", L"C:\\a\\b.txt", L"C:\\a\\b.djvu"},
    {"LongerExtension", L"C:\\a\\b.document", L"C:\\a\\b.djvu"},
    {"DotInTheFolderOnly", L"C:\\a.b\\scan", L"C:\\a.b\\scan.djvu"},
    {"DotAtTheEnd", L"C:\\a\\b.", L"C:\\a\\b.djvu"},
    {"NothingButAnExtension", L"C:\\a\\.pdf", L"C:\\a\\.djvu"},
    {"InTheRoot", L"C:\\b.pdf", L"C:\\b.djvu"},
    {"OnAServer", L"\\\\server\\share\\b.pdf", L"\\\\server\\share\\b.djvu"},
    {"Relative", L"b.pdf", L"b.djvu"},
    {"ShellCharacters", L"C:\\a & b\\100%^'!é.pdf", L"C:\\a & b\\100%^'!é.djvu"},
    {"OutsideLatin", L"C:\\отчёт\\報告\xD83D\xDE00.pdf", L"C:\\отчёт\\報告\xD83D\xDE00.djvu"},
};

TEST(BuildOutputPath, ReplacesTheExtension) {
    for (const BesideCase& row : kBesideThePdf) {
        EXPECT_EQ(BuildOutputPath({}, row.pdfPath), row.djvuPath) << row.name;
    }
}

TEST(BuildOutputPath, IgnoresTheFolderWhoseCheckBoxIsUnchecked) {
    EXPECT_EQ(BuildOutputPath(IntoFolder(L"D:\\Out", false), L"C:\\x\\name.pdf"), L"C:\\x\\name.djvu");
}

struct FolderCase {
    const char* name;
    const wchar_t* folder;
    const wchar_t* pdfPath;
    const wchar_t* djvuPath;
};

constexpr FolderCase kIntoTheFolder[] = {
    {"Plain", L"D:\\Out", L"C:\\x\\name.pdf", L"D:\\Out\\name.djvu"},
    {"WithABackslashAtTheEnd", L"D:\\Out\\", L"C:\\x\\name.pdf", L"D:\\Out\\name.djvu"},
    {"Root", L"D:\\", L"C:\\x\\name.pdf", L"D:\\name.djvu"},
    {"OnAServer", L"\\\\server\\share", L"C:\\x\\name.pdf", L"\\\\server\\share\\name.djvu"},
    {"Empty", L"", L"C:\\x\\name.pdf", L"name.djvu"},
    {"Relative", L"Out", L"C:\\x\\name.pdf", L"Out\\name.djvu"},
    {"BlanksAreKept", L"D:\\ Out ", L"C:\\x\\name.pdf", L"D:\\ Out \\name.djvu"},
    {"PathOfAPdfIsAFolderLikeAnother", L"D:\\a.pdf", L"C:\\x\\name.pdf", L"D:\\a.pdf\\name.djvu"},
    {"NameWithSeveralDots", L"D:\\Out", L"C:\\x.y\\b.c.pdf", L"D:\\Out\\b.c.djvu"},
    {"NameWithoutExtension", L"D:\\Out", L"C:\\x.y\\scan", L"D:\\Out\\scan.djvu"},
    {"NameWithBlankAfterTheLastDot", L"D:\\Out", L"C:\\a\\notes.v2 final", L"D:\\Out\\notes.v2 final.djvu"},
    {"NameInUpperCase", L"D:\\Out", L"C:\\x\\B.PDF", L"D:\\Out\\B.djvu"},
    {"NameAlone", L"D:\\Out", L"name.pdf", L"D:\\Out\\name.djvu"},
    {"PdfInTheRoot", L"D:\\Out", L"C:\\name.pdf", L"D:\\Out\\name.djvu"},
    {"OutsideLatin", L"D:\\сюда", L"C:\\x\\報告\xD83D\xDE00 é.pdf", L"D:\\сюда\\報告\xD83D\xDE00 é.djvu"},
};

TEST(BuildOutputPath, JoinsFolderAndName) {
    for (const FolderCase& row : kIntoTheFolder) {
        EXPECT_EQ(BuildOutputPath(IntoFolder(row.folder), row.pdfPath), row.djvuPath) << row.name;
    }
}

TEST(BuildOutputPath, FillsTheLongestPathOfTheShellAndLeavesALongerOneAsItIs) {
    const std::wstring stem254 = L"C:\\" + std::wstring(251, L'n');
    EXPECT_EQ(BuildOutputPath({}, stem254 + L".pdf"), stem254 + L".djvu");  // 259 characters
    EXPECT_EQ(BuildOutputPath({}, stem254 + L"n.pdf"), stem254 + L"n.pdf");
    EXPECT_EQ(BuildOutputPath({}, stem254), stem254 + L".djvu");
    EXPECT_EQ(BuildOutputPath({}, stem254 + L"n"), stem254 + L"n");
}

// What the shell makes of the path, in a buffer that no length fills.
std::wstring ShellBeside(const std::wstring& pdfPath) {
    std::vector<wchar_t> path(0x10000);
    pdfPath.copy(path.data(), pdfPath.size());
    ::PathRenameExtensionW(path.data(), L".djvu");
    return path.data();
}

std::wstring ShellIntoFolder(const std::wstring& folder, const std::wstring& pdfPath) {
    std::vector<wchar_t> name(0x10000);
    pdfPath.copy(name.data(), pdfPath.size());
    ::PathStripPathW(name.data());
    ::PathRenameExtensionW(name.data(), L".djvu");
    std::vector<wchar_t> joined(0x10000);
    folder.copy(joined.data(), folder.size());
    ::PathAppendW(joined.data(), name.data());
    return joined.data();
}

TEST(BuildOutputPath, PassesOnTheShellsAnswerAtEveryLength) {
    std::vector<std::size_t> lengths = {300, 519, 520, 521, 1000, 32'000};
    for (std::size_t length = 240; length <= 275; ++length) lengths.push_back(length);
    for (const std::size_t length : lengths) {
        SCOPED_TRACE(length);
        const std::wstring pdfPaths[] = {
            L"C:\\" + std::wstring(length - 7, L'n') + L".pdf",
            L"C:\\" + std::wstring(length - 3, L'n'),
            L"C:\\a." + std::wstring(length - 5, L'x'),
            L"C:\\" + std::wstring(length - 9, L'f') + L"\\a.pdf",
        };
        const std::wstring longFolder = L"D:\\" + std::wstring(length - 3, L'o');
        for (const std::wstring& pdfPath : pdfPaths) {
            EXPECT_EQ(BuildOutputPath({}, pdfPath), ShellBeside(pdfPath));
            EXPECT_EQ(BuildOutputPath(IntoFolder(L"D:\\Out"), pdfPath), ShellIntoFolder(L"D:\\Out", pdfPath));
            EXPECT_EQ(BuildOutputPath(IntoFolder(longFolder), pdfPath), ShellIntoFolder(longFolder, pdfPath));
        }
        EXPECT_EQ(BuildOutputPath(IntoFolder(longFolder), L"C:\\x\\a.pdf"),
                  ShellIntoFolder(longFolder, L"C:\\x\\a.pdf"));
    }
}

}  // namespace
