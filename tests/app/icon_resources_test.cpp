// The icons in the built program: which there are, and the sizes that each is drawn in.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include "tests/app/installed_program.h"
#include "tests/app/program_resources.h"

namespace {

using testing::ElementsAre;

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

class IconResources : public testing::TestWithParam<int> {
protected:
    const ProgramResources resources{BuiltProgram()};
};

TEST(IconResourceNumbers, AreTheFiveOfTheWindow) {
    EXPECT_THAT(ProgramResources(BuiltProgram()).Ids(RT_GROUP_ICON), ElementsAre(128, 207, 208, 212, 213));
}

TEST_P(IconResources, AreDrawnInEverySizeThatIsShown) {
    std::vector<int> sizes;
    for (const Frame& frame : Frames(resources, GetParam())) sizes.push_back(frame.size);
    EXPECT_THAT(sizes, testing::UnorderedElementsAre(16, 20, 24, 32, 40, 48, 64, 256));
}

TEST_P(IconResources, HaveFullColourPicturesOfTheSizesTheyName) {
    for (const Frame& frame : Frames(resources, GetParam())) {
        EXPECT_EQ(frame.bitsPerPixel, 32) << frame.size;
        EXPECT_EQ(PictureWidth(resources.Bytes(RT_ICON, frame.icon)), frame.size);
    }
}

TEST_P(IconResources, BelongToNoLanguage) {
    EXPECT_THAT(resources.Languages(RT_GROUP_ICON, GetParam()), ElementsAre(LANG_NEUTRAL));
}

INSTANTIATE_TEST_SUITE_P(All, IconResources, testing::Values(128, 207, 208, 212, 213),
                         testing::PrintToStringParamName());

}  // namespace
