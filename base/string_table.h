// The texts of the program, kept as string resources and loaded by id at the moment of use.
#pragma once

#include <windows.h>

#include <string>

// Replaces `text` by string `id`. The resource modules are asked in order, and the first that holds the block
// of the id decides. False, with `text` as it was, when there is no such string.
bool LoadStringResource(UINT id, std::wstring& text);

// The string, or nothing at all when there is no such string.
[[nodiscard]] std::wstring LoadText(UINT id);
