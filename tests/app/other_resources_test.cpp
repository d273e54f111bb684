// What else the built program carries: accelerators, manifest, version.
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
using testing::HasSubstr;

constexpr WORD kFrench = 0x040C;

TEST(ResourceNumbers, AreThoseOfTheDesign) {
    const ProgramResources resources(BuiltProgram());
    EXPECT_THAT(resources.Ids(RT_DIALOG), ElementsAre(100, 101, 102));
    EXPECT_THAT(resources.Ids(RT_ACCELERATOR), ElementsAre(128));
    EXPECT_THAT(resources.Ids(RT_MANIFEST), ElementsAre(1));
    EXPECT_THAT(resources.Ids(RT_VERSION), ElementsAre(1));
    EXPECT_THAT(resources.Ids(RT_MENU), ElementsAre());
    for (const int dialog : {100, 101, 102})
        EXPECT_THAT(resources.Languages(RT_DIALOG, dialog), ElementsAre(LANG_NEUTRAL)) << dialog;
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

class Manifest : public testing::Test {
protected:
    const ProgramResources resources{BuiltProgram()};
    const std::string text{resources.Bytes(RT_MANIFEST, 1)};
};

TEST_F(Manifest, IsAcceptedByTheSystem) {
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

TEST_F(Manifest, AsksForCommonControls6) {
    EXPECT_THAT(text, HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
    EXPECT_THAT(text, HasSubstr("publicKeyToken=\"6595b64144ccf1df\""));
}

TEST_F(Manifest, RunsAsWhoeverStartsIt) {
    EXPECT_THAT(text, HasSubstr("<requestedExecutionLevel level=\"asInvoker\" uiAccess=\"false\"/>"));
}

TEST_F(Manifest, KnowsTheSystemsDpi) {
    EXPECT_THAT(text,
                HasSubstr("<dpiAware xmlns=\"http://schemas.microsoft.com/SMI/2005/WindowsSettings\">true<"));
    EXPECT_THAT(text, testing::Not(HasSubstr("<dpiAwareness"))) << "a second answer to the same question";
}

TEST_F(Manifest, LeavesTheCodePageOfTheLogToTheSystem) {
    EXPECT_THAT(text, testing::Not(HasSubstr("<activeCodePage")));
}

TEST_F(Manifest, NamesWindows7To11) {
    EXPECT_THAT(text, HasSubstr("<supportedOS Id=\"{35138b9a-5d96-4fbd-8e2d-a2440225f93a}\"/>"));  // 7
    EXPECT_THAT(text, HasSubstr("<supportedOS Id=\"{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}\"/>"));  // 8
    EXPECT_THAT(text, HasSubstr("<supportedOS Id=\"{1f676c76-80e1-4239-95bb-83d0f6d0da78}\"/>"));  // 8.1
    EXPECT_THAT(text, HasSubstr("<supportedOS Id=\"{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}\"/>"));  // 10, 11
}

class VersionResource : public testing::Test {
protected:
    VersionResource() : block(::GetFileVersionInfoSizeW(BuiltProgram().c_str(), nullptr), '\0') {
        if (!::GetFileVersionInfoW(BuiltProgram().c_str(), 0, static_cast<DWORD>(block.size()), block.data()))
            driver::FailCall("GetFileVersionInfoW", ::GetLastError());
    }

    template <class Value>
    const Value* Query(const std::wstring& name) {
        void* value = nullptr;
        UINT size = 0;
        return ::VerQueryValueW(block.data(), name.c_str(), &value, &size) ? static_cast<const Value*>(value)
                                                                           : nullptr;
    }
    std::wstring String(const std::wstring& name) {
        const auto* const text = Query<wchar_t>(L"\\StringFileInfo\\040C04B0\\" + name);
        return text ? text : L"(none)";
    }

    std::string block;
};

TEST_F(VersionResource, NumbersAreOfThisVersionWithoutFlags) {
    constexpr DWORD kHigh = shipped::kMajor << 16 | shipped::kMinor;
    constexpr DWORD kLow = shipped::kBuild << 16 | shipped::kRevision;
    const auto* const fixed = Query<VS_FIXEDFILEINFO>(L"\\");
    ASSERT_NE(fixed, nullptr);
    EXPECT_EQ(fixed->dwSignature, 0xFEEF04BDu);
    EXPECT_EQ(fixed->dwProductVersionMS, kHigh);
    EXPECT_EQ(fixed->dwProductVersionLS, kLow);
    EXPECT_EQ(fixed->dwFileVersionMS, kHigh);
    EXPECT_EQ(fixed->dwFileVersionLS, kLow);
    EXPECT_EQ(fixed->dwFileFlags & fixed->dwFileFlagsMask, 0u);
    EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_APP));
}

TEST_F(VersionResource, StringsAreFrench) {
    const auto* const translation = Query<WORD>(L"\\VarFileInfo\\Translation");
    ASSERT_NE(translation, nullptr);
    constexpr WORD kUtf16 = 1200;
    EXPECT_EQ(translation[0], kFrench);
    EXPECT_EQ(translation[1], kUtf16);
    EXPECT_THAT(ProgramResources(BuiltProgram()).Languages(RT_VERSION, 1), ElementsAre(kFrench));
}

TEST_F(VersionResource, NamesTheProgramAndItsVersion) {
    EXPECT_EQ(String(L"ProductName"), L"Talvenor");
    EXPECT_EQ(String(L"ProductVersion"), shipped::kVersion);
    EXPECT_EQ(String(L"FileVersion"), shipped::kVersion);
    EXPECT_EQ(String(L"InternalName"), L"Talvenor");
    EXPECT_EQ(String(L"OriginalFilename"), L"Talvenor.exe");
    EXPECT_THAT(String(L"FileDescription"), HasSubstr(L"Talvenor"));
    EXPECT_THAT(String(L"LegalCopyright"), HasSubstr(L"MIT"));
}

}  // namespace
