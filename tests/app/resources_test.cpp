// What the built program carries besides its dialogs: which resources, in which languages, icons,
// accelerators, manifest and version.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <map>

#include "tests/app/installed_program.h"
#include "tests/app/program_resources.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/shipped_version.h"

namespace {

using testing::ElementsAre;

constexpr WORD kFrench = 0x040C;
constexpr int kIcons[] = {128, 207, 208, 212, 213};

TEST(ResourceNumbers, AreFixedAndOfNoLanguage) {
    const ProgramResources resources(BuiltProgram());
    EXPECT_THAT(resources.Ids(RT_DIALOG), ElementsAre(100, 101, 102));
    EXPECT_THAT(resources.Ids(RT_GROUP_ICON), testing::ElementsAreArray(kIcons));
    EXPECT_THAT(resources.Ids(RT_STRING), ElementsAre(9, 10, 13, 3585));
    EXPECT_THAT(resources.Ids(RT_ACCELERATOR), ElementsAre(128));
    EXPECT_THAT(resources.Ids(RT_MANIFEST), ElementsAre(1));
    EXPECT_THAT(resources.Ids(RT_VERSION), ElementsAre(1));
    EXPECT_THAT(resources.Ids(RT_MENU), ElementsAre());
    for (const wchar_t* const type : {RT_DIALOG, RT_GROUP_ICON, RT_STRING})
        for (const int id : resources.Ids(type))
            EXPECT_THAT(resources.Languages(type, id), ElementsAre(LANG_NEUTRAL)) << id;
}

struct Frame {
    int size = 0;
    int bitsPerPixel = 0;
    int icon = 0;  // the number of the frame's own resource
};

std::vector<Frame> Frames(const ProgramResources& resources, int group) {
    ByteReader reader(resources.Bytes(RT_GROUP_ICON, group));
    reader.Skip(2 * sizeof(WORD));  // reserved, type
    std::vector<Frame> frames(reader.Take<WORD>());
    for (Frame& frame : frames) {
        const int width = reader.Take<BYTE>();
        const int height = reader.Take<BYTE>();
        EXPECT_EQ(width, height);
        frame.size = width == 0 ? 256 : width;     // one byte holds no 256
        reader.Skip(sizeof(WORD) + sizeof(WORD));  // colours, reserved, planes
        frame.bitsPerPixel = reader.Take<WORD>();
        reader.Skip(sizeof(DWORD));  // bytes
        frame.icon = reader.Take<WORD>();
    }
    return frames;
}

// As the picture itself says it: a PNG file or a bitmap's header.
int PictureWidth(std::string_view bytes) {
    if (bytes.substr(1, 3) == "PNG") {
        const auto at = [&](int i) { return static_cast<unsigned char>(bytes[static_cast<std::size_t>(i)]); };
        constexpr int kWidthInHeader = 16;  // big-endian; two bytes are enough here
        return at(kWidthInHeader + 2) * 256 + at(kWidthInHeader + 3);
    }
    ByteReader reader(bytes);
    return static_cast<int>(reader.Take<BITMAPINFOHEADER>().biWidth);
}

TEST(IconResources, AreDrawnInFullColourInEverySizeThatIsShown) {
    const ProgramResources resources(BuiltProgram());
    for (const int icon : kIcons) {
        SCOPED_TRACE(icon);
        std::vector<int> sizes;
        for (const Frame& frame : Frames(resources, icon)) {
            sizes.push_back(frame.size);
            EXPECT_EQ(frame.bitsPerPixel, 32) << frame.size;
            EXPECT_EQ(PictureWidth(resources.Bytes(RT_ICON, frame.icon)), frame.size);
        }
        EXPECT_THAT(sizes, testing::UnorderedElementsAre(16, 20, 24, 32, 40, 48, 64, 256));
    }
}

TEST(AcceleratorResource, HasSevenKeysForTheFourEditCommands) {
    const ProgramResources resources(BuiltProgram());
    ByteReader reader(resources.Bytes(RT_ACCELERATOR, 128));
    std::map<int, int> keysOfCommand;
    bool last = false;
    int entries = 0;
    while (!last && !reader.AtEnd()) {
        constexpr WORD kLast = 0x80;
        const auto flags = reader.Take<WORD>();
        reader.Skip(sizeof(WORD));  // key
        ++keysOfCommand[reader.Take<WORD>()];
        reader.Skip(sizeof(WORD));  // padding
        last = (flags & kLast) != 0;
        EXPECT_TRUE(flags & FVIRTKEY);
        ++entries;
    }
    EXPECT_TRUE(last);
    EXPECT_EQ(entries, 7);
    // Copy, cut and paste by two keys each, undo by one.
    EXPECT_THAT(keysOfCommand, ElementsAre(std::pair(57634, 2), std::pair(57635, 2), std::pair(57637, 2),
                                           std::pair(57643, 1)));
}

TEST(ManifestResource, IsAcceptedByTheSystem) {
    ACTCTXW context = {};
    context.cbSize = sizeof context;
    const std::wstring program = BuiltProgram();
    context.lpSource = program.c_str();
    context.lpResourceName = MAKEINTRESOURCEW(1);
    context.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    const HANDLE created = ::CreateActCtxW(&context);
    ASSERT_NE(created, INVALID_HANDLE_VALUE) << ::GetLastError();
    ::ReleaseActCtx(created);
}

TEST(VersionResource, IsOfThisVersionWithoutFlagsAndFrench) {
    std::string block(::GetFileVersionInfoSizeW(BuiltProgram().c_str(), nullptr), '\0');
    ASSERT_TRUE(
        ::GetFileVersionInfoW(BuiltProgram().c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    void* value = nullptr;
    UINT size = 0;
    ASSERT_TRUE(::VerQueryValueW(block.data(), L"\\", &value, &size));
    const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(value);
    constexpr DWORD kHigh = shipped::kMajor << 16 | shipped::kMinor;
    constexpr DWORD kLow = shipped::kBuild << 16 | shipped::kRevision;
    EXPECT_EQ(fixed.dwSignature, 0xFEEF04BDu);
    EXPECT_EQ(fixed.dwProductVersionMS, kHigh);
    EXPECT_EQ(fixed.dwProductVersionLS, kLow);
    EXPECT_EQ(fixed.dwFileVersionMS, kHigh);
    EXPECT_EQ(fixed.dwFileVersionLS, kLow);
    EXPECT_EQ(fixed.dwFileFlags & fixed.dwFileFlagsMask, 0u);
    EXPECT_EQ(fixed.dwFileType, static_cast<DWORD>(VFT_APP));

    ASSERT_TRUE(::VerQueryValueW(block.data(), L"\\VarFileInfo\\Translation", &value, &size));
    const auto* const translation = static_cast<const WORD*>(value);
    constexpr WORD kUtf16 = 1200;
    EXPECT_EQ(translation[0], kFrench);
    EXPECT_EQ(translation[1], kUtf16);
    EXPECT_THAT(ProgramResources(BuiltProgram()).Languages(RT_VERSION, 1), ElementsAre(kFrench));
    // Its strings are looked at in the package.
}

}  // namespace
