#include "tests/faults/harness/call_label.h"

#include "tests/faults/harness/function_groups.h"

#include "framework/invoker.h"
#include "res/resource.h"
#include "tests/equipment/window_driver.h"
#include "tests/support/utf8.h"

#include <commctrl.h>
#include <oleacc.h>
#include <shobjidl.h>

#include <algorithm>
#include <array>
#include <sstream>
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

// NAMED(IDOK, IDCANCEL): these numbers with these names.
#define NAMED(...) Named(#__VA_ARGS__, {__VA_ARGS__})
Names Named(const std::string& names, std::initializer_list<std::int64_t> numbers) {
    Names named;
    std::istringstream texts(names);
    std::string name;
    for (const std::int64_t number : numbers) {
        std::getline(texts >> std::ws, name, ',');
        named.emplace_back(number, name);
    }
    return named;
}

std::string NameIn(const Names& names, std::int64_t number, const std::string& otherwise) {
    const auto found = std::ranges::find(names, number, &Names::value_type::first);
    return found != names.end() ? found->second : otherwise;
}

std::string ControlName(std::uint64_t value) {
    const auto id = static_cast<std::int32_t>(value);
    if (id == IDC_VERSION) return "VERSION";
    if (id == IDC_SECONDS) return "SECONDS";
    return NameIn(Controls(), id, std::to_string(static_cast<std::uint16_t>(id)));
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
    const auto number = static_cast<UINT>(message);
    if (number == CInvoker::kInvokeMessage) return "step";
    static const Names kNames = NAMED(
        WM_COMMAND, WM_SETICON, WM_SETREDRAW, BM_SETIMAGE, HDM_GETBITMAPMARGIN, HDM_GETITEMW,
        LVM_DELETEALLITEMS, LVM_DELETEITEM, LVM_ENSUREVISIBLE, LVM_GETCOLUMNWIDTH, LVM_GETHEADER,
        LVM_GETITEMCOUNT, LVM_GETITEMTEXTW, LVM_GETNEXTITEM, LVM_GETSTRINGWIDTHW, LVM_INSERTCOLUMNW,
        LVM_INSERTITEMW, LVM_SETCOLUMNWIDTH, LVM_SETEXTENDEDLISTVIEWSTYLE, LVM_SETIMAGELIST, LVM_SETITEMSTATE,
        LVM_SETITEMW, LVM_SETSELECTIONMARK, TTM_ACTIVATE, TTM_ADDTOOLW, TTM_SETMAXTIPWIDTH);
    return NameIn(kNames, number, "message " + Number(number));
}

std::string LongName(std::uint64_t index) {
    static const Names kNames = NAMED(GWL_STYLE, GWLP_USERDATA, GWLP_WNDPROC, DWLP_USER, DWLP_MSGRESULT);
    return NameIn(kNames, static_cast<std::int32_t>(index), Number(index));
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
        int argument;  // one of the first four
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

const Names& Controls() {
    static const Names kControls = [] {
        Names names = NAMED(IDOK, IDCANCEL, IDC_ADD, IDC_STATUS, IDC_CLEAR, IDC_PAGES, IDC_NO_TEXT, IDC_LINES,
                            IDC_NO_METADATA, IDC_EXTRA_OPTIONS, IDC_HIDE_OUTPUT, IDC_OPEN_DESTINATION,
                            IDC_OPEN_LOG, IDC_OUTPUT_FOLDER_CHECK, IDC_OUTPUT_FOLDER, IDC_BROWSE,
                            IDC_MONOCHROME, IDC_RESOLUTION, IDC_RESOLUTION_CHECK, IDC_PAGES_CHECK,
                            IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_SHUT_DOWN, IDC_FILE_LIST, IDC_ABOUT);
        for (auto& [id, name] : names) name.erase(0, name.starts_with("IDC_") ? 4 : 2);
        return names;
    }();
    return kControls;
}

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

std::string CallLabel(const std::string& function, SavedRegisters registers) {
    std::string label = function;
    if (const Detail* const detail = FindGroup(kDetails, function)) {
        for (const auto& [argument, describe] : detail->parts) {
            const std::string text = describe(registers[argument]);
            if (!text.empty()) label += ' ' + text;
        }
    }
    return label;
}
