// Keeps a Wine session's desktop alive while scripts run tests: without a process that uses it, the desktop
// ends after each test and the next one waits over a second for a new one. Says "ready" when the desktop is
// there, and ends when its input does, that is with the script that started it.
#include <windows.h>

#include <cstdio>

int main() {
    // The hidden window of a predefined class is enough to be a user of the desktop.
    if (!::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr)) {
        std::fputs("desktop_holder: no window can be created\n", stderr);
        return 1;
    }
    std::puts("ready");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
