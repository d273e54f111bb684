// Version texts, read back.
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

    const std::wstring text = FormatVersion(version);
    TextReader reader(text);
    Require(reader.Take(L"Version "), "no word before the version");
    Require(reader.Take(L"ß ") == version.preRelease, "the mark of a pre-release");
    Require(
        reader.TakeNumber(1) == version.major && reader.Take(L".") && reader.TakeNumber(1) == version.minor,
        "another major or minor number");
    const bool hasBuild = reader.Take(L".");
    Require(hasBuild == (version.preRelease || version.build != 0), "a build number that does not belong");
    if (hasBuild) Require(reader.TakeNumber(1) == version.build, "another build number");
    if (version.preRelease) {
        Require(reader.Take(L" (") && reader.TakeNumber(1) == version.revision && reader.Take(L")"),
                "another revision");
    }
    Require(reader.Take(L" (64-bit)") && reader.AtEnd(), "another end");
}
