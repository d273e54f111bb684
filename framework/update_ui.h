// Refreshing the enabled and checked state of controls when the thread is idle.
#pragma once

#include <windows.h>

#include <span>
#include <vector>

// One control whose state is kept. A table ends with kUpdateTableEnd.
struct UpdateEntry {
    WORD controlId;
    bool enabled;
    bool checked;
    bool changed;  // since the last pass
};

inline constexpr WORD kUpdateTableEnd = 0xFFFF;

// The mixin of a window that keeps such a table.
class CUpdateUI {
protected:
    // `table`, with its end mark, is borrowed.
    explicit CUpdateUI(std::span<UpdateEntry> table) noexcept : m_table(table) {}
    ~CUpdateUI() = default;

    // The controls of the table are looked for among the children of every container.
    void UIAddChildWindowContainer(HWND container) { m_containers.push_back(container); }

    // Brings every changed control into its state.
    void UIUpdateChildWindows();

private:
    std::span<UpdateEntry> m_table;
    std::vector<HWND> m_containers;
};
