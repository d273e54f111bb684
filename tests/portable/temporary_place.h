// The only folder in which the tests make files: one of our own in the system's temporary folder, handed to
// them as theirs. It shows what they leave behind, and is removed at the end.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_tree.h"
#include "tests/equipment/wait_until.h"

class TemporaryPlace {
public:
    TemporaryPlace() {
        wchar_t systemsOwn[MAX_PATH + 1] = {};
        if (!::GetTempPathW(MAX_PATH + 1, systemsOwn)) driver::FailCall("GetTempPathW", ::GetLastError());
        m_path = systemsOwn + (L"talvenor-tests-" + std::to_wstring(::GetCurrentProcessId()));
        driver::MakeFolders(m_path);
        // What we start has them from us.
        ::SetEnvironmentVariableW(L"TMP", m_path.c_str());
        ::SetEnvironmentVariableW(L"TEMP", m_path.c_str());
    }
    ~TemporaryPlace() { Remove(m_path); }
    TemporaryPlace(const TemporaryPlace&) = delete;
    TemporaryPlace& operator=(const TemporaryPlace&) = delete;

    // Its contents, by name; they are removed.
    [[nodiscard]] std::vector<std::wstring> TakeLeftovers() const {
        std::vector<std::wstring> names = driver::NamesIn(m_path);
        for (const std::wstring& name : names) Remove(m_path + L'\\' + name);
        return names;
    }

private:
    // A process that was ended keeps its files for a moment.
    static void Remove(const std::wstring& path) {
        static_cast<void>(
            driver::WaitUntil([&] { return driver::RemoveTree(path); }, driver::Milliseconds(10'000)));
    }

    std::wstring m_path;
};
