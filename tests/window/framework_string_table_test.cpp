// Texts by id: which module and which entry a text comes from, and what is left when there is none.
#include "base/string_table.h"

#include "tests/support/replaced_imports.h"

#include "res/resource.h"
#include "framework/app_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;

class FrameworkStringTableTest : public testing::Test {
protected:
    FrameworkStringTableTest() { CAppModule::Instance().Init(::GetModuleHandleW(nullptr)); }
    ~FrameworkStringTableTest() override { CAppModule::Instance().Term(); }
};

TEST_F(FrameworkStringTableTest, LoadsTheFirstTheLastAndAMiddleEntryOfABlock) {
    EXPECT_EQ(LoadText(128), L"Talvenor");                          // first of block 9
    EXPECT_EQ(LoadText(143), L"Fichiers PDF|Durée de conversion");  // last of block 9
    EXPECT_EQ(LoadText(144),                                        // first of block 10
              L"Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?");
    EXPECT_EQ(LoadText(135), L"Erreur CreateProcess :  ");
    EXPECT_EQ(LoadText(57345), L"Ready");
}

TEST_F(FrameworkStringTableTest, AMissingEntryLeavesTheTextAndReportsFailure) {
    std::wstring text = L"before";
    EXPECT_FALSE(LoadStringResource(150, text));  // its block has other entries
    EXPECT_EQ(text, L"before");
    EXPECT_FALSE(LoadStringResource(30000, text));  // there is no such block
    EXPECT_EQ(text, L"before");
    EXPECT_EQ(LoadText(150), L"");
}

TEST_F(FrameworkStringTableTest, AFoundEntryReplacesTheText) {
    std::wstring text = L"before";
    EXPECT_TRUE(LoadStringResource(128, text));
    EXPECT_EQ(text, L"Talvenor");
}

// String blocks of modules that exist in the test only.
struct Modules {
    static inline const HINSTANCE kFirst = reinterpret_cast<HINSTANCE>(0x10000);
    static inline const HINSTANCE kSecond = reinterpret_cast<HINSTANCE>(0x20000);
    static inline const HINSTANCE kThird = reinterpret_cast<HINSTANCE>(0x30000);
    static inline std::map<std::pair<HINSTANCE, UINT>, std::wstring> blocks;  // by module and block number
    static inline std::vector<HINSTANCE> asked;

    // A block in which only `entry`, counted from 0, has a text.
    static std::wstring Block(UINT entry, const std::wstring& text) {
        std::wstring block;
        for (UINT index = 0; index < 16; ++index) {
            block += index == entry ? static_cast<wchar_t>(text.size()) : L'\0';
            if (index == entry) block += text;
        }
        return block;
    }

    static HRSRC WINAPI Find(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language) {
        EXPECT_EQ(type, RT_STRING);
        EXPECT_EQ(language, 0) << "the lookup is not language-neutral";
        asked.push_back(module);
        const auto found = blocks.find({module, static_cast<UINT>(reinterpret_cast<ULONG_PTR>(name))});
        return found == blocks.end() ? nullptr : reinterpret_cast<HRSRC>(&found->second);
    }
    static HGLOBAL WINAPI Load(HMODULE /*module*/, HRSRC found) { return found; }
    static LPVOID WINAPI Lock(HGLOBAL loaded) { return reinterpret_cast<std::wstring*>(loaded)->data(); }
};

class FrameworkStringTableModulesTest : public testing::Test {
protected:
    FrameworkStringTableModulesTest() {
        Modules::blocks.clear();
        Modules::asked.clear();
        CAppModule::Instance().Init(Modules::kFirst);
        AddResourceModule(Modules::kSecond);
        AddResourceModule(Modules::kThird);
    }
    ~FrameworkStringTableModulesTest() override { CAppModule::Instance().Term(); }

private:
    ReplacedImport m_find{"FindResourceExW", &Modules::Find};
    ReplacedImport m_load{"LoadResource", &Modules::Load};
    ReplacedImport m_lock{"LockResource", &Modules::Lock};
};

TEST_F(FrameworkStringTableModulesTest, TheFirstModuleThatHoldsTheBlockWins) {
    Modules::blocks[{Modules::kSecond, 9}] = Modules::Block(0, L"second");
    Modules::blocks[{Modules::kThird, 9}] = Modules::Block(0, L"third");
    EXPECT_EQ(LoadText(128), L"second");
    EXPECT_THAT(Modules::asked, ElementsAre(Modules::kFirst, Modules::kSecond));
}

TEST_F(FrameworkStringTableModulesTest, TheModuleWithTheBlockDecidesEvenWithoutTheEntry) {
    Modules::blocks[{Modules::kFirst, 9}] = Modules::Block(1, L"another id");
    Modules::blocks[{Modules::kSecond, 9}] = Modules::Block(0, L"second");
    std::wstring text = L"before";
    EXPECT_FALSE(LoadStringResource(128, text));
    EXPECT_EQ(text, L"before");
}

TEST_F(FrameworkStringTableModulesTest, AllModulesAreAskedInTheirOrder) {
    EXPECT_EQ(LoadText(128), L"");
    EXPECT_THAT(Modules::asked, ElementsAre(Modules::kFirst, Modules::kSecond, Modules::kThird));
}

TEST_F(FrameworkStringTableModulesTest, ABlockOfAnotherIdDoesNotCount) {
    Modules::blocks[{Modules::kFirst, 10}] = Modules::Block(0, L"id 144");
    Modules::blocks[{Modules::kThird, 9}] = Modules::Block(15, L"id 143");
    EXPECT_EQ(LoadText(143), L"id 143");
}

}  // namespace
