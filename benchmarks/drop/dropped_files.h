// Dropped files as the shell hands them over.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <string>
#include <vector>

class DroppedFiles {
public:
    explicit DroppedFiles(const std::vector<std::wstring>& paths);
    ~DroppedFiles();
    DroppedFiles(const DroppedFiles&) = delete;
    DroppedFiles& operator=(const DroppedFiles&) = delete;

    [[nodiscard]] HDROP Get() const noexcept { return reinterpret_cast<HDROP>(m_block); }

private:
    HGLOBAL m_block;
};
