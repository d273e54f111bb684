#include "framework/update_ui.h"

void CUpdateUI::UIUpdateChildWindows() {
    for (UpdateEntry& entry : m_table) {
        if (entry.controlId == kUpdateTableEnd) return;
        if (!entry.changed) continue;
        for (const HWND container : m_containers) {
            ::EnableWindow(::GetDlgItem(container, entry.controlId), entry.enabled);
            ::CheckDlgButton(container, entry.controlId, entry.checked ? BST_CHECKED : BST_UNCHECKED);
        }
        entry.changed = false;
    }
}
