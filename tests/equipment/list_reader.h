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
    memory.Write(0, &area, sizeof area);
    if (!Ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(memory.Address())))
        throw Failure("the list has no row " + std::to_string(row));
    memory.Read(0, &area, sizeof area);
    return area;
}

// The request and the text it is answered with, side by side in the list's process: one allocation serves
// any number of cells.
class CellReader {
public:
    explicit CellReader(HWND list)
        : m_list(list), m_memory(list, sizeof(LVITEMW) + kTextLength * sizeof(wchar_t)) {}

    [[nodiscard]] std::wstring Read(int row, int column) const {
        LVITEMW request = {};
        request.iSubItem = column;
        request.pszText = reinterpret_cast<wchar_t*>(static_cast<BYTE*>(m_memory.Address()) + sizeof request);
        request.cchTextMax = static_cast<int>(kTextLength);
        m_memory.Write(0, &request, sizeof request);
        const LRESULT length = Ask(m_list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                                   reinterpret_cast<LPARAM>(m_memory.Address()));
        std::wstring text(static_cast<std::size_t>(length), L'\0');
        if (length > 0) m_memory.Read(sizeof request, text.data(), text.size() * sizeof(wchar_t));
        return text;
    }

private:
    // Longer than any path the file system takes.
    static constexpr std::size_t kTextLength = 33'000;

    HWND m_list;  // borrowed
    RemoteMemory m_memory;
};

inline std::vector<std::wstring> ColumnTexts(HWND list, int column) {
    const CellReader reader(list);
    const int rows = RowCount(list);
    std::vector<std::wstring> texts;
    for (int row = 0; row < rows; ++row) texts.push_back(reader.Read(row, column));
    return texts;
}

}  // namespace driver
