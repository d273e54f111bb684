// A library that shows that it was loaded: it leaves a file beside itself, with ".loaded" after its own
// name. Planted under the names of system libraries; the exports are those of version.dll, so that programs
// linked with that one start.
#include <windows.h>

static void testify(HINSTANCE self) {
    wchar_t path[MAX_PATH + 8];
    GetModuleFileNameW(self, path, MAX_PATH);
    lstrcatW(path, L".loaded");
    CloseHandle(CreateFileW(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
}

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, void* reserved) {
    (void)reserved;
    if (reason == DLL_PROCESS_ATTACH) testify(self);
    return TRUE;
}

__declspec(dllexport) DWORD WINAPI GetFileVersionInfoSizeW(const wchar_t* file, DWORD* ignored) {
    (void)file;
    (void)ignored;
    return 0;
}

__declspec(dllexport) BOOL WINAPI
    GetFileVersionInfoW(const wchar_t* file, DWORD ignored, DWORD size, void* block) {
    (void)file;
    (void)ignored;
    (void)size;
    (void)block;
    return FALSE;
}

__declspec(dllexport) BOOL WINAPI
    VerQueryValueW(const void* block, const wchar_t* name, void** value, UINT* size) {
    (void)block;
    (void)name;
    (void)value;
    (void)size;
    return FALSE;
}
