// Answers in the system's place: the objects of its COM libraries that the program makes.
#include "tests/equipment/com_object.h"

#include "tests/faults/harness/call_label.h"
#include "tests/faults/harness/platform.h"
#include "tests/faults/harness/program_host.h"

#include <objbase.h>
#include <oleacc.h>
#include <shobjidl.h>

namespace {

// A method can fail as an imported function can.
bool IsToFail(const char* method) {
    return CurrentHost().watch.Route(method, nullptr) != nullptr;
}

// Whether it is the name of a control that is set.
bool IsName(DWORD object, DWORD child, const MSAAPROPID& property) {
    return object == static_cast<DWORD>(OBJID_CLIENT) && child == CHILDID_SELF && property == PROPID_ACC_NAME;
}

}  // namespace

void Platform::Show(HWND window, const std::string& text) {
    const std::string label = WindowLabel(window);
    Note("taskbar", (label == "main" ? "" : label + ' ') + (text.empty() ? "none" : text));
    const std::lock_guard lock(m_lock);
    m_taskbarShows = text;
}

void Platform::Name(HWND control, const wchar_t* name) {
    const std::string label = WindowLabel(control);
    const std::lock_guard lock(m_lock);
    m_names.erase(label);
    if (name) m_names[label] = Utf8(name);
}

void Platform::AnswerObjects() {
    static ITaskbarList3Vtbl s_taskbar = {};
    s_taskbar.HrInit = [](ITaskbarList3*) -> HRESULT {
        return IsToFail("ITaskbarList3::HrInit") ? E_FAIL : S_OK;
    };
    s_taskbar.SetProgressValue = [](ITaskbarList3*, HWND window, ULONGLONG done, ULONGLONG all) -> HRESULT {
        if (IsToFail("ITaskbarList3::SetProgressValue")) return E_FAIL;
        CurrentHost().platform.Show(window, std::to_string(done) + " of " + std::to_string(all));
        return S_OK;
    };
    s_taskbar.SetProgressState = [](ITaskbarList3*, HWND window, TBPFLAG state) -> HRESULT {
        if (IsToFail("ITaskbarList3::SetProgressState")) return E_FAIL;
        CurrentHost().platform.Show(window, state == TBPF_NOPROGRESS ? "" : "state " + std::to_string(state));
        return S_OK;
    };

    static IAccPropServicesVtbl s_names = {};
    s_names.SetHwndPropStr = [](IAccPropServices*, HWND window, DWORD object, DWORD child,
                                MSAAPROPID property, LPCWSTR text) -> HRESULT {
        if (IsToFail("IAccPropServices::SetHwndPropStr")) return E_FAIL;
        if (!IsName(object, child, property)) return E_INVALIDARG;
        CurrentHost().platform.Name(window, text);
        return S_OK;
    };
    s_names.ClearHwndProps = [](IAccPropServices*, HWND window, DWORD object, DWORD child,
                                const MSAAPROPID* properties, int count) -> HRESULT {
        if (IsToFail("IAccPropServices::ClearHwndProps")) return E_FAIL;
        if (count != 1 || !IsName(object, child, *properties)) return E_INVALIDARG;
        CurrentHost().platform.Name(window, nullptr);
        return S_OK;
    };

    m_answers.push_back(REPLACE_IMPORT(
        CoCreateInstance,
        [this](REFCLSID classId, LPUNKNOWN outer, DWORD context, REFIID interfaceId,
               LPVOID* object) -> HRESULT {
            *object = nullptr;
            if (outer || context != CLSCTX_INPROC_SERVER) return E_INVALIDARG;
            const auto whenReleased = [this] { --m_objects; };
            if (classId == CLSID_TaskbarList && interfaceId == IID_ITaskbarList3) {
                *object = new ComObject<ITaskbarList3>(s_taskbar, whenReleased);
            } else if (classId == CLSID_AccPropServices && interfaceId == IID_IAccPropServices) {
                *object = new ComObject<IAccPropServices>(s_names, whenReleased);
            }
            if (!*object) return REGDB_E_CLASSNOTREG;
            ++m_objects;
            return S_OK;
        }));
}
