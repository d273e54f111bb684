// Dropped files as the shell hands them over.
#pragma once

#include <windows.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

class DroppedFiles {
public:
    explicit DroppedFiles(const std::vector<std::wstring>& paths) {
        std::wstring names;
        for (const std::wstring& path : paths) names.append(path).append(1, L'\0');
        names.append(1, L'\0');
        const std::size_t nameBytes = names.size() * sizeof(wchar_t);
        m_block = ::GlobalAlloc(GHND, sizeof(DROPFILES) + nameBytes);
        if (!m_block) throw std::runtime_error("no memory for dropped files");
        auto* const header = static_cast<DROPFILES*>(::GlobalLock(m_block));
        header->pFiles = sizeof(DROPFILES);
        header->fWide = TRUE;
        std::memcpy(header + 1, names.data(), nameBytes);
        ::GlobalUnlock(m_block);
    }
    ~DroppedFiles() { ::GlobalFree(m_block); }
    DroppedFiles(const DroppedFiles&) = delete;
    DroppedFiles& operator=(const DroppedFiles&) = delete;

    [[nodiscard]] HDROP Get() const noexcept { return reinterpret_cast<HDROP>(m_block); }

private:
    HGLOBAL m_block = nullptr;
};
