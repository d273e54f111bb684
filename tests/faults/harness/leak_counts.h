// What the test process, and all others together, hold of the system at this moment. GetProcessHandleCount
// and GetGuiResources say 0 under Wine; there these count by hand.
#pragma once

#include <cstddef>

[[nodiscard]] int HandleCount();
[[nodiscard]] int GdiObjectCount();
// Windows of all threads, children and those that only take messages included.
[[nodiscard]] int WindowCount();
// Memory that no other process has, in bytes.
[[nodiscard]] std::size_t PrivateBytes();

[[nodiscard]] int HandleCountOfOthers();
[[nodiscard]] int WindowCountOfOthers();
