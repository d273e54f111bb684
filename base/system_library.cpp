#include "base/system_library.h"

#include <string>

HMODULE LoadSystemLibrary(const wchar_t* name) {
    wchar_t systemFolder[MAX_PATH] = {};
    if (::GetSystemDirectoryW(systemFolder, MAX_PATH) == 0) return nullptr;
    return ::LoadLibraryW((std::wstring(systemFolder) + L'\\' + name).c_str());
}
