// The resolutions that the converter takes. Rules only.
#pragma once

#include <optional>
#include <string_view>

// What a resolution text of the user is replaced by when its edit is left: the nearest limit, 72 or 6000
// dots per inch, as a terminated text; or nothing when the text may stay. Empty text stays; text that does
// not begin with a digit counts as 0; what follows the leading digits is not looked at.
[[nodiscard]] std::optional<std::wstring_view> ClampResolution(std::wstring_view typed) noexcept;

// What an empty resolution becomes when its box is ticked, in dots per inch.
inline constexpr wchar_t kDefaultResolution[] = L"300";
