// Dropped files as the shell hands them over.
#pragma once

#include "tests/equipment/failure.h"

#include <windows.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstring>
#include <string>
#include <vector>

// What the block of a drop holds.
inline std::string DropBytes(const std::vector<std::wstring>& paths) {
    std::wstring names;
    for (const std::wstring& path : paths) names.append(path).append(1, L'\0');
    names.append(1, L'\0');
    DROPFILES header = {};
    header.pFiles = sizeof header;
    header.fWide = TRUE;
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    return bytes.append(reinterpret_cast<const char*>(names.data()), names.size() * sizeof(wchar_t));
}

// The block itself, in this process. Throws driver::Failure when there is no memory.
inline HGLOBAL DropBlock(const std::string& bytes) {
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    if (!block) driver::FailCall("GlobalAlloc", ::GetLastError());
    std::memcpy(::GlobalLock(block), bytes.data(), bytes.size());
    ::GlobalUnlock(block);
    return block;
}

class DroppedFiles {
public:
    explicit DroppedFiles(const std::vector<std::wstring>& paths) : m_block(DropBlock(DropBytes(paths))) {}
    ~DroppedFiles() { ::GlobalFree(m_block); }
    DroppedFiles(const DroppedFiles&) = delete;
    DroppedFiles& operator=(const DroppedFiles&) = delete;

    [[nodiscard]] HDROP Get() const noexcept { return reinterpret_cast<HDROP>(m_block); }

private:
    HGLOBAL m_block;
};
