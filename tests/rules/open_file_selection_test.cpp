// What the multi-select open dialog left in its buffer.
#include "ui/open_file_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// The characters of a literal without the null that the compiler adds.
template <std::size_t Size>
std::span<const wchar_t> Characters(const wchar_t (&literal)[Size]) {
    return {literal, Size - 1};
}

TEST(ParseOpenFileBuffer, ReadsOnePathOrAFolderAndTheNamesInItUpToTheFirstEmptyOne) {
    const struct {
        const char* name;
        std::span<const wchar_t> buffer;
        std::wstring_view folder;
        std::vector<std::wstring_view> files;
    } cases[] = {
        {"one file", Characters(L"C:\\in\\a.pdf\0\0"), L"", {L"C:\\in\\a.pdf"}},
        {"names in their order",
         Characters(L"C:\\in\0z.pdf\0a b.PDF\0отчёт 報告.pdf\0\0"),
         L"C:\\in",
         {L"z.pdf", L"a b.PDF", L"отчёт 報告.pdf"}},
        {"a single name in a folder", Characters(L"C:\\in\0a.pdf\0\0"), L"C:\\in", {L"a.pdf"}},
        {"a root", Characters(L"C:\\\0a\0b\0\0"), L"C:\\", {L"a", L"b"}},
        {"a share", Characters(L"\\\\server\\share\0a\0b\0\0"), L"\\\\server\\share", {L"a", L"b"}},
        {"a name twice", Characters(L"C:\\in\0a\0a\0\0"), L"C:\\in", {L"a", L"a"}},
        {"more behind the path", Characters(L"C:\\a.pdf\0\0left from before\0\0"), L"", {L"C:\\a.pdf"}},
        {"more behind the names", Characters(L"C:\\in\0a\0b\0\0left\0\0"), L"C:\\in", {L"a", L"b"}},
        {"a path without a null", Characters(L"C:\\a.pdf"), L"", {L"C:\\a.pdf"}},
        {"a path with one null", Characters(L"C:\\a.pdf\0"), L"", {L"C:\\a.pdf"}},
        {"names without a null", Characters(L"C:\\in\0a\0b"), L"C:\\in", {L"a", L"b"}},
        {"names with one null", Characters(L"C:\\in\0a\0b\0"), L"C:\\in", {L"a", L"b"}},
        {"nothing", {}, L"", {L""}},
        {"one null", Characters(L"\0"), L"", {L""}},
        {"two nulls", Characters(L"\0\0"), L"", {L""}},
        {"more behind nulls", Characters(L"\0\0\0a\0"), L"", {L""}},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        const OpenFileSelection selection = ParseOpenFileBuffer(row.buffer);
        EXPECT_EQ(selection.folder, row.folder);
        EXPECT_EQ(selection.files, row.files);
    }
}

TEST(ParseOpenFileBuffer, CopiesNothing) {
    const std::wstring buffer(L"C:\\in\0a.pdf\0\0", 13);
    const OpenFileSelection selection = ParseOpenFileBuffer(buffer);
    EXPECT_EQ(selection.folder.data(), buffer.data());
    ASSERT_THAT(selection.files, testing::SizeIs(1));
    EXPECT_EQ(selection.files[0].data(), buffer.data() + 6);
}

TEST(ParseOpenFileBuffer, ReadsThousandsOfNames) {
    constexpr std::size_t kCount = 5000;
    std::wstring buffer = L"C:\\in";
    buffer += L'\0';
    for (std::size_t i = 0; i < kCount; ++i) buffer += std::to_wstring(i) + L".pdf" + L'\0';
    buffer += L'\0';
    const OpenFileSelection selection = ParseOpenFileBuffer(buffer);
    EXPECT_EQ(selection.folder, L"C:\\in");
    ASSERT_EQ(selection.files.size(), kCount);
    EXPECT_EQ(selection.files.front(), L"0.pdf");
    EXPECT_EQ(selection.files[1234], L"1234.pdf");
    EXPECT_EQ(selection.files.back(), L"4999.pdf");
}

}  // namespace
