// Where the process begins and ends.

#include "ui/application.h"
#include "framework/app_module.h"
#include "ui/instance_mutex.h"

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

namespace {

// Made before wWinMain runs and closed when the process exits.
const InstanceMutex g_instanceMutex;

// Deliberate: looks for a window whose class has the mutex's name. No window has, so that the second copy
// just ends and the first stays where it is: it may be in the middle of a batch that nobody wants in front.
void BringFirstCopyForward() {
    const HWND window = ::FindWindowW(kInstanceMutexName, nullptr);
    ::SetForegroundWindow(window);
    if (::IsIconic(window)) ::ShowWindow(window, SW_SHOWNORMAL);
}

// Libraries that the system loads later come from its own folder only, never from the one the program was
// downloaded to. Systems without this call start all the same.
void LoadLibrariesFromSystemOnly() {
    constexpr DWORD kSearchSystem32 = 0x00000800;
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
    const auto setDirectories = reinterpret_cast<SetDirectories>(
        reinterpret_cast<void*>(::GetProcAddress(kernel, "SetDefaultDllDirectories")));
    if (setDirectories) setDirectories(kSearchSystem32);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPWSTR commandLine, int showCommand) {
    if (g_instanceMutex.AnotherCopyRuns()) {
        BringFirstCopyForward();
        return 0;
    }
    LoadLibrariesFromSystemOnly();
    // Without COM the folder browser does less, and all else works.
    static_cast<void>(::CoInitialize(nullptr));
    // Only the bar classes: the list, tool tips and buttons come with the manifest.
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);
    CAppModule& module = CAppModule::Instance();
    module.Init(instance);
    const int exitCode = RunMainDialog(commandLine, showCommand);
    module.Term();
    ::CoUninitialize();
    return exitCode;
}
