// Another current folder than the one that the test program was started in.
#pragma once

#include <filesystem>

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
