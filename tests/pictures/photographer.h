// Has pictures of a program's windows taken by the script that started us: says which window on the output,
// and waits on the input until the picture is made.
#pragma once
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "tests/equipment/failure.h"
#include "tests/equipment/program.h"
#include "tests/equipment/window_driver.h"

// Holds every thread of a program still: none of its clocks goes on.
class Standstill {
public:
    explicit Standstill(HANDLE process) : m_process(process) { Call("NtSuspendProcess"); }
    ~Standstill() { Call("NtResumeProcess"); }
    Standstill(const Standstill&) = delete;
    Standstill& operator=(const Standstill&) = delete;

private:
    void Call(const char* name) const {
        using OnProcess = LONG(WINAPI*)(HANDLE);
        const auto function = reinterpret_cast<OnProcess>(
            reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), name)));
        if (!function || function(m_process) < 0) std::fprintf(stderr, "window_poser: %s failed\n", name);
    }

    HANDLE m_process;  // borrowed
};

inline void WaitUntilPainted(HWND window) {
    constexpr auto kNeedsNoPainting = [](HWND each, LPARAM) -> BOOL {
        return !::GetUpdateRect(each, nullptr, FALSE);
    };
    driver::RepaintNow(window);
    driver::Await("a window has painted itself", [&] {
        return kNeedsNoPainting(window, 0) && ::EnumChildWindows(window, kNeedsNoPainting, 0);
    });
}

// The number of the window that shows this one on the X display.
inline std::string DisplayWindow(HWND window) {
    const HANDLE number = ::GetPropW(window, L"__wine_x11_whole_window");
    if (!number) throw driver::Failure("the window is not on an X display");
    return std::to_string(reinterpret_cast<std::uintptr_t>(number));
}

// The window with its frame and, where there is one, the box in front of it. A program whose window changes
// by itself, such as a countdown, is held still meanwhile. Throws Failure when nobody answers.
inline void TakePicture(const std::string& name, HWND window, HWND box = nullptr,
                        const driver::Program* program = nullptr) {
    // What is painted reaches the display a moment later.
    constexpr DWORD kDisplayDelayMs = 200;
    WaitUntilPainted(window);
    if (box) WaitUntilPainted(box);
    std::optional<Standstill> still;
    if (program) {
        ::Sleep(kDisplayDelayMs);
        still.emplace(program->Process());
    }
    // A window that can be made small is not described as a box: their frames differ.
    const bool minimizes = (::GetWindowLongPtrW(window, GWL_STYLE) & WS_MINIMIZEBOX) != 0;
    std::string request = name + (minimizes ? " window " : " box ") + DisplayWindow(window);
    if (box) request += ' ' + DisplayWindow(box);
    std::puts(request.c_str());
    std::fflush(stdout);
    char answer[16] = {};
    if (!std::fgets(answer, sizeof answer, stdin)) throw driver::Failure("nobody took the picture " + name);
}
