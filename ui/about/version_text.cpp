#include "ui/about/version_text.h"

#include "base/decimal.h"

std::wstring FormatVersion(const ProductVersion& version) {
    // U+00DF is meant as a beta sign.
    std::wstring text = version.preRelease ? L"Version \u00DF " : L"Version ";
    AppendDecimal(text, version.major);
    text += L'.';
    AppendDecimal(text, version.minor);
    if (version.preRelease || version.build != 0) {
        text += L'.';
        AppendDecimal(text, version.build);
    }
    if (version.preRelease) {
        text += L" (";
        AppendDecimal(text, version.revision);
        text += L')';
    }
    text += L" (64-bit)";
    return text;
}
