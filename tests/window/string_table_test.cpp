// Texts by id: the texts of the program, which module and which entry a text comes from, and what is left
// when there is none.
#include "base/string_table.h"

#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"

#include "base/resource_modules.h"
#include "res/resource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;

const std::map<UINT, std::wstring> kTexts = {
    {IDS_PROGRAM_NAME, L"Talvenor"},
    {IDS_ERROR, L"Erreur : "},
    {IDS_CONVERTER_MISSING,
     L"pdf2djvu.exe est absent !\r\n\r\n(Talvenor.exe doit se trouver dans le\r\n"
     L"même dossier que \"pdf2djvu.exe\")"},
    {IDS_CONVERSION_FINISHED, L"Conversion terminée !"},
    {IDS_CONVERTING, L"Conversion en cours : "},
    {IDS_TIP_HIDE_OUTPUT,
     L"Les fenêtres de traitement sont masquées.\r\nTous les résultats et les durées "
     L"sont enregistrés dans un fichier journal."},
    {IDS_SHELL_EXECUTE_FAILED, L"Erreur ShellExecute : "},
    {IDS_CREATE_PROCESS_FAILED, L"Erreur CreateProcess :  "},
    {IDS_TIP_OUTPUT_FOLDER,
     L"Par défaut, les DjVu sont enregistrés dans le même dossier que les PDF.\r\n"
     L"Cocher cette case permet de définir un dossier de sortie unique."},
    {IDS_TIP_VISIBLE_CONSOLES,
     L"Les consoles d'exécution restent ouvertes en fin de traitement. Les "
     L"conversions de tous les fichiers PDF se déroulent en parallèle."},
    {IDS_TIP_SHUT_DOWN,
     L"La machine sera éteinte 30 secondes après la fin des conversions.\r\n(Si d'autres "
     L"applications ouvertes ont des données non sauvegardées, elles peuvent bloquer "
     L"l'extinction.)"},
    {IDS_STOP, L"Arrêter "},
    {IDS_LOG_DURATION, L"*** Durée de conversion (hh:mm:ss) : "},
    {IDS_QUIT, L"Quitter"},
    {IDS_BAD_OUTPUT_FOLDER, L"Le dossier de destination est incorrect !"},
    {IDS_COLUMN_TITLES, L"Fichiers PDF|Durée de conversion"},
    {IDS_CONFIRM_STOP, L"Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?"},
    {IDS_CANCELLED, L"*** Annulé !"},
    {IDS_LOG_FINISHED, L"Terminé le : "},
    {IDS_TIP_ADD,
     L"Ajoutez des fichiers PDF à l'aide de ce bouton ou déposez directement des fichiers dans "
     L"la liste depuis l'Explorateur de fichiers de Windows."},
    {IDS_TIP_PAGES,
     L"Entrer des n° de pages, séparées par des virgules, un tiret pour un intervalle.\r\n"
     L"- Ex : 2,5,8-56"},
    {IDS_TIP_EXTRA_OPTIONS,
     L"Ajouter d'autres options à la ligne de commande de pdf2djvu.exe\r\n"
     L"(insérées telles quelles)."},
    {IDS_READY, L"Ready"},
};

class StringTableTest : public testing::Test {
protected:
    ~StringTableTest() override { ForgetResourceModules(); }
};

TEST_F(StringTableTest, TheProgramHasTheseTextsAndNoOthers) {
    AddResourceModule(::GetModuleHandleW(nullptr));
    for (UINT id = 0; id <= 0xFFFF; ++id) {
        wchar_t systems[512] = {};
        const bool exists = ::LoadStringW(nullptr, id, systems, ARRAYSIZE(systems)) > 0;
        ASSERT_EQ(exists, kTexts.contains(id)) << id;
        if (!exists) continue;
        std::wstring text = L"before";
        EXPECT_TRUE(LoadStringResource(id, text)) << id;
        EXPECT_EQ(Utf8(text), Utf8(kTexts.at(id))) << id;
        EXPECT_EQ(text, systems) << id;
    }
}

const HINSTANCE kFirst = reinterpret_cast<HINSTANCE>(0x10000);
const HINSTANCE kSecond = reinterpret_cast<HINSTANCE>(0x20000);
const HINSTANCE kThird = reinterpret_cast<HINSTANCE>(0x30000);

// Three modules that exist in the test only, with the string blocks that a test gives them.
class StringTableModulesTest : public StringTableTest {
protected:
    StringTableModulesTest() {
        for (const HINSTANCE module : {kFirst, kSecond, kThird}) AddResourceModule(module);
    }

    // Gives `module` a block in which only `entry`, counted from 0, has a text.
    void AddBlock(HINSTANCE module, UINT number, UINT entry, const std::wstring& text) {
        std::wstring& block = blocks[{module, number}];
        block.assign(entry, L'\0');
        block += static_cast<wchar_t>(text.size()) + text;
        block.append(15 - entry, L'\0');
    }

    std::map<std::pair<HINSTANCE, UINT>, std::wstring> blocks;  // by module and block number
    std::vector<HINSTANCE> asked;

private:
    Replaced m_find =
        REPLACE_IMPORT(FindResourceExW, [this](HMODULE module, LPCWSTR type, LPCWSTR name, WORD language) {
            EXPECT_EQ(type, RT_STRING);
            EXPECT_EQ(language, 0) << "the lookup is not language-neutral";
            asked.push_back(module);
            const auto found = blocks.find({module, static_cast<UINT>(reinterpret_cast<ULONG_PTR>(name))});
            return found == blocks.end() ? nullptr : reinterpret_cast<HRSRC>(&found->second);
        });
    Replaced m_load =
        REPLACE_IMPORT(LoadResource, [](HMODULE, HRSRC found) { return reinterpret_cast<HGLOBAL>(found); });
    Replaced m_lock = REPLACE_IMPORT(
        LockResource, [](HGLOBAL loaded) { return reinterpret_cast<std::wstring*>(loaded)->data(); });
};

TEST_F(StringTableModulesTest, TheFirstModuleThatHoldsTheBlockWins) {
    AddBlock(kSecond, 9, 0, L"second");
    AddBlock(kThird, 9, 0, L"third");
    EXPECT_EQ(LoadText(128), L"second");
    EXPECT_THAT(asked, ElementsAre(kFirst, kSecond));
}

TEST_F(StringTableModulesTest, TheModuleWithTheBlockDecidesEvenWithoutTheEntry) {
    AddBlock(kFirst, 9, 1, L"another id");
    AddBlock(kSecond, 9, 0, L"second");
    std::wstring text = L"before";
    EXPECT_FALSE(LoadStringResource(128, text));
    EXPECT_EQ(text, L"before");
}

TEST_F(StringTableModulesTest, AllModulesAreAskedInTheirOrder) {
    std::wstring text = L"before";
    EXPECT_FALSE(LoadStringResource(128, text));
    EXPECT_EQ(text, L"before");
    EXPECT_THAT(asked, ElementsAre(kFirst, kSecond, kThird));
    EXPECT_EQ(LoadText(128), L"");
}

TEST_F(StringTableModulesTest, ABlockOfAnotherIdDoesNotCount) {
    AddBlock(kFirst, 10, 0, L"id 144");
    AddBlock(kThird, 9, 15, L"id 143");
    EXPECT_EQ(LoadText(143), L"id 143");
}

}  // namespace
