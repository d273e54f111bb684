// What the built program asks of the system that loads it, and what it lets that system protect.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include "tests/app/installed_program.h"
#include "tests/app/pe_file.h"
#include "tests/app/program_resources.h"

namespace {

class PeHeader : public testing::Test {
protected:
    const PeFile file{BuiltProgram()};
};

TEST_F(PeHeader, IsA64BitProgramWithWindows) {
    EXPECT_EQ(file.FileHeader().Machine, IMAGE_FILE_MACHINE_AMD64);
    EXPECT_EQ(file.OptionalHeader().Subsystem, IMAGE_SUBSYSTEM_WINDOWS_GUI);
    EXPECT_TRUE(file.FileHeader().Characteristics & IMAGE_FILE_EXECUTABLE_IMAGE);
    EXPECT_FALSE(file.FileHeader().Characteristics & IMAGE_FILE_DLL);
}

TEST_F(PeHeader, NeedsOnlyLibrariesThatEveryWindowsFrom7OnHas) {
    EXPECT_THAT(file.ImportedLibraries(),
                testing::UnorderedElementsAre("ADVAPI32.dll", "COMCTL32.dll", "KERNEL32.dll", "msvcrt.dll",
                                              "ole32.dll", "SHELL32.dll", "SHLWAPI.dll", "USER32.dll"));
    EXPECT_EQ(file.Directory(IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT).Size, 0u) << "libraries that load later";
}

TEST_F(PeHeader, RunsOnWindows7) {
    // 6.1 is Windows 7; a higher number would keep it from loading there.
    const auto& header = file.OptionalHeader();
    const int subsystem = header.MajorSubsystemVersion * 100 + header.MinorSubsystemVersion;
    const int system = header.MajorOperatingSystemVersion * 100 + header.MinorOperatingSystemVersion;
    EXPECT_LE(subsystem, 601);
    EXPECT_LE(system, 601);
}

TEST_F(PeHeader, LetsTheSystemMoveItAndKeepDataFromRunning) {
    constexpr WORD kHighEntropyAddresses = 0x0020;
    constexpr WORD kMovable = 0x0040;
    constexpr WORD kDataDoesNotRun = 0x0100;
    constexpr WORD kTerminalServerAware = 0x8000;
    EXPECT_EQ(file.OptionalHeader().DllCharacteristics,
              kHighEntropyAddresses | kMovable | kDataDoesNotRun | kTerminalServerAware);
    // Said to be movable, it also must say what to adjust when moved.
    EXPECT_NE(file.Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size, 0u);
    EXPECT_FALSE(file.FileHeader().Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
}

TEST_F(PeHeader, NoSectionCanBeBothWrittenAndRun) {
    constexpr DWORD kBoth = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_EXECUTE;
    int executable = 0;
    for (const IMAGE_SECTION_HEADER& section : file.Sections()) {
        const std::string name(reinterpret_cast<const char*>(section.Name), sizeof section.Name);
        EXPECT_NE(section.Characteristics & kBoth, kBoth) << name;
        if (section.Characteristics & IMAGE_SCN_MEM_EXECUTE) ++executable;
    }
    EXPECT_EQ(executable, 1);
}

TEST_F(PeHeader, CarriesNoBuildTimeAndNoSymbols) {
    EXPECT_EQ(file.FileHeader().TimeDateStamp, 0u);
    EXPECT_EQ(file.FileHeader().NumberOfSymbols, 0u);
    EXPECT_EQ(file.Directory(IMAGE_DIRECTORY_ENTRY_DEBUG).Size, 0u);
}

TEST_F(PeHeader, ExportsNothing) {
    EXPECT_EQ(file.Directory(IMAGE_DIRECTORY_ENTRY_EXPORT).Size, 0u);
}

TEST_F(PeHeader, IsSmallerThan64KilobytesBesideItsIcons) {
    const ProgramResources resources(BuiltProgram());
    std::size_t icons = 0;
    for (const int icon : resources.Ids(RT_ICON)) icons += resources.Bytes(RT_ICON, icon).size();
    EXPECT_LT(file.Size() - icons, 65'536u);
}

}  // namespace
