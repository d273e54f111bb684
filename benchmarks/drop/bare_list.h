// The least that takes a drop: each file is asked for, inserted at the end, and the list is drawn once.
#pragma once

#include <windows.h>
#include <shellapi.h>

class BareList {
public:
    BareList();
    ~BareList();
    BareList(const BareList&) = delete;
    BareList& operator=(const BareList&) = delete;

    // Which files of a drop become rows: all, or only those with an odd index because the others are there
    // already. It is told so; it does not look.
    enum class Rows { All, Odd };

    void Drop(HDROP drop, Rows rows = Rows::All);
    void Paint() const;
    [[nodiscard]] int RowCount() const noexcept { return m_rowCount; }

private:
    void Insert(wchar_t* path);

    HWND m_dialog;
    HWND m_list;  // belongs to the dialog
    int m_rowCount = 0;
};
