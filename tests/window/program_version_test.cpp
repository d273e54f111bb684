// How the program reads its own version resource, and that a failure at any step is version 0.0.
#include "ui/about/program_version.h"

#include "tests/window/scripted_version.h"

#include "ui/about/version_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

constexpr wchar_t kVersionZero[] = L"Version 0.0 (64-bit)";

class ProgramVersionTest : public testing::Test {
protected:
    ProgramVersionTest() {
        version.fixed.dwFileVersionMS = version.fixed.dwFileVersionLS = 0x00090009;  // does not count
        version.fixed.dwProductVersionMS = 0x00020005;
        version.fixed.dwProductVersionLS = 0x00030007;
        version.fixed.dwFileFlags = VS_FF_PRERELEASE;
    }
    ScriptedVersion version;
};

TEST_F(ProgramVersionTest, IsReadFromTheProgramsResourceIntoAZeroedBlockThatIsFreed) {
    wchar_t systemFolder[MAX_PATH] = {};
    ::GetSystemDirectoryW(systemFolder, MAX_PATH);
    EXPECT_EQ(FormatVersion(ReadProgramVersion()), L"Version ß 2.5.3 (7) (64-bit)");
    EXPECT_THAT(version.calls.Calls(),
                ElementsAre("GetModuleFileNameW 259", "LoadLibraryW " + Utf8(systemFolder) + "\\version.dll",
                            "GetFileVersionInfoSizeW C:\\Outils\\Talvenor.exe", "HeapAlloc 640 zeroed",
                            "GetFileVersionInfoW C:\\Outils\\Talvenor.exe 640", "VerQueryValueW \\",
                            "HeapFree", "FreeLibrary"));
}

TEST_F(ProgramVersionTest, IsAPreReleaseByThatFlagAlone) {
    version.fixed.dwFileFlags = VS_FF_DEBUG | VS_FF_PRERELEASE | VS_FF_PRIVATEBUILD;
    EXPECT_TRUE(ReadProgramVersion().preRelease);
    version.fixed.dwFileFlags = VS_FF_DEBUG | VS_FF_PATCHED;
    EXPECT_FALSE(ReadProgramVersion().preRelease);
}

TEST_F(ProgramVersionTest, HasNumbersOfSixteenBits) {
    version.fixed.dwProductVersionMS = 0xFFFFFFFE;
    version.fixed.dwProductVersionLS = 0xFFFDFFFC;
    EXPECT_EQ(FormatVersion(ReadProgramVersion()), L"Version ß 65535.65534.65533 (65532) (64-bit)");
}

TEST_F(ProgramVersionTest, IsZeroWhenAnyStepFailsAndWhatWasTakenIsFreed) {
    for (const char* const failing :
         {"LoadLibraryW", "GetProcAddress GetFileVersionInfoSizeW", "GetProcAddress GetFileVersionInfoW",
          "GetProcAddress VerQueryValueW", "GetFileVersionInfoSizeW", "HeapAlloc", "GetFileVersionInfoW",
          "VerQueryValueW"}) {
        SCOPED_TRACE(failing);
        version.failing = failing;
        version.calls.Clear();
        EXPECT_EQ(FormatVersion(ReadProgramVersion()), kVersionZero);
        const std::vector<std::string> calls = version.calls.Calls();
        const auto count = [&](const char* call) { return std::count(calls.begin(), calls.end(), call); };
        EXPECT_EQ(count("FreeLibrary"), version.failing == "LoadLibraryW" ? 0 : 1);
        EXPECT_EQ(count("FreeLibrary of none"), 0);
        EXPECT_EQ(count("HeapFree"), version.failing == "HeapAlloc" ? 0 : count("HeapAlloc 640 zeroed"));
    }
}

// A path that begins with a backslash would be looked for in the root of whatever drive is current.
TEST_F(ProgramVersionTest, LooksForNoLibraryWithoutTheSystemsFolder) {
    const auto systemFolder = REPLACE_IMPORT(GetSystemDirectoryW, [](LPWSTR, UINT) { return 0u; });
    EXPECT_EQ(FormatVersion(ReadProgramVersion()), kVersionZero);
    EXPECT_THAT(version.calls.Calls(), ElementsAre("GetModuleFileNameW 259"));
}

TEST_F(ProgramVersionTest, IsZeroWhenTheFixedPartIsTooShort) {
    version.fixedSize = sizeof(VS_FIXEDFILEINFO) - 4;
    EXPECT_EQ(FormatVersion(ReadProgramVersion()), kVersionZero);
}

}  // namespace
