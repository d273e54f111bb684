// Keys and clicks as a person makes them: injected into the system's input, so they go to whichever window is
// in front and has the focus, and through everything on the way that posted messages leave out. Nothing else
// may take them meanwhile.
#pragma once
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "tests/app/app_fixture.h"

namespace input {

inline INPUT KeyEvent(WORD key, bool down) {
    constexpr WORD kExtended[] = {VK_HOME, VK_END, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_INSERT, VK_DELETE};
    const bool isExtended = std::ranges::find(kExtended, key) != std::end(kExtended);
    INPUT event = {};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = key;
    event.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    event.ki.dwFlags = (isExtended ? KEYEVENTF_EXTENDEDKEY : 0u) | (down ? 0u : KEYEVENTF_KEYUP);
    return event;
}

inline void Send(std::vector<INPUT> events) {
    const auto count = static_cast<UINT>(events.size());
    if (::SendInput(count, events.data(), sizeof(INPUT)) != count)
        driver::FailCall("SendInput", ::GetLastError());
}

// Presses a key while others are held, and lets all go.
inline void Press(WORD key, const std::vector<WORD>& held = {}) {
    std::vector<INPUT> events;
    for (const WORD other : held) events.push_back(KeyEvent(other, true));
    events.push_back(KeyEvent(key, true));
    events.push_back(KeyEvent(key, false));
    for (auto other = held.rbegin(); other != held.rend(); ++other) events.push_back(KeyEvent(*other, false));
    Send(std::move(events));
}

// One after another.
inline void PressAll(std::initializer_list<WORD> keys) {
    for (const WORD key : keys) Press(key);
}

// Types characters that the keyboard has.
inline void Type(const std::wstring& text) {
    for (const wchar_t character : text) {
        const SHORT found = ::VkKeyScanW(character);
        if (found == -1) throw driver::Failure(L"the keyboard has no " + std::wstring(1, character));
        // Which other keys a character takes depends on the layout.
        std::vector<WORD> held;
        if (HIBYTE(found) & 1) held.push_back(VK_SHIFT);
        if (HIBYTE(found) & 2) held.push_back(VK_CONTROL);
        if (HIBYTE(found) & 4) held.push_back(VK_MENU);
        Press(LOBYTE(found), held);
    }
}

// Brings a window to the front and waits until the keyboard is its own. Throws driver::Failure when it
// cannot.
inline void BringToFront(HWND window) {
    const auto inFront = [&] {
        if (::GetForegroundWindow() == window && driver::GuiThread(window).hwndFocus) return true;
        // Windows lets only some programs say what is in front: not one in the background, unless Alt has
        // just been pressed. Twice, for what is in front may open its menu at the first.
        if (!::SetForegroundWindow(window)) PressAll({VK_MENU, VK_MENU});
        return false;
    };
    driver::Await("the window is in front", inFront);
}

// Moves the pointer to a place in a window, in pixels, or into its middle.
inline void PointAt(HWND window, int x, int y) {
    POINT point = {x, y};
    ::ClientToScreen(window, &point);
    const auto there = [&] {
        POINT now = {};
        return ::SetCursorPos(point.x, point.y) && ::GetCursorPos(&now) && now.x == point.x &&
               now.y == point.y;
    };
    driver::Await("the pointer is there", there);
}
inline void PointAt(HWND window) {
    RECT area = {};
    ::GetClientRect(window, &area);
    PointAt(window, area.right / 2, area.bottom / 2);
}

inline void Click() {
    std::vector<INPUT> events(2);
    events[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;  // of the mouse, unless something else is said
    events[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    Send(std::move(events));
}
inline void ClickOn(HWND window) {
    PointAt(window);
    Click();
}

// Puts a text on the clipboard.
inline void CopyToClipboard(const std::wstring& text) {
    driver::Await("the clipboard can be opened", [] { return ::OpenClipboard(nullptr) != FALSE; });
    ::EmptyClipboard();
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(::GlobalLock(block), text.c_str(), bytes);
    ::GlobalUnlock(block);
    ::SetClipboardData(CF_UNICODETEXT, block);  // the clipboard's own from now on
    ::CloseClipboard();
}

}  // namespace input

class InputTest : public AppTest {
protected:
    // Starts the program and brings it to the front.
    void StartInFront() {
        Start();
        BringToFront();
    }
    void BringToFront() const { input::BringToFront(Window().Window()); }

    // The number of the control that has the focus; 0 for none.
    [[nodiscard]] int FocusedId() const {
        const HWND focus = driver::GuiThread(Window().Window()).hwndFocus;
        return focus ? ::GetDlgCtrlID(focus) : 0;
    }
    [[nodiscard]] bool GetsFocus(int controlId) const {
        return Comes([&] { return FocusedId() == controlId; });
    }
    // Gives a control the focus, by a click or as the dialog does.
    void ClickInto(int controlId) const {
        input::ClickOn(Control(controlId));
        ASSERT_TRUE(GetsFocus(controlId)) << controlId;
    }
    void FocusOn(int controlId) const {
        driver::Ask(Window().Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(controlId)), TRUE);
        ASSERT_TRUE(GetsFocus(controlId)) << controlId;
    }
    [[nodiscard]] bool Reads(int controlId, const wchar_t* text) const {
        return Comes([&] { return Text(controlId) == text; });
    }
};
