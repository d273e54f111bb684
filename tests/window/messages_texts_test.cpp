// The texts of the program, as the running program loads them.
#include "base/string_table.h"

#include "framework/app_module.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct TextCase {
    UINT id;
    const wchar_t* text;
};

class MessagesTextTest : public testing::TestWithParam<TextCase> {
protected:
    MessagesTextTest() { CAppModule::Instance().Init(::GetModuleHandleW(nullptr)); }
    ~MessagesTextTest() override { CAppModule::Instance().Term(); }
};

TEST_P(MessagesTextTest, IsExactlyThis) {
    std::wstring text = L"before";
    EXPECT_TRUE(LoadStringResource(GetParam().id, text));
    EXPECT_EQ(text, GetParam().text);
}

TEST_P(MessagesTextTest, IsTheSystemsTextForTheIdToo) {
    wchar_t text[512] = {};
    ::LoadStringW(::GetModuleHandleW(nullptr), GetParam().id, text, ARRAYSIZE(text));
    EXPECT_EQ(std::wstring(text), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    All, MessagesTextTest,
    testing::Values(
        TextCase{128, L"Talvenor"}, TextCase{129, L"Erreur : "},
        TextCase{130,
                 L"pdf2djvu.exe est absent !\r\n\r\n(Talvenor.exe doit se trouver dans le\r\nmême dossier "
                 L"que \"pdf2djvu.exe\")"},
        TextCase{131, L"Conversion terminée !"}, TextCase{132, L"Conversion en cours : "},
        TextCase{133,
                 L"Les fenêtres de traitement sont masquées.\r\nTous les résultats et les durées sont "
                 L"enregistrés dans un fichier journal."},
        TextCase{134, L"Erreur ShellExecute : "}, TextCase{135, L"Erreur CreateProcess :  "},
        TextCase{136,
                 L"Par défaut, les DjVu sont enregistrés dans le même dossier que les PDF.\r\nCocher cette "
                 L"case permet de définir un dossier de sortie unique."},
        TextCase{137,
                 L"Les consoles d'exécution restent ouvertes en fin de traitement. Les conversions de tous "
                 L"les fichiers PDF se déroulent en parallèle."},
        TextCase{138,
                 L"La machine sera éteinte 30 secondes après la fin des conversions.\r\n(Si d'autres "
                 L"applications ouvertes ont des données non sauvegardées, elles peuvent bloquer "
                 L"l'extinction.)"},
        TextCase{139, L"Arrêter "}, TextCase{140, L"*** Durée de conversion (hh:mm:ss) : "},
        TextCase{141, L"Quitter"}, TextCase{142, L"Le dossier de destination est incorrect !"},
        TextCase{143, L"Fichiers PDF|Durée de conversion"},
        TextCase{144, L"Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?"},
        TextCase{145, L"*** Annulé !"}, TextCase{146, L"Terminé le : "},
        TextCase{147,
                 L"Ajoutez des fichiers PDF à l'aide de ce bouton ou déposez directement des fichiers dans "
                 L"la liste depuis l'Explorateur de fichiers de Windows."},
        TextCase{204,
                 L"Entrer des n° de pages, séparées par des virgules, un tiret pour un intervalle.\r\n"
                 L"- Ex : 2,5,8-56"},
        TextCase{205,
                 L"Ajouter d'autres options à la ligne de commande de pdf2djvu.exe\r\n"
                 L"(insérées telles quelles)."},
        TextCase{57345, L"Ready"}),
    [](const auto& row) { return std::to_string(row.param.id); });

TEST(MessagesTexts, ThereAreNoOthers) {
    int found = 0;
    wchar_t text[8];
    for (UINT id = 0; id <= 0xFFFF; ++id) {
        found += ::LoadStringW(::GetModuleHandleW(nullptr), id, text, ARRAYSIZE(text)) > 0;
    }
    EXPECT_EQ(found, 23);
}

}  // namespace
