// A folder of a test's own, removed with everything in it.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

class TemporaryFolder {
public:
    TemporaryFolder() {
        static int count = 0;
        m_path = std::filesystem::temp_directory_path() /
                 ("talvenor-test-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++count));
        std::filesystem::create_directories(m_path);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;  // a test that fails may still hold a file
        std::filesystem::remove_all(m_path, ignored);
    }

    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    [[nodiscard]] std::wstring File(const wchar_t* name) const { return (m_path / name).wstring(); }

private:
    std::filesystem::path m_path;
};
