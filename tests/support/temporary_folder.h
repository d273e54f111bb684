// Folders of a test's own.
#pragma once

#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <string>

// Removed with everything in it. Its name has the same length in every process.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static unsigned count = 0;
        char name[40];
        std::snprintf(name, sizeof name, "talvenor-test-%08lx-%04x", ::GetCurrentProcessId(), ++count);
        m_path = std::filesystem::temp_directory_path() / name;
        // A process of the same number may have been ended before it could remove its own.
        std::filesystem::remove_all(m_path);
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

// Another current folder than the one that the test program was started in.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& folder) : m_before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() { std::filesystem::current_path(m_before); }

private:
    const std::filesystem::path m_before;
};
