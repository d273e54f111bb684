// The path functions whose order matters, written down in place of the system's: each leaves a path by which
// the next one can be seen to have got it.
#pragma once

#include "tests/support/utf8.h"

#include <windows.h>

#include <string>
#include <vector>

// For a ReplacedImport each. `steps` reads "PathRemoveExtensionW C:\in\a.pdf" and the like; clear it first.
struct PathSteps {
    static inline std::vector<std::string> steps;

    static void WINAPI RemoveExtension(LPWSTR path) {
        steps.push_back("PathRemoveExtensionW " + Utf8(path));
        ::lstrcpyW(path, L"C:\\without\\extension");
    }
    static BOOL WINAPI RemoveFileSpec(LPWSTR path) {
        steps.push_back("PathRemoveFileSpecW " + Utf8(path));
        ::lstrcpyW(path, L"C:\\folder");
        return TRUE;
    }
};
