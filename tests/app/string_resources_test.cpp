// The string table in the built program: every entry, and no other.
#include <gtest/gtest.h>

#include <windows.h>

#include <map>

#include "tests/app/installed_program.h"
#include "tests/app/program_resources.h"

namespace {

// A block holds sixteen strings; block n begins with string 16 * (n - 1). An empty string is no string.
constexpr int kStringsInBlock = 16;

std::map<int, std::wstring> Strings() {
    const ProgramResources resources(BuiltProgram());
    std::map<int, std::wstring> strings;
    for (const int block : resources.Ids(RT_STRING)) {
        ByteReader reader(resources.Bytes(RT_STRING, block));
        for (int i = 0; i < kStringsInBlock; ++i) {
            const auto length = reader.Take<WORD>();
            const std::wstring text = reader.TakeText(length);
            if (!text.empty()) strings[(block - 1) * kStringsInBlock + i] = text;
        }
    }
    return strings;
}

const std::map<int, std::wstring> kExpected = {
    {128, L"Talvenor"},
    {129, L"Erreur : "},
    {130,
     L"pdf2djvu.exe est absent !\r\n\r\n(Talvenor.exe doit se trouver dans le\r\n"
     L"même dossier que \"pdf2djvu.exe\")"},
    {131, L"Conversion terminée !"},
    {132, L"Conversion en cours : "},
    {133,
     L"Les fenêtres de traitement sont masquées.\r\nTous les résultats et les durées sont enregistrés "
     L"dans un fichier journal."},
    {134, L"Erreur ShellExecute : "},
    {135, L"Erreur CreateProcess :  "},
    {136,
     L"Par défaut, les DjVu sont enregistrés dans le même dossier que les PDF.\r\nCocher cette case "
     L"permet de définir un dossier de sortie unique."},
    {137,
     L"Les consoles d'exécution restent ouvertes en fin de traitement. Les conversions de tous les "
     L"fichiers PDF se déroulent en parallèle."},
    {138,
     L"La machine sera éteinte 30 secondes après la fin des conversions.\r\n(Si d'autres applications "
     L"ouvertes ont des données non sauvegardées, elles peuvent bloquer l'extinction.)"},
    {139, L"Arrêter "},
    {140, L"*** Durée de conversion (hh:mm:ss) : "},
    {141, L"Quitter"},
    {142, L"Le dossier de destination est incorrect !"},
    {143, L"Fichiers PDF|Durée de conversion"},
    {144, L"Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?"},
    {145, L"*** Annulé !"},
    {146, L"Terminé le : "},
    {147,
     L"Ajoutez des fichiers PDF à l'aide de ce bouton ou déposez directement des fichiers dans la liste "
     L"depuis l'Explorateur de fichiers de Windows."},
    {204,
     L"Entrer des n° de pages, séparées par des virgules, un tiret pour un intervalle.\r\n- Ex : 2,5,8-56"},
    {205, L"Ajouter d'autres options à la ligne de commande de pdf2djvu.exe\r\n(insérées telles quelles)."},
    {57345, L"Ready"},
};

TEST(StringResources, EveryTextIsThereToTheLetter) {
    const auto strings = Strings();
    for (const auto& [id, text] : kExpected) {
        const auto found = strings.find(id);
        ASSERT_NE(found, strings.end()) << id;
        EXPECT_EQ(found->second, text) << id;
    }
}

TEST(StringResources, ThereIsNoOther) {
    for (const auto& [id, text] : Strings()) EXPECT_TRUE(kExpected.contains(id)) << id;
}

TEST(StringResources, BelongToNoLanguage) {
    const ProgramResources resources(BuiltProgram());
    for (const int block : resources.Ids(RT_STRING))
        EXPECT_EQ(resources.Languages(RT_STRING, block), std::vector<WORD>{LANG_NEUTRAL})
            << "block " << block;
}

}  // namespace
