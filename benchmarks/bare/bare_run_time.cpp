// Nothing but the C run-time: how small a program is that starts like Talvenor and does nothing.

#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    return 0;
}
