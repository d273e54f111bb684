// What the program hands to the shell: kept, and not opened.
#pragma once

#include "tests/support/replaced_imports.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <shellapi.h>

#include <string>
#include <tuple>
#include <vector>

struct ShellRequest {
    SHELLEXECUTEINFOW info;
    std::wstring verb;
    std::wstring file;
    std::wstring parameters;
};

// Requests fail with `error` when that is not 0. The system's text for an error is "erreur 5" and the like.
class ScriptedShell {
public:
    std::vector<ShellRequest> requests;
    DWORD error = ERROR_SUCCESS;

    // The parameters of each request that opened a folder.
    [[nodiscard]] std::vector<std::wstring> Folders() const {
        std::vector<std::wstring> folders;
        for (const ShellRequest& request : requests) folders.push_back(request.parameters);
        return folders;
    }

private:
    Replaced m_execute = REPLACE_IMPORT(ShellExecuteExW, [this](SHELLEXECUTEINFOW* info) -> BOOL {
        const auto text = [](LPCWSTR value) { return value ? value : L"(null)"; };
        requests.push_back({*info, text(info->lpVerb), text(info->lpFile), text(info->lpParameters)});
        ::SetLastError(error);
        return error == ERROR_SUCCESS;
    });
    Replaced m_describe = REPLACE_IMPORT(
        FormatMessageW, [](DWORD, LPCVOID, DWORD code, DWORD, LPWSTR text, DWORD size, va_list*) {
            ::lstrcpynW(text, (L"erreur " + std::to_wstring(code)).c_str(), static_cast<int>(size));
            return static_cast<DWORD>(::lstrlenW(text));
        });
};

// A request of `owner` to open `file`, with nothing but what opening takes.
inline void ExpectPlainRequest(const ShellRequest& request, HWND owner, const std::wstring& file,
                               const std::wstring& parameters) {
    const SHELLEXECUTEINFOW& info = request.info;
    EXPECT_EQ(std::tuple(request.verb, request.file, request.parameters, info.cbSize, info.hwnd, info.nShow),
              std::tuple(L"open", file, parameters, 112u, owner, SW_SHOW));
    EXPECT_EQ(std::tuple(info.fMask, info.lpDirectory, info.hInstApp, info.lpIDList, info.lpClass,
                         info.hkeyClass, info.dwHotKey, info.hMonitor, info.hProcess),
              std::tuple(0u, nullptr, nullptr, nullptr, nullptr, nullptr, 0u, nullptr, nullptr));
}
