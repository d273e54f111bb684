#include "ui/accessible_names.h"

#include <windows.h>
#include <oleacc.h>

namespace {

constexpr GUID kAccPropServicesClass = {
    0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr GUID kAccPropServices = {
    0x6E26E776, 0x04F0, 0x495D, {0x80, 0xE4, 0x33, 0x30, 0x35, 0x2E, 0x31, 0x69}};
constexpr MSAAPROPID kNameProperty = {
    0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};

constexpr DWORD kWholeControl = static_cast<DWORD>(OBJID_CLIENT);

}  // namespace

AccessibleNames::AccessibleNames() = default;
AccessibleNames::~AccessibleNames() = default;

bool AccessibleNames::AreWanted() noexcept {
    BOOL isRunning = FALSE;
    return ::SystemParametersInfoW(SPI_GETSCREENREADER, 0, &isRunning, 0) && isRunning;
}

bool AccessibleNames::Name(HWND control, const std::wstring& name) {
    if (!control || name.empty() || !Connect()) return false;
    Set(control, name);
    m_named.push_back(control);
    return true;
}

void AccessibleNames::NameWhileEmpty(HWND control, const std::wstring& name) {
    if (!Name(control, name)) return;
    m_nameWhileEmpty = name;
    m_changing.SubclassWindow(control);
}

void AccessibleNames::TakeBack() {
    for (const HWND control : m_named) Clear(control);
    m_service.Reset();
}

bool AccessibleNames::ProcessWindowMessage(HWND window, UINT message, WPARAM /*wParam*/, LPARAM lParam,
                                           LRESULT& /*result*/, DWORD /*section*/) {
    if (message == WM_SETTEXT && m_service) {
        const auto* const text = reinterpret_cast<const wchar_t*>(lParam);
        if (text && *text) {
            Clear(window);
        } else {
            Set(window, m_nameWhileEmpty);
        }
    }
    return false;
}

void AccessibleNames::Set(HWND control, const std::wstring& name) {
    m_service.Get()->SetHwndPropStr(control, kWholeControl, CHILDID_SELF, kNameProperty, name.c_str());
}

void AccessibleNames::Clear(HWND control) {
    m_service.Get()->ClearHwndProps(control, kWholeControl, CHILDID_SELF, &kNameProperty, 1);
}

bool AccessibleNames::Connect() {
    if (!m_service) m_service = CreateComObject<IAccPropServices>(kAccPropServicesClass, kAccPropServices);
    return static_cast<bool>(m_service);
}
