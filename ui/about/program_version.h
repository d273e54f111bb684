// The version of the running program, from its own version resource.
#pragma once

#include "ui/about/version_text.h"

// The product version (not the file version) and the pre-release flag. All zero when the resource cannot be
// read.
[[nodiscard]] ProductVersion ReadProgramVersion();
