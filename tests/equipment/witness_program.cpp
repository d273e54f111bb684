// A program that shows that it was started: it leaves a file beside itself, with ".ran" after its own name.
// Planted under the names of the system's programs.
#include <windows.h>

#include <string>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring sign = std::wstring(path) + L".ran";
    const HANDLE file =
        ::CreateFileW(sign.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return 1;
    ::CloseHandle(file);
    return 0;
}
