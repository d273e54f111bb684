// Answers in the system's place: the objects of its COM libraries that the program makes. They are written as
// C sees them, each a table of functions, because the program calls a few of many: those that are not given
// here are null, and a call of one ends the process.
#define CINTERFACE

#include "tests/faults/harness/call_label.h"
#include "tests/faults/harness/doubles.h"

#include <objbase.h>
#include <oleacc.h>
#include <shobjidl.h>

namespace {

template <class Interface>
struct Object : Interface {
    Object(decltype(Interface::lpVtbl) methods, std::atomic<int>& all) : m_all(all) {
        this->lpVtbl = methods;
        ++m_all;
    }

    static ULONG AddRef(Interface* self) { return ++static_cast<Object*>(self)->m_users; }
    static ULONG Release(Interface* self) {
        auto* const object = static_cast<Object*>(self);
        const ULONG left = --object->m_users;
        if (left == 0) {
            --object->m_all;
            delete object;
        }
        return left;
    }

    bool isReady = false;

private:
    std::atomic<ULONG> m_users{1};
    std::atomic<int>& m_all;  // objects that there are
};

// A method can fail as an imported function can.
bool IsToFail(const char* method) {
    return CurrentHost().Watch().Route(method, CallArguments(nullptr)) != nullptr;
}

// Whether it is the name of a control that is set.
bool IsName(DWORD object, DWORD child, const MSAAPROPID& property) {
    return object == static_cast<DWORD>(OBJID_CLIENT) && child == CHILDID_SELF && property == PROPID_ACC_NAME;
}

}  // namespace

void Platform::Show(HWND window, const std::string& text) {
    const std::string label = WindowLabel(window);
    Note("taskbar", (label == "main" ? "" : label + ' ') + (text.empty() ? "none" : text));
    const SystemLockHold lock = Lock();
    m_taskbarShows = text;
}

void Platform::AddObjects(Doubles& doubles) {
    using Taskbar = Object<ITaskbarList3>;
    static ITaskbarList3Vtbl s_taskbar = {};
    s_taskbar.AddRef = &Taskbar::AddRef;
    s_taskbar.Release = &Taskbar::Release;
    s_taskbar.HrInit = [](ITaskbarList3* self) -> HRESULT {
        if (IsToFail("ITaskbarList3::HrInit")) return E_FAIL;
        static_cast<Taskbar*>(self)->isReady = true;
        return S_OK;
    };
    s_taskbar.SetProgressValue = [](ITaskbarList3* self, HWND window, ULONGLONG done,
                                    ULONGLONG all) -> HRESULT {
        if (IsToFail("ITaskbarList3::SetProgressValue") || !static_cast<Taskbar*>(self)->isReady)
            return E_FAIL;
        Current().Show(window, std::to_string(done) + " of " + std::to_string(all));
        return S_OK;
    };
    s_taskbar.SetProgressState = [](ITaskbarList3* self, HWND window, TBPFLAG state) -> HRESULT {
        if (IsToFail("ITaskbarList3::SetProgressState") || !static_cast<Taskbar*>(self)->isReady)
            return E_FAIL;
        Current().Show(window, state == TBPF_NOPROGRESS ? "" : "state " + std::to_string(state));
        return S_OK;
    };

    using Names = Object<IAccPropServices>;
    static IAccPropServicesVtbl s_names = {};
    s_names.AddRef = &Names::AddRef;
    s_names.Release = &Names::Release;
    s_names.SetHwndPropStr = [](IAccPropServices*, HWND window, DWORD object, DWORD child,
                                MSAAPROPID property, LPCWSTR text) -> HRESULT {
        if (IsToFail("IAccPropServices::SetHwndPropStr")) return E_FAIL;
        if (!IsName(object, child, property)) return E_INVALIDARG;
        const std::string label = WindowLabel(window);
        Platform& self = Current();
        const SystemLockHold lock = self.Lock();
        self.m_names[label] = TextOf(text);
        return S_OK;
    };
    s_names.ClearHwndProps = [](IAccPropServices*, HWND window, DWORD object, DWORD child,
                                const MSAAPROPID* properties, int count) -> HRESULT {
        if (IsToFail("IAccPropServices::ClearHwndProps")) return E_FAIL;
        if (count != 1 || !IsName(object, child, *properties)) return E_INVALIDARG;
        const std::string label = WindowLabel(window);
        Platform& self = Current();
        const SystemLockHold lock = self.Lock();
        self.m_names.erase(label);
        return S_OK;
    };

    doubles["CoCreateInstance"] = Answer<decltype(::CoCreateInstance)>(
        [](REFCLSID classId, LPUNKNOWN outer, DWORD context, REFIID interfaceId, LPVOID* object) -> HRESULT {
            *object = nullptr;
            if (outer || context != CLSCTX_INPROC_SERVER) return E_INVALIDARG;
            std::atomic<int>& all = Current().m_objects;
            if (classId == CLSID_TaskbarList && interfaceId == IID_ITaskbarList3) {
                *object = new Taskbar(&s_taskbar, all);
            } else if (classId == CLSID_AccPropServices && interfaceId == IID_IAccPropServices) {
                *object = new Names(&s_names, all);
            }
            return *object ? S_OK : REGDB_E_CLASSNOTREG;
        });
}
