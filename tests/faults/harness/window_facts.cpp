#include "tests/faults/harness/window_facts.h"

#include "tests/faults/harness/call_label.h"
#include "tests/support/utf8.h"

#include "res/resource.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr int kLongestText = 2000;

bool HasText(int id) {
    constexpr int kWithText[] = {IDCANCEL,          IDC_STATUS,        IDC_PAGES,
                                 IDC_EXTRA_OPTIONS, IDC_OUTPUT_FOLDER, IDC_RESOLUTION};
    return std::ranges::find(kWithText, id) != std::end(kWithText);
}

LRESULT AskList(const User& user, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return User::Send(user.Control(IDC_FILE_LIST), message, wParam, lParam);
}

std::string Cell(const User& user, int row, int column) {
    std::wstring text(kLongestText, L'\0');
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = kLongestText;
    text.resize(static_cast<std::size_t>(
        AskList(user, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item))));
    return Utf8(text);
}

std::string ColumnTitle(const User& user, int column) {
    std::array<wchar_t, 100> text{};
    LVCOLUMNW question = {};
    question.mask = LVCF_TEXT;
    question.pszText = text.data();
    question.cchTextMax = static_cast<int>(text.size());
    if (!AskList(user, LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&question))) {
        return "none";
    }
    return Utf8(text.data());
}

// Whether the window is in the middle of its monitor's work area, to the pixel that rounding costs.
bool IsCentred(HWND window) {
    RECT place = {};
    ::GetWindowRect(window, &place);
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    return std::abs(place.left + place.right - work.left - work.right) <= 2 &&
           std::abs(place.top + place.bottom - work.top - work.bottom) <= 2;
}

int CountTexts(HWND tips, LRESULT tools) {
    int texts = 0;
    for (LRESULT index = 0; index < tools; ++index) {
        std::wstring text(kLongestText, L'\0');
        TTTOOLINFOW tool = {};
        tool.cbSize = sizeof tool;
        tool.lpszText = text.data();
        if (User::Send(tips, TTM_ENUMTOOLSW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&tool)) &&
            text[0] != L'\0') {
            ++texts;
        }
    }
    return texts;
}

// Of all its tool tip windows the one with most tools: the list has one of its own.
std::string DescribeToolTips(const User& user) {
    HWND tips = nullptr;
    LRESULT tools = 0;
    for (HWND window = nullptr;
         (window = ::FindWindowExW(nullptr, window, TOOLTIPS_CLASSW, nullptr)) != nullptr;) {
        if (::GetWindowThreadProcessId(window, nullptr) != user.Program().ThreadId()) continue;
        const LRESULT count = User::Send(window, TTM_GETTOOLCOUNT);
        if (count > tools) tips = window;
        tools = std::max(tools, count);
    }
    return std::to_string(tools) + " tools, " + std::to_string(CountTexts(tips, tools)) + " texts" +
           (User::Send(tips, TTM_GETMAXTIPWIDTH) > 0 ? ", wrapped" : "");
}

}  // namespace

void AddControlFacts(const User& user, const std::string& moment, Facts& facts) {
    const UncountedScope uncounted(user.Program().watch);
    for (const auto& [id, name] : kControls) {
        const HWND control = user.Control(id);
        std::string state = ::IsWindowEnabled(control) ? "E" : "-";
        state += (::GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) ? "S" : "h";
        if (User::Send(control, BM_GETCHECK) == BST_CHECKED) state += " C";
        const std::string text = HasText(id) ? User::TextOf(control) : "";
        if (!text.empty()) state += ' ' + user.Program().platform.Shortened(text);
        facts[moment + '.' + name] = state;
    }
}

void AddListFacts(const User& user, const std::string& moment, Facts& facts) {
    const UncountedScope uncounted(user.Program().watch);
    const auto rows = static_cast<int>(AskList(user, LVM_GETITEMCOUNT));
    std::vector<std::string> paths;
    std::vector<std::string> durations;
    for (int row = 0; row < rows; ++row) {
        paths.push_back(Cell(user, row, 0));
        durations.push_back(Cell(user, row, 1));
    }
    facts[moment + ".rows"] = Lines(paths);
    facts[moment + ".durations"] = Lines(durations);
    facts[moment + ".selected"] =
        std::to_string(AskList(user, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    const LRESULT first = AskList(user, LVM_GETCOLUMNWIDTH, 0);
    const LRESULT second = AskList(user, LVM_GETCOLUMNWIDTH, 1);
    RECT client = {};
    ::GetClientRect(user.Control(IDC_FILE_LIST), &client);
    std::string columns = first + second == client.right ? "fit" : "do not fit";
    if (second > 0) columns += " with durations";
    facts[moment + ".columns"] = columns;
}

void AddWindowFacts(const User& user, const std::string& moment, Facts& facts) {
    AddControlFacts(user, moment, facts);
    AddListFacts(user, moment, facts);
}

void AddSetUpFacts(const User& user, Facts& facts) {
    const UncountedScope uncounted(user.Program().watch);
    facts["start.title"] = User::TextOf(user.Window());
    facts["start.centred"] = IsCentred(user.Window()) ? "yes" : "no";
    std::string& icons = facts["start.icons"];
    if (User::Send(user.Window(), WM_GETICON, ICON_BIG)) icons += "big ";
    if (User::Send(user.Window(), WM_GETICON, ICON_SMALL)) icons += "small";
    std::string& pictures = facts["start.pictures"];
    for (const auto& [id, name] : kControls) {
        const bool hasPicture = User::Send(user.Control(id), BM_GETIMAGE, IMAGE_ICON) != 0;
        if (hasPicture) pictures += std::string(name) + ' ';
    }
    facts["start.titles"] = ColumnTitle(user, 0) + '|' + ColumnTitle(user, 1);
    const auto images = reinterpret_cast<HIMAGELIST>(AskList(user, LVM_GETIMAGELIST, LVSIL_SMALL));
    facts["start.list"] =
        std::to_string(AskList(user, LVM_GETEXTENDEDLISTVIEWSTYLE)) + " with " +
        (images ? std::to_string(::ImageList_GetImageCount(images)) : "no") + " images" +
        (::GetWindowLongPtrW(user.Control(IDC_FILE_LIST), GWL_EXSTYLE) & WS_EX_ACCEPTFILES ? " drops" : "");
    facts["start.tips"] = DescribeToolTips(user);
}
