// Names for the controls that have no text of their own, for a screen reader to say.
#pragma once

#include "base/com_object.h"
#include "framework/contained_window.h"
#include "framework/message_map.h"

#include <windows.h>

#include <string>
#include <vector>

struct IAccPropServices;

// Kept by the system's annotation service beside the windows. User-interface thread. What fails leaves a
// control without a name and is not reported.
class AccessibleNames final : private CMessageMap {
public:
    AccessibleNames();
    ~AccessibleNames();

    // Whether a screen reader runs. Without one no name is set.
    [[nodiscard]] static bool AreWanted() noexcept;

    // Whether it got as far as the service, which may still refuse.
    bool Name(HWND control, const std::wstring& name);
    // For a control whose text comes and goes: it has the name while it has no text, which would hide behind
    // the name.
    void NameWhileEmpty(HWND control, const std::wstring& name);

    // Takes all names back, while the controls are still there. The last call.
    void TakeBack();

private:
    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD section) override;
    void Set(HWND control, const std::wstring& name);
    void Clear(HWND control);
    bool Connect();

    UniqueCom<IAccPropServices> m_service;
    std::vector<HWND> m_named;  // borrowed
    CContainedWindow m_changing{*this, 0};
    std::wstring m_nameWhileEmpty;
};
