// Nothing but the C run-time: how small a program can be that starts like Talvenor.

#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    return 0;
}
