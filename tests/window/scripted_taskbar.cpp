#include "tests/equipment/com_object.h"

#include "tests/window/scripted_taskbar.h"

#include "tests/support/call_text.h"

#include <shobjidl.h>

namespace {

ScriptedTaskbar* g_current = nullptr;

constexpr GUID kTaskbarListClass = {
    0x56FDF344, 0xFD6D, 0x11D0, {0x95, 0x8A, 0x00, 0x60, 0x97, 0xC9, 0xA0, 0x90}};
constexpr GUID kTaskbarList3 = {0xEA1AFB91, 0x9E28, 0x4B86, {0x90, 0xE9, 0x9E, 0x9F, 0x8A, 0x5E, 0xEF, 0xAF}};

void Note(std::string call) {
    if (::GetCurrentThreadId() != g_current->userInterface) call += " on a worker";
    g_current->calls.Add(std::move(call));
}

void NoteShown(HWND button, std::string call) {
    const bool isButton = button == g_current->button || !g_current->button;
    Note(std::move(call) + (isButton ? "" : " of another window"));
}

ITaskbarList3* CreateTaskbar() {
    static ITaskbarList3Vtbl s_methods = {};
    s_methods.HrInit = [](ITaskbarList3*) -> HRESULT {
        Note("HrInit");
        return g_current->initialisation;
    };
    s_methods.SetProgressValue = [](ITaskbarList3*, HWND button, ULONGLONG done, ULONGLONG all) -> HRESULT {
        NoteShown(button, CallText("SetProgressValue", std::to_string(done) + '/' + std::to_string(all)));
        return g_current->showing;
    };
    s_methods.SetProgressState = [](ITaskbarList3*, HWND button, TBPFLAG state) -> HRESULT {
        NoteShown(button, CallText("SetProgressState", static_cast<int>(state)));
        return g_current->showing;
    };
    return new ComObject<ITaskbarList3>(s_methods, [] { Note("Release"); });
}

}  // namespace

ScriptedTaskbar::ScriptedTaskbar() {
    g_current = this;
}

ScriptedTaskbar::~ScriptedTaskbar() {
    g_current = nullptr;
}

HRESULT WINAPI ScriptedTaskbar::Create(REFCLSID classId, LPUNKNOWN outer, DWORD context, REFIID interfaceId,
                                       LPVOID* object) {
    const bool asExpected = ::IsEqualGUID(classId, kTaskbarListClass) &&
                            ::IsEqualGUID(interfaceId, kTaskbarList3) && !outer &&
                            context == CLSCTX_INPROC_SERVER;
    Note(asExpected ? "CoCreateInstance taskbar" : "CoCreateInstance something else");
    *object = FAILED(g_current->creation) ? nullptr : CreateTaskbar();
    return g_current->creation;
}
