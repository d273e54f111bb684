#include "benchmarks/drop/dropped_files.h"

#include "tests/equipment/failure.h"

#include <shlobj.h>

#include <cstring>

DroppedFiles::DroppedFiles(const std::vector<std::wstring>& paths) {
    std::wstring names;
    for (const std::wstring& path : paths) names.append(path).append(1, L'\0');
    names.append(1, L'\0');
    const std::size_t nameBytes = names.size() * sizeof(wchar_t);
    m_block = ::GlobalAlloc(GHND, sizeof(DROPFILES) + nameBytes);
    if (!m_block) driver::FailCall("GlobalAlloc", ::GetLastError());
    auto* const header = static_cast<DROPFILES*>(::GlobalLock(m_block));
    header->pFiles = sizeof(DROPFILES);
    header->fWide = TRUE;
    std::memcpy(header + 1, names.data(), nameBytes);
    ::GlobalUnlock(m_block);
}

DroppedFiles::~DroppedFiles() {
    ::GlobalFree(m_block);
}
