#include "tests/equipment/failure.h"

#include "tests/equipment/text.h"

namespace driver {

Failure::Failure(std::wstring_view what) : std::runtime_error(ToUtf8(what)) {}

void FailCall(std::string_view call, DWORD error) {
    throw Failure(std::string(call) + " failed with error " + std::to_string(error));
}

}  // namespace driver
