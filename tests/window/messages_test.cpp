// Message boxes by string id or text.
#include "ui/messages.h"

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"

#include "framework/app_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Boxes are written down as "owner text|caption|type" and answered by `s_answer`. String 900 is `s_long` and
// string 901 is empty; loads are written down as "LoadStringW id size".
class ShowMessageTest : public testing::Test {
protected:
    ShowMessageTest() {
        s_this = this;
        s_boxes.Clear();
        s_loads.Clear();
        s_answer = IDOK;
        CAppModule::Instance().Init(::GetModuleHandleW(nullptr));
    }
    ~ShowMessageTest() override { CAppModule::Instance().Term(); }

    static inline CallRecord s_boxes;
    static inline CallRecord s_loads;
    static inline int s_answer = IDOK;
    static inline std::wstring s_long;

private:
    static int WINAPI Box(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
        s_boxes.Add((owner ? std::to_string(reinterpret_cast<ULONG_PTR>(owner)) : "none") + ' ' +
                    Shown(text) + '|' + Shown(caption) + '|' + std::to_string(type));
        return s_answer;
    }
    static std::string Shown(LPCWSTR text) {
        if (!text) return "(null)";
        return IS_INTRESOURCE(text) ? "(id)" : Utf8(text);
    }
    static int WINAPI Load(HINSTANCE module, UINT id, LPWSTR buffer, int size) {
        s_loads.Add("LoadStringW " + std::to_string(id) + ' ' + std::to_string(size));
        if (id != 900) return s_this->m_load.Original<decltype(::LoadStringW)>()(module, id, buffer, size);
        const auto length = std::min(s_long.size(), static_cast<std::size_t>(size) - 1);
        std::copy_n(s_long.begin(), length, buffer);
        buffer[length] = L'\0';
        return static_cast<int>(length);
    }

    static inline ShowMessageTest* s_this = nullptr;
    ReplacedImport m_box{"MessageBoxW", &Box};
    ReplacedImport m_load{"LoadStringW", &Load};
};

TEST_F(ShowMessageTest, LoadsTextAndCaptionByTheirIds) {
    const auto owner = reinterpret_cast<HWND>(77);
    ShowMessage(owner, MAKEINTRESOURCEW(142), MAKEINTRESOURCEW(128), MB_OK | MB_ICONERROR);
    EXPECT_THAT(s_boxes.Calls(), ElementsAre("77 Le dossier de destination est incorrect !|Talvenor|16"));
    EXPECT_THAT(s_loads.Calls(), ElementsAre("LoadStringW 142 256", "LoadStringW 128 256"));
}

TEST_F(ShowMessageTest, TakesTextsAsTheyAre) {
    ShowMessage(nullptr, L"un texte", L"un titre", MB_YESNO | MB_ICONQUESTION);
    EXPECT_THAT(s_boxes.Calls(), ElementsAre("none un texte|un titre|36"));
    EXPECT_THAT(s_loads.Calls(), IsEmpty());
}

TEST_F(ShowMessageTest, TakesOneByIdAndTheOtherAsText) {
    ShowMessage(nullptr, L"un texte", MAKEINTRESOURCEW(128), MB_OK);
    ShowMessage(nullptr, MAKEINTRESOURCEW(131), L"un titre", MB_OK);
    EXPECT_THAT(s_boxes.Calls(),
                ElementsAre("none un texte|Talvenor|0", "none Conversion terminée !|un titre|0"));
}

TEST_F(ShowMessageTest, TheCaptionZeroIsNone) {
    ShowMessage(nullptr, L"un texte", nullptr, MB_OK);
    EXPECT_THAT(s_boxes.Calls(), ElementsAre("none un texte|(null)|0"));
    EXPECT_THAT(s_loads.Calls(), IsEmpty());
}

TEST_F(ShowMessageTest, GivesTheButtonThatWasPressed) {
    s_answer = IDNO;
    EXPECT_EQ(ShowMessage(nullptr, L"un texte", nullptr, MB_YESNO), IDNO);
    s_answer = IDYES;
    EXPECT_EQ(ShowMessage(nullptr, L"un texte", nullptr, MB_YESNO), IDYES);
}

TEST_F(ShowMessageTest, AMissingStringIsAnEmptyText) {
    ShowMessage(nullptr, MAKEINTRESOURCEW(901), MAKEINTRESOURCEW(128), MB_OK);
    EXPECT_THAT(s_boxes.Calls(), ElementsAre("none |Talvenor|0"));
}

TEST_F(ShowMessageTest, EveryValueOfSixteenBitsIsAnId) {
    ShowMessage(nullptr, MAKEINTRESOURCEW(1024), MAKEINTRESOURCEW(57345), MB_OK);
    ShowMessage(nullptr, MAKEINTRESOURCEW(57345), MAKEINTRESOURCEW(65535), MB_OK);
    ShowMessage(nullptr, MAKEINTRESOURCEW(65535), nullptr, MB_OK);
    EXPECT_THAT(s_boxes.Calls(), ElementsAre("none |Ready|0", "none Ready||0", "none |(null)|0"));
    EXPECT_THAT(s_loads.Calls(),
                ElementsAre("LoadStringW 1024 256", "LoadStringW 57345 256", "LoadStringW 57345 256",
                            "LoadStringW 65535 256", "LoadStringW 65535 256"));
}

struct LengthCase {
    const char* name;
    std::size_t length;
    std::vector<std::string> loads;
};
class ShowMessageLengthTest : public ShowMessageTest, public testing::WithParamInterface<LengthCase> {
protected:
    // No two neighbours alike, so that a shift shows.
    static std::wstring Text(std::size_t length) {
        std::wstring text(length, L' ');
        for (std::size_t i = 0; i < length; ++i) text[i] = static_cast<wchar_t>(L'a' + i % 26);
        return text;
    }
};

TEST_P(ShowMessageLengthTest, TheBufferDoublesUntilTheTextFits) {
    s_long = Text(GetParam().length);
    ShowMessage(nullptr, MAKEINTRESOURCEW(900), nullptr, MB_OK);
    EXPECT_THAT(s_boxes.Calls(), ElementsAre("none " + Utf8(s_long) + "|(null)|0"));
    EXPECT_EQ(s_loads.Calls(), GetParam().loads);
}

TEST_P(ShowMessageLengthTest, ForTheCaptionToo) {
    s_long = Text(GetParam().length);
    ShowMessage(nullptr, L"un texte", MAKEINTRESOURCEW(900), MB_OK);
    EXPECT_THAT(s_boxes.Calls(), ElementsAre("none un texte|" + Utf8(s_long) + "|0"));
    EXPECT_EQ(s_loads.Calls(), GetParam().loads);
}

INSTANTIATE_TEST_SUITE_P(
    All, ShowMessageLengthTest,
    testing::Values(LengthCase{"Fits", 254, {"LoadStringW 900 256"}},
                    LengthCase{"MightHaveBeenCut", 255, {"LoadStringW 900 256", "LoadStringW 900 512"}},
                    LengthCase{"Longer", 256, {"LoadStringW 900 256", "LoadStringW 900 512"}},
                    LengthCase{"FitsTwice", 510, {"LoadStringW 900 256", "LoadStringW 900 512"}},
                    LengthCase{"Long",
                               2000,
                               {"LoadStringW 900 256", "LoadStringW 900 512", "LoadStringW 900 1024",
                                "LoadStringW 900 2048"}}),
    [](const auto& row) { return std::string(row.param.name); });

// Refuses memory for one buffer of `s_refused` characters.
class ShowMessageMemoryTest : public ShowMessageTest {
protected:
    ShowMessageMemoryTest() { s_refused = 0; }

    static inline std::size_t s_refused = 0;

private:
    using Allocate = void*(__cdecl*)(std::size_t);

    static void* __cdecl AllocateUnlessRefused(std::size_t bytes) {
        if (s_refused != 0 && bytes == s_refused * sizeof(wchar_t)) {
            s_refused = 0;
            return nullptr;
        }
        return s_malloc(bytes);
    }

    static inline const Allocate s_malloc = reinterpret_cast<Allocate>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"msvcrt.dll"), "malloc")));
    ReplacedImport m_malloc{"malloc", &AllocateUnlessRefused};
};

TEST_F(ShowMessageMemoryTest, WithoutMemoryForTheTextNothingIsShown) {
    s_refused = 256;
    EXPECT_EQ(ShowMessage(nullptr, MAKEINTRESOURCEW(131), nullptr, MB_OK), 0);
    EXPECT_EQ(s_refused, 0u) << "no buffer of this size was asked for";
    EXPECT_THAT(s_boxes.Calls(), IsEmpty());
}

TEST_F(ShowMessageMemoryTest, WithoutMemoryForTheCaptionNothingIsShown) {
    s_refused = 256;
    EXPECT_EQ(ShowMessage(nullptr, L"un texte", MAKEINTRESOURCEW(128), MB_OK), 0);
    EXPECT_EQ(s_refused, 0u) << "no buffer of this size was asked for";
    EXPECT_THAT(s_boxes.Calls(), IsEmpty());
}

TEST_F(ShowMessageMemoryTest, WithoutMemoryForALargerBufferNothingIsShown) {
    s_long = std::wstring(300, L'x');
    s_refused = 512;
    EXPECT_EQ(ShowMessage(nullptr, MAKEINTRESOURCEW(900), nullptr, MB_OK), 0);
    EXPECT_EQ(s_refused, 0u) << "no buffer of this size was asked for";
    EXPECT_THAT(s_boxes.Calls(), IsEmpty());
}

}  // namespace
