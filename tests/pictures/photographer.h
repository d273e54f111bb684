// Has pictures of a program's windows taken by the script that started us: says which window on the output,
// and waits on the input until the picture is made.
#pragma once
#include <windows.h>

#include <cstdint>
#include <cstdio>
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

class Photographer {
public:
    explicit Photographer(const driver::Program& program) : m_program(program) {}

    // The window with its frame and, where there is one, the box in front of it. Throws Failure when nobody
    // answers.
    void Take(const std::string& name, HWND window, HWND box = nullptr) const {
        WaitUntilPainted(window);
        if (box) WaitUntilPainted(box);
        AskForPicture(name, window, box);
    }
    // The same of a window that changes by itself, such as a countdown: the program is held still meanwhile.
    void TakeStill(const std::string& name, HWND window) const {
        WaitUntilPainted(window);
        ::Sleep(kDisplayDelayMs);
        const Standstill still(m_program.Process());
        AskForPicture(name, window, nullptr);
    }

private:
    static constexpr driver::Milliseconds kPaintLimit{10'000};
    // What is painted reaches the display a moment later.
    static constexpr DWORD kDisplayDelayMs = 200;

    static BOOL CALLBACK NeedsNoPainting(HWND window, LPARAM) {
        return !::GetUpdateRect(window, nullptr, FALSE);
    }
    static void WaitUntilPainted(HWND window) {
        driver::RepaintNow(window);
        const auto painted = [&] {
            return NeedsNoPainting(window, 0) && ::EnumChildWindows(window, NeedsNoPainting, 0);
        };
        if (!driver::WaitUntil(painted, kPaintLimit)) throw driver::Failure("a window does not paint itself");
    }
    // The number of the window that shows this one on the X display.
    static std::string DisplayWindow(HWND window) {
        const HANDLE number = ::GetPropW(window, L"__wine_x11_whole_window");
        if (!number) throw driver::Failure("the window is not on an X display");
        return std::to_string(reinterpret_cast<std::uintptr_t>(number));
    }
    static void AskForPicture(const std::string& name, HWND window, HWND box) {
        // A window that can be made small is not described as a box: their frames differ.
        const bool minimizes = (::GetWindowLongPtrW(window, GWL_STYLE) & WS_MINIMIZEBOX) != 0;
        std::string request = name + (minimizes ? " window " : " box ") + DisplayWindow(window);
        if (box) request += ' ' + DisplayWindow(box);
        std::puts(request.c_str());
        std::fflush(stdout);
        char answer[16] = {};
        if (!std::fgets(answer, sizeof answer, stdin))
            throw driver::Failure("nobody took the picture " + name);
    }

    const driver::Program& m_program;
};
