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
#include <vector>

namespace {

std::string ClassOf(HWND window) {
    std::array<char, 64> name{};
    ::GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

std::string Number(std::uint64_t value) {
    return std::to_string(static_cast<std::int32_t>(value));
}

std::string ControlName(std::uint64_t value) {
    const int id = static_cast<int>(value);
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

std::string WindowName(std::uint64_t value) {
    return WindowLabel(reinterpret_cast<HWND>(value));
}

std::string FunctionName(std::uint64_t name) {
    return reinterpret_cast<const char*>(name);
}

// Of a path only the last component: the folder is another in each run.
std::string LastComponent(std::uint64_t path) {
    if (!path) return "none";
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
        {HDM_GETITEMW, "HDM_GETITEMW"},
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

std::string ExecutionState(std::uint64_t state) {
    return state & ES_SYSTEM_REQUIRED ? "awake" : "as usual";
}

// The texts of message boxes are loaded into blocks of one size that nothing else has.
std::string UseOfBlock(std::uint64_t size) {
    return size == 256 * sizeof(wchar_t) ? "for a message's text" : "";
}

// The arguments that distinguish one call of a function from another, for functions by their names between
// blanks. Those that are not here go by their name alone.
struct Detail {
    struct Part {
        int argument;
        std::string (*describe)(std::uint64_t value);
    };
    const char* functions;
    std::vector<Part> parts;
};

const Detail kDetails[] = {
    {"DestroyWindow DragAcceptFiles EnableWindow GetClientRect GetParent GetWindow GetWindowRect "
     "GetWindowTextLengthW GetWindowTextW InvalidateRect IsIconic IsWindowEnabled IsWindowVisible "
     "ScreenToClient SetFocus SetWindowPos SetWindowTextW UpdateWindow",
     {{0, WindowName}}},
    {"CheckDlgButton GetDlgItem IsDlgButtonChecked", {{0, WindowName}, {1, ControlName}}},
    {"EndDialog KillTimer SetTimer ShowWindow", {{0, WindowName}, {1, Number}}},
    {"GetWindowLongPtrW SetWindowLongPtrW", {{0, WindowName}, {1, LongName}}},
    {"SendMessageW", {{0, WindowName}, {1, MessageName}}},
    {"CreateFileW DeleteFileW LoadLibraryW PathFileExistsW SearchPathW", {{0, LastComponent}}},
    {"PathAppendW", {{1, LastComponent}}},
    {"CreateDialogParamW CreateWindowExW DialogBoxParamW LoadCursorW LoadIconW LoadImageW LoadStringW",
     {{1, ResourceName}}},
    {"FindResourceExW", {{2, ResourceName}}},
    {"GetProcAddress", {{1, FunctionName}}},
    {"GetSystemMetrics", {{0, Number}}},
    {"CoCreateInstance", {{0, ObjectName}}},
    {"SetThreadExecutionState", {{0, ExecutionState}}},
    {"malloc", {{0, UseOfBlock}}},
};

}  // namespace

std::string WindowLabel(HWND window) {
    if (!window) return "none";
    if (const int id = ::GetDlgCtrlID(window)) return ControlName(static_cast<std::uint64_t>(id));
    if (driver::FindControl(window, IDC_FILE_LIST)) return "main";
    if (driver::FindControl(window, IDC_VERSION)) return "about";
    if (driver::FindControl(window, IDC_SECONDS)) return "countdown";
    if (ClassOf(window) == TOOLTIPS_CLASSA) return "tips";
    if (ClassOf(window) == WC_HEADERA) return "header";
    return "other";
}

std::string CallLabel(const std::string& function, const CallArguments& arguments) {
    std::string label = function;
    if (const Detail* const detail = FindGroup(kDetails, function)) {
        for (const auto& [argument, describe] : detail->parts) {
            const std::string text = describe(arguments[argument]);
            if (!text.empty()) label += ' ' + text;
        }
    }
    return label;
}
