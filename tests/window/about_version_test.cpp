// How the program reads its own version resource, and that a failure at any step is version 0.0.
#include "tests/support/utf8.h"
#include "tests/window/scripted_version.h"

#include "ui/about/program_version.h"
#include "ui/about/version_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

// As this system writes it.
std::string SystemFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetSystemDirectoryW(path, MAX_PATH);
    return Utf8(path);
}

class ProgramVersionTest : public testing::Test {
protected:
    ProgramVersionTest() {
        version.fixed.dwProductVersionMS = 0x00020005;
        version.fixed.dwProductVersionLS = 0x00030007;
        version.fixed.dwFileFlags = VS_FF_PRERELEASE;
    }
    ScriptedVersion version;
};

TEST_F(ProgramVersionTest, IsReadFromTheProgramsResourceIntoAZeroedBlockThatIsFreed) {
    const ProductVersion read = ReadProgramVersion();
    EXPECT_EQ(read.major, 2u);
    EXPECT_EQ(read.minor, 5u);
    EXPECT_EQ(read.build, 3u);
    EXPECT_EQ(read.revision, 7u);
    EXPECT_TRUE(read.preRelease);
    EXPECT_THAT(version.calls.Calls(),
                ElementsAre("GetModuleFileNameW 259", "LoadLibraryW " + SystemFolder() + "\\version.dll",
                            "GetFileVersionInfoSizeW C:\\Outils\\Talvenor.exe", "HeapAlloc 640 zeroed",
                            "GetFileVersionInfoW C:\\Outils\\Talvenor.exe 640", "VerQueryValueW \\",
                            "HeapFree", "FreeLibrary"));
}

class ProgramVersionFailureTest : public ProgramVersionTest,
                                  public testing::WithParamInterface<const char*> {};

TEST_P(ProgramVersionFailureTest, IsVersionZero) {
    version.failing = GetParam();
    EXPECT_EQ(FormatVersion(ReadProgramVersion()), L"Version 0.0 (64-bit)");
    const std::vector<std::string> calls = version.calls.Calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "FreeLibrary"),
              version.failing == "LoadLibraryW" ? 0 : 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "FreeLibrary of none"), 0);
    EXPECT_EQ(
        std::count(calls.begin(), calls.end(), "HeapFree"),
        version.failing == "HeapAlloc" ? 0 : std::count(calls.begin(), calls.end(), "HeapAlloc 640 zeroed"));
}

INSTANTIATE_TEST_SUITE_P(All, ProgramVersionFailureTest,
                         testing::Values("LoadLibraryW", "GetProcAddress GetFileVersionInfoSizeW",
                                         "GetProcAddress GetFileVersionInfoW",
                                         "GetProcAddress VerQueryValueW", "GetFileVersionInfoSizeW",
                                         "HeapAlloc", "GetFileVersionInfoW", "VerQueryValueW"),
                         [](const auto& row) {
                             std::string name = row.param;
                             std::replace(name.begin(), name.end(), ' ', '_');
                             return name;
                         });

// A path that begins with a backslash would be looked for in the root of whatever drive is current.
TEST_F(ProgramVersionTest, WithoutTheSystemsFolderNoLibraryIsLookedFor) {
    const ReplacedImport systemFolder(
        "GetSystemDirectoryW", +[](LPWSTR, UINT) WINAPI -> UINT { return 0; });
    EXPECT_EQ(FormatVersion(ReadProgramVersion()), L"Version 0.0 (64-bit)");
    EXPECT_THAT(version.calls.Calls(), ElementsAre("GetModuleFileNameW 259"));
}

TEST_F(ProgramVersionTest, AFixedPartThatIsTooShortIsVersionZero) {
    version.fixedSize = sizeof(VS_FIXEDFILEINFO) - 4;
    EXPECT_EQ(FormatVersion(ReadProgramVersion()), L"Version 0.0 (64-bit)");
}

}  // namespace
