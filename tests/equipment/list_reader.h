// Reads the list view of another process.
#pragma once
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "tests/equipment/failure.h"
#include "tests/equipment/remote_memory.h"
#include "tests/equipment/window_driver.h"

namespace driver {

inline int RowCount(HWND list) {
    return static_cast<int>(Ask(list, LVM_GETITEMCOUNT));
}

// -1: none.
inline int SelectedRow(HWND list) {
    return static_cast<int>(Ask(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

// In the list's own pixels.
inline RECT RowArea(HWND list, int row) {
    RECT area = {};
    area.left = LVIR_BOUNDS;  // the question is where the answer comes
    const RemoteMemory memory(list, sizeof area);
    memory.Write(&area, sizeof area);
    if (!Ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(memory.Address())))
        throw Failure("the list has no row " + std::to_string(row));
    memory.Read(0, &area, sizeof area);
    return area;
}

inline std::vector<std::wstring> ColumnTexts(HWND list, int column) {
    // Longer than any path the file system takes.
    constexpr std::size_t kTextLength = 33'000;
    // The request and the text it is answered with, side by side in the list's process.
    const RemoteMemory memory(list, sizeof(LVITEMW) + kTextLength * sizeof(wchar_t));
    LVITEMW request = {};
    request.iSubItem = column;
    request.pszText = reinterpret_cast<wchar_t*>(static_cast<BYTE*>(memory.Address()) + sizeof request);
    request.cchTextMax = static_cast<int>(kTextLength);
    std::vector<std::wstring> texts(static_cast<std::size_t>(RowCount(list)));
    for (std::size_t row = 0; row < texts.size(); ++row) {
        memory.Write(&request, sizeof request);
        const LRESULT length = Ask(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(memory.Address()));
        texts[row].resize(static_cast<std::size_t>(length));
        if (length > 0) memory.Read(sizeof request, texts[row].data(), texts[row].size() * sizeof(wchar_t));
    }
    return texts;
}

}  // namespace driver
