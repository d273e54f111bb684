#include "tests/app/real_input.h"

#include <algorithm>
#include <cstring>

#include "tests/equipment/failure.h"
#include "tests/equipment/wait_until.h"

namespace input {
namespace {

constexpr driver::Milliseconds kFrontLimit{20'000};

bool IsExtended(WORD key) {
    constexpr WORD kExtended[] = {VK_HOME, VK_END, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_INSERT, VK_DELETE};
    return std::ranges::find(kExtended, key) != std::end(kExtended);
}

INPUT KeyEvent(WORD key, bool down) {
    INPUT event = {};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = key;
    event.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    event.ki.dwFlags = (IsExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0u) | (down ? 0u : KEYEVENTF_KEYUP);
    return event;
}

INPUT MouseEvent(DWORD flags) {
    INPUT event = {};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = flags;
    return event;
}

void Send(std::vector<INPUT> events) {
    const auto count = static_cast<UINT>(events.size());
    if (::SendInput(count, events.data(), sizeof(INPUT)) != count)
        driver::FailCall("SendInput", ::GetLastError());
}

}  // namespace

void BringToFront(HWND window) {
    const auto inFront = [&] {
        if (::GetForegroundWindow() == window && Focus(window) != nullptr) return true;
        // Windows lets only some programs say what is in front: not one in the background, unless Alt has
        // just been pressed. Twice, for what is in front may open its menu at the first.
        if (!::SetForegroundWindow(window)) {
            Press(VK_MENU);
            Press(VK_MENU);
        }
        return false;
    };
    if (!driver::WaitUntil(inFront, kFrontLimit))
        throw driver::Failure("the window does not come to the front");
}

HWND Focus(HWND window) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info) ? info.hwndFocus : nullptr;
}

void Press(WORD key, const std::vector<WORD>& held) {
    std::vector<INPUT> events;
    for (const WORD other : held) events.push_back(KeyEvent(other, true));
    events.push_back(KeyEvent(key, true));
    events.push_back(KeyEvent(key, false));
    for (auto other = held.rbegin(); other != held.rend(); ++other) events.push_back(KeyEvent(*other, false));
    Send(std::move(events));
}

void PressAll(std::initializer_list<WORD> keys) {
    for (const WORD key : keys) Press(key);
}

void Type(const std::wstring& text) {
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

void PointAt(HWND window) {
    RECT area = {};
    ::GetClientRect(window, &area);
    PointAt(window, area.right / 2, area.bottom / 2);
}

void PointAt(HWND window, int x, int y) {
    POINT point = {x, y};
    ::ClientToScreen(window, &point);
    const auto there = [&] {
        POINT now = {};
        return ::SetCursorPos(point.x, point.y) && ::GetCursorPos(&now) && now.x == point.x &&
               now.y == point.y;
    };
    if (!driver::WaitUntil(there, kFrontLimit)) throw driver::Failure("the pointer does not move");
}

void Click() {
    Send({MouseEvent(MOUSEEVENTF_LEFTDOWN), MouseEvent(MOUSEEVENTF_LEFTUP)});
}

void ClickOn(HWND window) {
    PointAt(window);
    Click();
}

void CopyToClipboard(const std::wstring& text) {
    if (!driver::WaitUntil([] { return ::OpenClipboard(nullptr) != FALSE; }, kFrontLimit))
        driver::FailCall("OpenClipboard", ::GetLastError());
    ::EmptyClipboard();
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(::GlobalLock(block), text.c_str(), bytes);
    ::GlobalUnlock(block);
    ::SetClipboardData(CF_UNICODETEXT, block);  // the clipboard's own from now on
    ::CloseClipboard();
}

}  // namespace input
