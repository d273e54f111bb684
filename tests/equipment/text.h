// Text between Windows (UTF-16) and what tools print, record and throw (UTF-8).
#pragma once
#include <string>
#include <string_view>

namespace driver {

std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view bytes);

}  // namespace driver
