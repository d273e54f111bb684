// Code of ours in front of functions that the program calls: each call is first shown to the watch of the
// program that lives, which may send it elsewhere.
#pragma once

#include <string>

// The code to be called in the place of the function `name`, the same for all lives of the program. Its calls
// go to the last `target` unless the watch has another function for them. Arguments are whole numbers and
// pointers only: floating-point ones do not arrive.
[[nodiscard]] void* WatchedCode(const std::string& name, void* target);
