#include "tests/pictures/photographer.h"

#include <cstdint>
#include <cstdio>

#include "tests/equipment/failure.h"
#include "tests/equipment/window_driver.h"

namespace {

constexpr driver::Milliseconds kPaintLimit{10'000};
// What is painted reaches the display a moment later.
constexpr DWORD kDisplayDelayMs = 200;

// The window that shows this one on the X display.
std::uintptr_t DisplayWindow(HWND window) {
    const HANDLE number = ::GetPropW(window, L"__wine_x11_whole_window");
    if (!number) throw driver::Failure("the window is not on an X display");
    return reinterpret_cast<std::uintptr_t>(number);
}

BOOL CALLBACK NeedsNoPainting(HWND window, LPARAM) {
    return !::GetUpdateRect(window, nullptr, FALSE);
}

bool IsPainted(HWND window) {
    return NeedsNoPainting(window, 0) && ::EnumChildWindows(window, NeedsNoPainting, 0);
}

void WaitUntilPainted(HWND window) {
    driver::RepaintNow(window);
    if (!driver::WaitUntil([&] { return IsPainted(window); }, kPaintLimit))
        throw driver::Failure("a window does not paint itself");
}

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

// A window that can be made small is not described as a box: their frames differ.
std::string Describe(HWND window) {
    const bool minimizes = (::GetWindowLongPtrW(window, GWL_STYLE) & WS_MINIMIZEBOX) != 0;
    return (minimizes ? " window " : " box ") + std::to_string(DisplayWindow(window));
}

void AskForPicture(const std::string& name, HWND window, HWND box) {
    std::string request = name + Describe(window);
    if (box) request += ' ' + std::to_string(DisplayWindow(box));
    std::puts(request.c_str());
    std::fflush(stdout);
    char answer[16] = {};
    if (!std::fgets(answer, sizeof answer, stdin)) throw driver::Failure("nobody took the picture " + name);
}

}  // namespace

void Photographer::Take(const std::string& name, HWND window, HWND box) const {
    WaitUntilPainted(window);
    if (box) WaitUntilPainted(box);
    AskForPicture(name, window, box);
}

void Photographer::TakeStill(const std::string& name, HWND window) const {
    WaitUntilPainted(window);
    ::Sleep(kDisplayDelayMs);
    const Standstill still(m_program.Process());
    AskForPicture(name, window, nullptr);
}
