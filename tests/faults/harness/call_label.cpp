#include "tests/faults/harness/call_label.h"

#include "framework/invoker.h"
#include "tests/equipment/window_driver.h"
#include "tests/support/utf8.h"

#include "res/resource.h"

#include <commctrl.h>
#include <oleacc.h>
#include <shobjidl.h>

#include <array>
#include <map>
#include <sstream>
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

using Describe = std::string (*)(const CallArguments& arguments);

std::string Window(const CallArguments& arguments) {
    return WindowLabel(arguments.Window(0));
}
std::string WindowAndNumber(const CallArguments& arguments) {
    return Window(arguments) + ' ' + Number(arguments[1]);
}
std::string WindowAndLong(const CallArguments& arguments) {
    return Window(arguments) + ' ' + LongName(arguments[1]);
}
std::string WindowAndMessage(const CallArguments& arguments) {
    return Window(arguments) + ' ' + MessageName(arguments[1]);
}
std::string FirstPath(const CallArguments& arguments) {
    return LastComponent(arguments[0]);
}
std::string SecondPath(const CallArguments& arguments) {
    return LastComponent(arguments[1]);
}
std::string SecondResource(const CallArguments& arguments) {
    return ResourceName(arguments[1]);
}
std::string ThirdResource(const CallArguments& arguments) {
    return ResourceName(arguments[2]);
}
std::string FirstNumber(const CallArguments& arguments) {
    return Number(arguments[0]);
}
std::string WhichObject(const CallArguments& arguments) {
    const GUID& classId = *reinterpret_cast<const GUID*>(arguments[0]);
    if (classId == CLSID_TaskbarList) return "taskbar";
    return classId == CLSID_AccPropServices ? "names" : "unknown";
}
std::string FirstPathOrNone(const CallArguments& arguments) {
    return arguments[0] ? LastComponent(arguments[0]) : "none";
}
std::string WhetherAwake(const CallArguments& arguments) {
    return arguments[0] & ES_SYSTEM_REQUIRED ? "awake" : "as usual";
}
std::string SecondName(const CallArguments& arguments) {
    return reinterpret_cast<const char*>(arguments[1]);
}

// The texts of message boxes are loaded into blocks of one size that nothing else has.
std::string SizeOfNote(const CallArguments& arguments) {
    constexpr std::uint64_t kMessageText = 256 * sizeof(wchar_t);
    return arguments[0] == kMessageText ? "for a message's text" : "";
}

// What distinguishes one call of a function from another, for functions by their names between blanks. Those
// that are not here go by their name alone.
const std::map<std::string, Describe>& Details() {
    static const std::map<std::string, Describe> kDetails = [] {
        const std::pair<Describe, const char*> groups[] = {
            {&WindowAndNumber,
             "CheckDlgButton EndDialog GetDlgItem IsDlgButtonChecked KillTimer SetTimer ShowWindow"},
            {&WhichObject, "CoCreateInstance"},
            {&SecondResource,
             "CreateDialogParamW CreateWindowExW DialogBoxParamW LoadCursorW LoadIconW LoadImageW "
             "LoadStringW"},
            {&FirstPath, "CreateFileW DeleteFileW LoadLibraryW PathFileExistsW"},
            {&Window,
             "DestroyWindow DragAcceptFiles EnableWindow GetClientRect GetParent GetWindow GetWindowRect "
             "GetWindowTextLengthW GetWindowTextW InvalidateRect IsIconic IsWindowEnabled IsWindowVisible "
             "ScreenToClient SetFocus SetWindowPos SetWindowTextW UpdateWindow"},
            {&ThirdResource, "FindResourceExW"},
            {&SecondName, "GetProcAddress"},
            {&FirstNumber, "GetSystemMetrics"},
            {&WindowAndLong, "GetWindowLongPtrW SetWindowLongPtrW"},
            {&SecondPath, "PathAppendW"},
            {&FirstPathOrNone, "SearchPathW"},
            {&WindowAndMessage, "SendMessageW"},
            {&WhetherAwake, "SetThreadExecutionState"},
            {&SizeOfNote, "malloc"},
        };
        std::map<std::string, Describe> details;
        for (const auto& [describe, functions] : groups) {
            std::istringstream names(functions);
            for (std::string name; names >> name;) details[name] = describe;
        }
        return details;
    }();
    return kDetails;
}

}  // namespace

std::string WindowLabel(HWND window) {
    if (!window) return "none";
    if (const int id = ::GetDlgCtrlID(window)) return std::to_string(static_cast<std::uint16_t>(id));
    if (driver::FindControl(window, IDC_FILE_LIST)) return "main";
    if (driver::FindControl(window, IDC_VERSION)) return "about";
    if (driver::FindControl(window, IDC_SECONDS)) return "countdown";
    if (ClassOf(window) == TOOLTIPS_CLASSA) return "tips";
    if (ClassOf(window) == WC_HEADERA) return "header";
    return "other";
}

std::string CallLabel(const std::string& function, const CallArguments& arguments) {
    const auto details = Details().find(function);
    const std::string detail = details != Details().end() ? details->second(arguments) : std::string();
    return detail.empty() ? function : function + ' ' + detail;
}
