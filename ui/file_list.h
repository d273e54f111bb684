// The list of PDF files: its rows, what is selected, and its two columns.
#pragma once

#include "framework/contained_window.h"

#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>

#include <string>

// Column 0 has the full paths as they were added, column 1 the durations. Rows are only ever added at the
// end, so that a batch converts the files in the order in which they came. At most one row is selected, which
// is also the one with the focus.
//
// A worker calls what its batch needs; the calls reach the list as messages.
class CFileList : public CContainedWindow {
public:
    static constexpr int kPictureSize = 16;  // edge, in pixels

    using CContainedWindow::CContainedWindow;

    // The title of column 0.
    [[nodiscard]] static std::wstring FilesTitle();

    // Makes `list` this object's, with its styles, columns and pictures, and open to dropped files.
    void Init(HWND list);

    [[nodiscard]] int RowCount() const;
    // Fills `text` with a cell, whatever its length, and returns the length.
    int GetListItemText(int row, int column, std::wstring& text) const;
    void DeleteRow(int row) const;
    void DeleteAllRows() const;

    // The open dialog; the files that are chosen in it become rows. Nothing happens when it is cancelled or
    // cannot be opened. `owner` is disabled meanwhile.
    void AddFromOpenDialog(HWND owner) const;
    // The PDF files among those dropped.
    void AddDropped(HDROP drop) const;

    [[nodiscard]] int FirstSelectedRow() const;  // -1: none
    // Makes `row` the one selected and focused row and scrolls it into view; -1 selects none.
    void SelectListItem(int row) const;
    void ClearSelection() const;
    // Selects the row that gains the focus by this change.
    void SelectFocusedRow(const NMLISTVIEW& change) const;

    void SetDurationText(int row, const std::wstring& text) const;
    void ClearDurations() const;

    // Shows the duration column, as wide as it needs, or hides it. The paths get the rest.
    void FitColumns(bool showDuration) const;

private:
    class AddAction;  // in file_list_adding.cpp

    void InitPictures() const;
    void InitColumns() const;
    void SetColumnWidth(int column, int width) const;
    [[nodiscard]] int DurationTitleWidth() const;
};
