#include "tests/window/scripted_taskbar.h"

#include <shobjidl.h>

#include <string>

namespace {

ScriptedTaskbar* g_current = nullptr;

constexpr GUID kTaskbarListClass = {
    0x56FDF344, 0xFD6D, 0x11D0, {0x95, 0x8A, 0x00, 0x60, 0x97, 0xC9, 0xA0, 0x90}};
constexpr GUID kTaskbarList3 = {0xEA1AFB91, 0x9E28, 0x4B86, {0x90, 0xE9, 0x9E, 0x9F, 0x8A, 0x5E, 0xEF, 0xAF}};

void Note(std::string call) {
    if (::GetCurrentThreadId() != g_current->userInterface) call += " on a worker";
    g_current->calls.Add(std::move(call));
}

std::string Of(HWND button) {
    return button == g_current->button || !g_current->button ? "" : " of another window";
}

// Only what the program uses does anything.
class Taskbar final : public ITaskbarList3 {
public:
    HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return ++m_references; }
    ULONG WINAPI Release() override {
        if (--m_references == 0) Note("Release");
        return m_references;
    }
    HRESULT WINAPI HrInit() override {
        Note("HrInit");
        return g_current->initialisation;
    }
    HRESULT WINAPI AddTab(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI DeleteTab(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI ActivateTab(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI SetActiveAlt(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI MarkFullscreenWindow(HWND, WINBOOL) override { return E_NOTIMPL; }
    HRESULT WINAPI SetProgressValue(HWND button, ULONGLONG done, ULONGLONG all) override {
        Note("SetProgressValue " + std::to_string(done) + '/' + std::to_string(all) + Of(button));
        return g_current->showing;
    }
    HRESULT WINAPI SetProgressState(HWND button, TBPFLAG state) override {
        Note("SetProgressState " + std::to_string(state) + Of(button));
        return g_current->showing;
    }
    HRESULT WINAPI RegisterTab(HWND, HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI UnregisterTab(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI SetTabOrder(HWND, HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI SetTabActive(HWND, HWND, DWORD) override { return E_NOTIMPL; }
    HRESULT WINAPI ThumbBarAddButtons(HWND, UINT, LPTHUMBBUTTON) override { return E_NOTIMPL; }
    HRESULT WINAPI ThumbBarUpdateButtons(HWND, UINT, LPTHUMBBUTTON) override { return E_NOTIMPL; }
    HRESULT WINAPI ThumbBarSetImageList(HWND, HIMAGELIST) override { return E_NOTIMPL; }
    HRESULT WINAPI SetOverlayIcon(HWND, HICON, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT WINAPI SetThumbnailTooltip(HWND, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT WINAPI SetThumbnailClip(HWND, RECT*) override { return E_NOTIMPL; }

private:
    ULONG m_references = 0;
};

Taskbar g_taskbar;

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
    *object = nullptr;
    if (FAILED(g_current->creation)) return g_current->creation;
    g_taskbar.AddRef();
    *object = static_cast<ITaskbarList3*>(&g_taskbar);
    return S_OK;
}
