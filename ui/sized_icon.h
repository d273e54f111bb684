// Icons of the resources in a size of the caller's choice.
#pragma once

#include "base/unique_resource.h"

#include <windows.h>

// Icon `id` of the resources, scaled when it has no picture of that size. Empty when it cannot be loaded.
[[nodiscard]] UniqueIcon LoadSizedIcon(UINT id, int width, int height);
