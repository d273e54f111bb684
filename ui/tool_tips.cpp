// The tool tips of the main window's controls.

#include "ui/main_dlg.h"

#include "base/string_table.h"
#include "framework/app_module.h"

namespace {

bool IsVistaOrLater() {
    OSVERSIONINFOEXW wanted = {};
    wanted.dwOSVersionInfoSize = sizeof wanted;
    wanted.dwMajorVersion = 6;
    DWORDLONG conditions = ::VerSetConditionMask(0, VER_MAJORVERSION, VER_GREATER_EQUAL);
    conditions = ::VerSetConditionMask(conditions, VER_MINORVERSION, VER_GREATER_EQUAL);
    conditions = ::VerSetConditionMask(conditions, VER_SERVICEPACKMAJOR, VER_GREATER_EQUAL);
    return ::VerifyVersionInfoW(&wanted, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR,
                                conditions) != FALSE;
}

}  // namespace

void CMainDlg::InitToolTips() {
    static constexpr struct {
        int control;
        UINT text;
    } kTips[] = {
        {IDC_PAGES, IDS_TIP_PAGES},
        {IDC_EXTRA_OPTIONS, IDS_TIP_EXTRA_OPTIONS},
        {IDC_ADD, IDS_TIP_ADD},
        {IDC_HIDE_OUTPUT, IDS_TIP_HIDE_OUTPUT},
        {IDC_OUTPUT_FOLDER_CHECK, IDS_TIP_OUTPUT_FOLDER},
        {IDC_SHUT_DOWN, IDS_TIP_SHUT_DOWN},
    };
    RECT area = {};
    ::GetClientRect(Item(IDC_EXTRA_OPTIONS).Handle(), &area);
    m_toolTips =
        ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP,
                          CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, m_hWnd, nullptr,
                          CAppModule::Instance().ResourceInstance(), nullptr);
    const CWindow toolTips(m_toolTips);
    toolTips.Send(TTM_SETMAXTIPWIDTH, 0, area.right);

    TTTOOLINFOW tool = {};
    tool.cbSize = IsVistaOrLater() ? static_cast<UINT>(sizeof tool) : TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_SUBCLASS;
    tool.uId = 1;
    // Deliberate: one rectangle for all tools, in each control's own coordinates. It is as wide as the widest
    // control that has a tip; where a control is higher, its lowest part has none.
    tool.rect = area;
    for (const auto& tip : kTips) {
        std::wstring text = LoadText(tip.text);
        tool.hwnd = Item(tip.control).Handle();
        tool.lpszText = text.data();
        toolTips.Send(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    toolTips.Send(TTM_ACTIVATE, TRUE);
}
