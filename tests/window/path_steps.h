// The path functions whose order matters, written down in place of the system's: each leaves a path by which
// the next one can be seen to have got it.
#pragma once

#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"

#include <windows.h>
#include <shlwapi.h>

#include <string>
#include <vector>

struct PathSteps {
    // "PathRemoveExtensionW C:\in\a.pdf" and the like.
    std::vector<std::string> steps;

private:
    Replaced m_extension = REPLACE_IMPORT(PathRemoveExtensionW, [this](LPWSTR path) {
        steps.push_back("PathRemoveExtensionW " + Utf8(path));
        ::lstrcpyW(path, L"C:\\without\\extension");
    });
    Replaced m_fileSpec = REPLACE_IMPORT(PathRemoveFileSpecW, [this](LPWSTR path) {
        steps.push_back("PathRemoveFileSpecW " + Utf8(path));
        ::lstrcpyW(path, L"C:\\folder");
        return TRUE;
    });
};
