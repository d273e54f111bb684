// Replaces a function that the program finds by its name while it runs, for the life of a ReplacedLateImport.
#pragma once

#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <map>
#include <string>

class ReplacedLateImport {
public:
    // `function` must have the type of the function `name`. Several functions may be replaced at a time, each
    // once; the last to be replaced is restored first.
    template <class Function>
    ReplacedLateImport(const char* name, Function* function) : m_name(name) {
        s_functions[m_name] = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
        const auto previous = m_find.Original<decltype(::GetProcAddress)>();
        if (previous != &Find) s_findReal = previous;
    }
    ReplacedLateImport(const ReplacedLateImport&) = delete;
    ReplacedLateImport& operator=(const ReplacedLateImport&) = delete;
    ~ReplacedLateImport() { s_functions.erase(m_name); }

private:
    static FARPROC WINAPI Find(HMODULE library, LPCSTR name) {
        const auto replaced = s_functions.find(name);
        return replaced != s_functions.end() ? replaced->second : s_findReal(library, name);
    }

    static inline std::map<std::string, FARPROC> s_functions;
    static inline decltype(&::GetProcAddress) s_findReal = nullptr;

    const std::string m_name;
    ReplacedImport m_find{"GetProcAddress", &Find};
};
