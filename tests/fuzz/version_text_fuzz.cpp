// Version texts against those that the library's numbers make.
#include "tests/fuzz/fuzz_targets.h"

#include "tests/fuzz/fuzz_input.h"
#include "ui/about/version_text.h"

// Lines: major, minor, build, revision, whether it is a pre-release (0: no).
void FuzzVersionText(std::string_view input) {
    FuzzInput values(input);
    ProductVersion version;
    version.major = values.Number();
    version.minor = values.Number();
    version.build = values.Number();
    version.revision = values.Number();
    version.preRelease = values.Number() != 0;

    std::wstring text = version.preRelease ? L"Version ß " : L"Version ";
    text += Digits(version.major, 1) + L"." + Digits(version.minor, 1);
    if (version.preRelease || version.build != 0) text += L"." + Digits(version.build, 1);
    if (version.preRelease) text += L" (" + Digits(version.revision, 1) + L")";
    Require(FormatVersion(version) == text + L" (64-bit)", "another text");
}
