// Reads the list view of another process.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

namespace driver {

int RowCount(HWND list);
int SelectedRow(HWND list);        // -1: none
RECT RowArea(HWND list, int row);  // in the list's own pixels
std::wstring CellText(HWND list, int row, int column);
std::vector<std::wstring> ColumnTexts(HWND list, int column);

}  // namespace driver
