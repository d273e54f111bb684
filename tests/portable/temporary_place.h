// The only folder in which the tests make files: one of our own in the system's temporary folder, handed to
// them as theirs. It shows what they leave behind, and is removed at the end.
#pragma once
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/equipment/file_bytes.h"

class TemporaryPlace {
public:
    TemporaryPlace() {
        std::filesystem::create_directories(m_path);
        // What we start has them from us.
        for (const wchar_t* const variable : {L"TMP", L"TEMP"})
            ::SetEnvironmentVariableW(variable, m_path.c_str());
    }
    ~TemporaryPlace() { driver::RemoveAll(m_path); }
    TemporaryPlace(const TemporaryPlace&) = delete;
    TemporaryPlace& operator=(const TemporaryPlace&) = delete;

    // Its contents, by name; they are removed.
    [[nodiscard]] std::vector<std::wstring> TakeLeftovers() const {
        std::vector<std::wstring> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.push_back(entry.path().filename().wstring());
        for (const std::wstring& name : names) driver::RemoveAll(m_path / name);
        return names;
    }

private:
    const std::filesystem::path m_path = std::filesystem::temp_directory_path() /
                                         (L"talvenor-tests-" + std::to_wstring(::GetCurrentProcessId()));
};
