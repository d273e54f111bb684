// The set of the paths that the list has.
#include "base/text_set.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace {

TEST(TextSet, ComparesEveryCharacterExactly) {
    TextSet set;
    using namespace std::string_view_literals;
    for (const std::wstring_view text :
         {L"C:\\a.pdf"sv, L"c:\\a.pdf"sv, L"C:\\A.pdf"sv, L"C:\\a.pdf "sv, L" C:\\a.pdf"sv, L"C:/a.pdf"sv,
          L"C:\\a.pd"sv, L"C:\\\u00E9.pdf"sv, L"C:\\e\u0301.pdf"sv, L"C:\\a.pdf\0"sv, L""sv, L"\0"sv}) {
        EXPECT_TRUE(set.Insert(text)) << "length " << text.size();
        EXPECT_FALSE(set.Insert(text)) << "length " << text.size();
    }
}

TEST(TextSet, KeepsItsOwnCopies) {
    TextSet set;
    std::wstring text = L"C:\\a.pdf";
    set.Insert(text);
    text[3] = L'b';
    EXPECT_TRUE(set.Insert(text));
    EXPECT_FALSE(set.Insert(L"C:\\a.pdf"));
}

TEST(TextSet, ForgetsTheLastTextAndNoOther) {
    TextSet set;
    for (const wchar_t* const text : {L"a", L"b"}) set.Insert(text);
    set.RemoveLast();
    EXPECT_TRUE(set.Insert(L"b"));
    EXPECT_FALSE(set.Insert(L"a"));
}

// Beside the library's set, through all sizes at which it grows, with a removal now and then.
TEST(TextSet, DoesWhatASetDoesWithManyTexts) {
    std::mt19937 random(20261122);
    TextSet set;
    std::set<std::wstring> model;
    for (int step = 0; step < 50'000; ++step) {
        const std::wstring text = L"C:\\scans\\" + std::to_wstring(random() % 30'000) + L".pdf";
        const bool isNew = model.insert(text).second;
        ASSERT_EQ(set.Insert(text), isNew) << step;
        if (isNew && random() % 10 == 0) {
            set.RemoveLast();
            model.erase(text);
        }
    }
    for (int number = 0; number < 30'000; ++number) {
        const std::wstring text = L"C:\\scans\\" + std::to_wstring(number) + L".pdf";
        ASSERT_EQ(set.Insert(text), model.insert(text).second) << number;
    }
}

}  // namespace
