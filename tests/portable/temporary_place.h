// The only folder in which the tests make files: one of our own in the system's temporary folder, handed to
// them as theirs. It shows what they leave behind, and is removed at the end.
#pragma once
#include <windows.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "tests/equipment/wait_until.h"

class TemporaryPlace {
public:
    TemporaryPlace() {
        std::filesystem::create_directories(m_path);
        // What we start has them from us.
        for (const wchar_t* const variable : {L"TMP", L"TEMP"})
            ::SetEnvironmentVariableW(variable, m_path.c_str());
    }
    ~TemporaryPlace() { Remove(m_path); }
    TemporaryPlace(const TemporaryPlace&) = delete;
    TemporaryPlace& operator=(const TemporaryPlace&) = delete;

    // Its contents, by name; they are removed.
    [[nodiscard]] std::vector<std::wstring> TakeLeftovers() const {
        std::vector<std::wstring> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.push_back(entry.path().filename().wstring());
        for (const std::wstring& name : names) Remove(m_path / name);
        return names;
    }

private:
    // A process that was ended keeps its files for a moment.
    static void Remove(const std::filesystem::path& path) {
        const auto isRemoved = [&] {
            std::error_code error;
            std::filesystem::remove_all(path, error);
            return !error;
        };
        static_cast<void>(driver::WaitUntil(isRemoved, driver::Milliseconds(10'000)));
    }

    const std::filesystem::path m_path = std::filesystem::temp_directory_path() /
                                         (L"talvenor-tests-" + std::to_wstring(::GetCurrentProcessId()));
};
