// The version line of the About box. Rules only.
#pragma once

#include <cstdint>
#include <string>

struct ProductVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
    std::uint32_t revision = 0;
    bool preRelease = false;
};

// For example "Version 1.2 (64-bit)". The build number is shown when it is not 0, and always, with the
// revision, for a pre-release.
[[nodiscard]] std::wstring FormatVersion(const ProductVersion& version);
