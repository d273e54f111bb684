#include "tests/faults/harness/call_label.h"

#include "tests/faults/harness/function_groups.h"

#include "framework/invoker.h"
#include "tests/equipment/window_driver.h"
#include "tests/support/utf8.h"

#include <commctrl.h>
#include <oleacc.h>
#include <shobjidl.h>

#include <array>
#include <map>
#include <string_view>

namespace {

std::string ClassOf(HWND window) {
    std::array<char, 64> name{};
    ::GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

std::string Number(std::uint64_t value) {
    return std::to_string(static_cast<std::int32_t>(value));
}

std::string ControlName(int id) {
    if (id == IDC_VERSION) return "VERSION";
    if (id == IDC_SECONDS) return "SECONDS";
    for (const NamedControl& control : kControls) {
        if (control.id == id) return control.name;
    }
    return std::to_string(static_cast<std::uint16_t>(id));
}

// A resource or class: by its number, or by its name.
std::string ResourceName(std::uint64_t value) {
    if (value < 0x10000) return std::to_string(value);
    return Utf8(reinterpret_cast<const wchar_t*>(value));
}

// Of a path only the last component: the folder is another in each run.
std::string LastComponent(std::uint64_t path) {
    const std::wstring_view text(reinterpret_cast<const wchar_t*>(path));
    return Utf8(text.substr(text.find_last_of(L'\\') + 1));
}

std::string MessageName(std::uint64_t message) {
    static const std::map<std::uint64_t, const char*> kNames = {
        {CInvoker::kInvokeMessage, "step"},
        {WM_COMMAND, "WM_COMMAND"},
        {WM_SETICON, "WM_SETICON"},
        {WM_SETREDRAW, "WM_SETREDRAW"},
        {BM_SETIMAGE, "BM_SETIMAGE"},
        {HDM_GETBITMAPMARGIN, "HDM_GETBITMAPMARGIN"},
        {LVM_DELETEALLITEMS, "LVM_DELETEALLITEMS"},
        {LVM_DELETEITEM, "LVM_DELETEITEM"},
        {LVM_ENSUREVISIBLE, "LVM_ENSUREVISIBLE"},
        {LVM_GETCOLUMNWIDTH, "LVM_GETCOLUMNWIDTH"},
        {LVM_GETHEADER, "LVM_GETHEADER"},
        {LVM_GETITEMCOUNT, "LVM_GETITEMCOUNT"},
        {LVM_GETITEMTEXTW, "LVM_GETITEMTEXTW"},
        {LVM_GETNEXTITEM, "LVM_GETNEXTITEM"},
        {LVM_GETSTRINGWIDTHW, "LVM_GETSTRINGWIDTHW"},
        {LVM_INSERTCOLUMNW, "LVM_INSERTCOLUMNW"},
        {LVM_INSERTITEMW, "LVM_INSERTITEMW"},
        {LVM_SETCOLUMNWIDTH, "LVM_SETCOLUMNWIDTH"},
        {LVM_SETEXTENDEDLISTVIEWSTYLE, "LVM_SETEXTENDEDLISTVIEWSTYLE"},
        {LVM_SETIMAGELIST, "LVM_SETIMAGELIST"},
        {LVM_SETITEMSTATE, "LVM_SETITEMSTATE"},
        {LVM_SETITEMW, "LVM_SETITEMW"},
        {LVM_SETSELECTIONMARK, "LVM_SETSELECTIONMARK"},
        {TTM_ACTIVATE, "TTM_ACTIVATE"},
        {TTM_ADDTOOLW, "TTM_ADDTOOLW"},
        {TTM_SETMAXTIPWIDTH, "TTM_SETMAXTIPWIDTH"},
    };
    const auto found = kNames.find(message & 0xFFFFFFFF);
    return found != kNames.end() ? found->second : "message " + Number(message);
}

std::string LongName(std::uint64_t index) {
    switch (static_cast<int>(index)) {
    case GWL_STYLE: return "GWL_STYLE";
    case GWLP_USERDATA: return "GWLP_USERDATA";
    case GWLP_WNDPROC: return "GWLP_WNDPROC";
    case DWLP_USER: return "DWLP_USER";
    case DWLP_MSGRESULT: return "DWLP_MSGRESULT";
    default: return Number(index);
    }
}

std::string ObjectName(std::uint64_t classId) {
    const GUID& id = *reinterpret_cast<const GUID*>(classId);
    if (id == CLSID_TaskbarList) return "taskbar";
    return id == CLSID_AccPropServices ? "names" : "unknown";
}

// What distinguishes one call of a function from another, for functions by their names between blanks. Those
// that are not here go by their name alone.
struct Detail {
    const char* functions;
    std::string (*describe)(const CallArguments& call);
};

const Detail kDetails[] = {
    {"DestroyWindow DragAcceptFiles EnableWindow GetClientRect GetParent GetWindow GetWindowRect "
     "GetWindowTextLengthW GetWindowTextW InvalidateRect IsIconic IsWindowEnabled IsWindowVisible "
     "ScreenToClient SetFocus SetWindowPos SetWindowTextW UpdateWindow",
     [](const CallArguments& call) { return WindowLabel(call.Window(0)); }},
    {"CheckDlgButton GetDlgItem IsDlgButtonChecked",
     [](const CallArguments& call) { return WindowLabel(call.Window(0)) + ' ' + ControlName(call.Int(1)); }},
    {"EndDialog KillTimer SetTimer ShowWindow",
     [](const CallArguments& call) { return WindowLabel(call.Window(0)) + ' ' + Number(call[1]); }},
    {"GetWindowLongPtrW SetWindowLongPtrW",
     [](const CallArguments& call) { return WindowLabel(call.Window(0)) + ' ' + LongName(call[1]); }},
    {"SendMessageW",
     [](const CallArguments& call) { return WindowLabel(call.Window(0)) + ' ' + MessageName(call[1]); }},
    {"CreateFileW DeleteFileW LoadLibraryW PathFileExistsW",
     [](const CallArguments& call) { return LastComponent(call[0]); }},
    {"SearchPathW", [](const CallArguments& call) { return call[0] ? LastComponent(call[0]) : "none"; }},
    {"PathAppendW", [](const CallArguments& call) { return LastComponent(call[1]); }},
    {"CreateDialogParamW CreateWindowExW DialogBoxParamW LoadCursorW LoadIconW LoadImageW LoadStringW",
     [](const CallArguments& call) { return ResourceName(call[1]); }},
    {"FindResourceExW", [](const CallArguments& call) { return ResourceName(call[2]); }},
    {"GetProcAddress",
     [](const CallArguments& call) { return std::string(reinterpret_cast<const char*>(call[1])); }},
    {"GetSystemMetrics", [](const CallArguments& call) { return Number(call[0]); }},
    {"CoCreateInstance", [](const CallArguments& call) { return ObjectName(call[0]); }},
    {"SetThreadExecutionState",
     [](const CallArguments& call) {
         return std::string(call[0] & ES_SYSTEM_REQUIRED ? "awake" : "as usual");
     }},
    // The texts of message boxes are loaded into blocks of one size that nothing else has.
    {"malloc",
     [](const CallArguments& call) {
         return std::string(call[0] == 256 * sizeof(wchar_t) ? "for a message's text" : "");
     }},
};

}  // namespace

std::string WindowLabel(HWND window) {
    if (!window) return "none";
    if (const int id = ::GetDlgCtrlID(window)) return ControlName(id);
    if (driver::FindControl(window, IDC_FILE_LIST)) return "main";
    if (driver::FindControl(window, IDC_VERSION)) return "about";
    if (driver::FindControl(window, IDC_SECONDS)) return "countdown";
    if (ClassOf(window) == TOOLTIPS_CLASSA) return "tips";
    if (ClassOf(window) == WC_HEADERA) return "header";
    return "other";
}

std::string CallLabel(const std::string& function, const CallArguments& arguments) {
    const Detail* const group = FindGroup(kDetails, function);
    const std::string detail = group ? group->describe(arguments) : "";
    return detail.empty() ? function : function + ' ' + detail;
}
