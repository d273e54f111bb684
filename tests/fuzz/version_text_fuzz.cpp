// Version texts against those that the library's numbers make.
#include "tests/fuzz/fuzz_targets.h"

#include "ui/about/version_text.h"

// Lines: major, minor, build, revision, whether it is a pre-release (0: no).
void FuzzVersionText(FuzzInput input) {
    ProductVersion version;
    version.major = input.Number();
    version.minor = input.Number();
    version.build = input.Number();
    version.revision = input.Number();
    version.preRelease = input.Number() != 0;

    std::wstring text = version.preRelease ? L"Version ß " : L"Version ";
    text += Digits(version.major, 1) + L"." + Digits(version.minor, 1);
    if (version.preRelease || version.build != 0) text += L"." + Digits(version.build, 1);
    if (version.preRelease) text += L" (" + Digits(version.revision, 1) + L")";
    Require(FormatVersion(version) == text + L" (64-bit)", "another text");
}
