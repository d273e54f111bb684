// Libraries of the system that are loaded when they are first needed, by their full path in the system
// folder: what anybody has put under their name into the program's folder or the current one is never looked
// at.
#pragma once

#include <windows.h>

// `name` with its extension. The caller frees it, or keeps it for the life of the program. Null when it
// cannot be loaded.
[[nodiscard]] HMODULE LoadSystemLibrary(const wchar_t* name);

// Points `function` to the function `name` of `library`; to nothing when there is none, or no library.
template <class Function>
void FindFunction(HMODULE library, const char* name, Function*& function) noexcept {
    // By way of void*: the two function types have nothing in common.
    function = library ? reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(library, name)))
                       : nullptr;
}
