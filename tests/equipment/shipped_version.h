// The version that Talvenor.exe carries, for all tests that expect it. Written down here once more,
// independently of the build, so that a wrong version resource is noticed: a new version changes
// CMakeLists.txt and this file.
#pragma once

namespace shipped {

inline constexpr unsigned kMajor = 1;
inline constexpr unsigned kMinor = 2;
inline constexpr unsigned kBuild = 0;
inline constexpr unsigned kRevision = 1;
inline constexpr wchar_t kVersion[] = L"1.2.0.1";
inline constexpr wchar_t kAboutLine[] = L"Version 1.2 (64-bit)";  // as the About box shows it

}  // namespace shipped
