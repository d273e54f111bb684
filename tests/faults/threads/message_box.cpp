#include "tests/faults/threads/message_box.h"

#include "tests/equipment/window_driver.h"
#include "tests/faults/harness/user.h"

#include <array>

namespace {

struct Search {
    const std::wstring& part;
    HWND found;
};

BOOL CALLBACK LookAtLabel(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    std::array<wchar_t, 1000> text{};
    User::Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    if (std::wstring(text.data()).find(search.part) == std::wstring::npos) return TRUE;
    search.found = ::GetParent(window);
    return FALSE;
}

BOOL CALLBACK LookAtWindow(HWND window, LPARAM parameter) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    std::array<wchar_t, 16> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    const bool isDialog = owner == ::GetCurrentProcessId() && std::wstring(name.data()) == L"#32770";
    if (isDialog && ::IsWindowVisible(window)) ::EnumChildWindows(window, &LookAtLabel, parameter);
    return reinterpret_cast<Search*>(parameter)->found == nullptr;
}

}  // namespace

HWND WaitForMessageBox(const std::wstring& part) {
    Search search = {part, nullptr};
    WaitUntil("a message box is shown", [&] {
        ::EnumWindows(&LookAtWindow, reinterpret_cast<LPARAM>(&search));
        return search.found != nullptr;
    });
    return search.found;
}

void AnswerMessageBox(HWND box, int buttonId) {
    HWND button = driver::FindControl(box, buttonId);
    if (!button) button = ::FindWindowExW(box, nullptr, L"Button", nullptr);  // the only one, of any number
    ::PostMessageW(button, BM_CLICK, 0, 0);
    WaitUntil("a message box is gone", [&] { return !::IsWindow(box); });
}
