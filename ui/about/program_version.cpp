#include "ui/about/program_version.h"

#include "framework/app_module.h"
#include "base/heap_block.h"
#include "base/system_library.h"

#include <windows.h>

namespace {

// The three calls on version resources. Linked in the ordinary way, their library alone of all we use would
// be taken from the program's folder, where anybody may have put a file of its name.
class VersionLibrary {
public:
    VersionLibrary() : m_library(LoadSystemLibrary(L"version.dll")) {
        FindFunction(m_library, "GetFileVersionInfoSizeW", getSize);
        FindFunction(m_library, "GetFileVersionInfoW", getInfo);
        FindFunction(m_library, "VerQueryValueW", queryValue);
    }
    VersionLibrary(const VersionLibrary&) = delete;
    VersionLibrary& operator=(const VersionLibrary&) = delete;
    ~VersionLibrary() {
        if (m_library) ::FreeLibrary(m_library);
    }

    [[nodiscard]] bool IsComplete() const noexcept { return getSize && getInfo && queryValue; }

    decltype(&::GetFileVersionInfoSizeW) getSize = nullptr;
    decltype(&::GetFileVersionInfoW) getInfo = nullptr;
    decltype(&::VerQueryValueW) queryValue = nullptr;

private:
    const HMODULE m_library;
};

}  // namespace

ProductVersion ReadProgramVersion() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(CAppModule::Instance().ResourceInstance(), path, MAX_PATH - 1);

    const VersionLibrary library;
    if (!library.IsComplete()) return {};
    DWORD ignored = 0;
    const DWORD size = library.getSize(path, &ignored);
    if (size == 0) return {};  // a system may succeed in reading nothing into nothing
    const HeapBlock block(size);
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT fixedSize = 0;
    const bool found = block.Get() && library.getInfo(path, 0, size, block.Get()) &&
                       library.queryValue(block.Get(), L"\\", reinterpret_cast<void**>(&fixed), &fixedSize) &&
                       fixed && fixedSize >= sizeof *fixed;
    if (!found) return {};
    return {.major = HIWORD(fixed->dwProductVersionMS),
            .minor = LOWORD(fixed->dwProductVersionMS),
            .build = HIWORD(fixed->dwProductVersionLS),
            .revision = LOWORD(fixed->dwProductVersionLS),
            .preRelease = (fixed->dwFileFlags & VS_FF_PRERELEASE) != 0};
}
