// The product's owner of kernel handles, under the name that the equipment calls it by.
#pragma once
#include "base/unique_resource.h"

namespace driver {
using ::UniqueHandle;
}
