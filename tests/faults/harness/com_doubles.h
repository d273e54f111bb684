// Answers in the system's place: the objects of its COM libraries that the program makes.
#pragma once

#include "tests/faults/harness/call_label.h"
#include "tests/faults/harness/doubles_base.h"

#include <windows.h>
#include <objbase.h>
#include <oleacc.h>
#include <shobjidl.h>

#include <atomic>
#include <string>

struct ComDoubles : DoublesBase {
    // The part that all objects have: they count their users, and each of their methods can fail as an
    // imported function can.
    template <class Interface>
    class Object : public Interface {
    public:
        Object() { ++Current().m_comObjects; }
        Object(const Object&) = delete;
        Object& operator=(const Object&) = delete;
        virtual ~Object() { --Current().m_comObjects; }

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
        ULONG STDMETHODCALLTYPE AddRef() override { return ++m_users; }
        ULONG STDMETHODCALLTYPE Release() override {
            const ULONG left = --m_users;
            if (left == 0) delete this;
            return left;
        }

    protected:
        static bool IsToFail(const char* method) {
            return CurrentHost().Watch().Route(method, CallArguments(nullptr)) != nullptr;
        }

    private:
        std::atomic<ULONG> m_users{1};
    };

    class Taskbar final : public Object<ITaskbarList3> {
    public:
        HRESULT STDMETHODCALLTYPE HrInit() override {
            if (IsToFail("ITaskbarList3::HrInit")) return E_FAIL;
            m_ready = true;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE SetProgressValue(HWND window, ULONGLONG done, ULONGLONG all) override {
            if (IsToFail("ITaskbarList3::SetProgressValue") || !m_ready) return E_FAIL;
            Show(window, std::to_string(done) + " of " + std::to_string(all));
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE SetProgressState(HWND window, TBPFLAG state) override {
            if (IsToFail("ITaskbarList3::SetProgressState") || !m_ready) return E_FAIL;
            Show(window, state == TBPF_NOPROGRESS ? "" : "state " + std::to_string(state));
            return S_OK;
        }

        // Not for this program.
        HRESULT STDMETHODCALLTYPE AddTab(HWND) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE DeleteTab(HWND) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE ActivateTab(HWND) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE SetActiveAlt(HWND) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE MarkFullscreenWindow(HWND, BOOL) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE RegisterTab(HWND, HWND) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE UnregisterTab(HWND) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE SetTabOrder(HWND, HWND) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE SetTabActive(HWND, HWND, DWORD) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE ThumbBarAddButtons(HWND, UINT, LPTHUMBBUTTON) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE ThumbBarUpdateButtons(HWND, UINT, LPTHUMBBUTTON) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE ThumbBarSetImageList(HWND, HIMAGELIST) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE SetOverlayIcon(HWND, HICON, LPCWSTR) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE SetThumbnailTooltip(HWND, LPCWSTR) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE SetThumbnailClip(HWND, RECT*) override { return E_NOTIMPL; }

    private:
        static void Show(HWND window, const std::string& text) {
            Platform& self = Current();
            const std::string label = WindowLabel(window);
            self.Note(Request::Taskbar,
                      (label == "main" ? "" : label + ' ') + (text.empty() ? "none" : text));
            const SystemLockHold lock(self.m_lock);
            self.m_taskbarShows = text;
        }

        bool m_ready = false;
    };

    class Names final : public Object<IAccPropServices> {
    public:
        HRESULT STDMETHODCALLTYPE SetHwndPropStr(HWND window, DWORD object, DWORD child, MSAAPROPID property,
                                                 LPCWSTR text) override {
            if (IsToFail("IAccPropServices::SetHwndPropStr")) return E_FAIL;
            if (!IsName(object, child, property)) return E_INVALIDARG;
            const std::string label = WindowLabel(window);
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            self.m_names[label] = Text(text);
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE ClearHwndProps(HWND window, DWORD object, DWORD child,
                                                 const MSAAPROPID* properties, int count) override {
            if (IsToFail("IAccPropServices::ClearHwndProps")) return E_FAIL;
            if (count != 1 || !IsName(object, child, *properties)) return E_INVALIDARG;
            const std::string label = WindowLabel(window);
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            self.m_names.erase(label);
            return S_OK;
        }

        // Not for this program.
        HRESULT STDMETHODCALLTYPE SetPropValue(const BYTE*, DWORD, MSAAPROPID, VARIANT) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE SetPropServer(const BYTE*, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                                AnnoScope) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE ClearProps(const BYTE*, DWORD, const MSAAPROPID*, int) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE SetHwndProp(HWND, DWORD, DWORD, MSAAPROPID, VARIANT) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE SetHwndPropServer(HWND, DWORD, DWORD, const MSAAPROPID*, int,
                                                    IAccPropServer*, AnnoScope) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE ComposeHwndIdentityString(HWND, DWORD, DWORD, BYTE**, DWORD*) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE DecomposeHwndIdentityString(const BYTE*, DWORD, HWND*, DWORD*,
                                                              DWORD*) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE SetHmenuProp(HMENU, DWORD, MSAAPROPID, VARIANT) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE SetHmenuPropStr(HMENU, DWORD, MSAAPROPID, LPCWSTR) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE SetHmenuPropServer(HMENU, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                                     AnnoScope) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE ClearHmenuProps(HMENU, DWORD, const MSAAPROPID*, int) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE ComposeHmenuIdentityString(HMENU, DWORD, BYTE**, DWORD*) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE DecomposeHmenuIdentityString(const BYTE*, DWORD, HMENU*, DWORD*) override {
            return E_NOTIMPL;
        }

    private:
        static bool IsName(DWORD object, DWORD child, const MSAAPROPID& property) {
            return object == static_cast<DWORD>(OBJID_CLIENT) && child == CHILDID_SELF &&
                   property == PROPID_ACC_NAME;
        }
    };

    static HRESULT WINAPI CoCreateInstance(REFCLSID classId, LPUNKNOWN outer, DWORD context,
                                           REFIID interfaceId, LPVOID* object) {
        *object = nullptr;
        if (outer || context != CLSCTX_INPROC_SERVER) return E_INVALIDARG;
        if (classId == CLSID_TaskbarList && interfaceId == IID_ITaskbarList3) {
            *object = static_cast<ITaskbarList3*>(new Taskbar);
        } else if (classId == CLSID_AccPropServices && interfaceId == IID_IAccPropServices) {
            *object = static_cast<IAccPropServices*>(new Names);
        }
        return *object ? S_OK : REGDB_E_CLASSNOTREG;
    }
};
