// The version line of the About dialog.
#include "ui/about/version_text.h"

#include <gtest/gtest.h>

namespace {

struct VersionCase {
    const char* name;
    ProductVersion version;
    const wchar_t* text;
};

constexpr VersionCase kVersions[] = {
    {"ReleaseWithoutABuild", {1, 2, 0, 1, false}, L"Version 1.2 (64-bit)"},
    {"ReleaseWithABuild", {2, 5, 3, 7, false}, L"Version 2.5.3 (64-bit)"},
    {"ReleaseWithTheFirstBuild", {2, 5, 1, 0, false}, L"Version 2.5.1 (64-bit)"},
    {"PreRelease", {2, 5, 3, 7, true}, L"Version ß 2.5.3 (7) (64-bit)"},
    {"PreReleaseWithoutABuild", {1, 2, 0, 1, true}, L"Version ß 1.2.0 (1) (64-bit)"},
    {"PreReleaseWithoutARevision", {1, 2, 3, 0, true}, L"Version ß 1.2.3 (0) (64-bit)"},
    {"PreReleaseOfZeros", {.preRelease = true}, L"Version ß 0.0.0 (0) (64-bit)"},
    {"NothingKnown", {}, L"Version 0.0 (64-bit)"},
    {"RevisionOnly", {0, 0, 0, 9, false}, L"Version 0.0 (64-bit)"},
    {"NoPadding", {10, 20, 30, 40, true}, L"Version ß 10.20.30 (40) (64-bit)"},
    {"LargestRelease", {65535, 65535, 65535, 65535, false}, L"Version 65535.65535.65535 (64-bit)"},
    {"LargestPreRelease",
     {65535, 65535, 65535, 65535, true},
     L"Version ß 65535.65535.65535 (65535) (64-bit)"},
};

TEST(FormatVersion, ShowsWhatIdentifiesTheVersion) {
    for (const VersionCase& row : kVersions) EXPECT_EQ(FormatVersion(row.version), row.text) << row.name;
}

}  // namespace
