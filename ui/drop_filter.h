// Which dropped files the list takes. Rules only.
#pragma once

#include <string_view>

// Whether `extension`, with its dot, is that of a PDF; only the letters A to Z are compared without case.
[[nodiscard]] bool IsPdfExtension(std::wstring_view extension) noexcept;
