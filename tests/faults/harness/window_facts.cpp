#include "tests/faults/harness/window_facts.h"

#include "tests/support/utf8.h"

#include "res/resource.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kLongestText = 2000;

constexpr int kChangingTexts[] = {IDCANCEL,          IDC_STATUS,        IDC_PAGES,
                                  IDC_EXTRA_OPTIONS, IDC_OUTPUT_FOLDER, IDC_RESOLUTION};

std::string Cell(const User& user, int row, int column) {
    std::wstring text(kLongestText, L'\0');
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = kLongestText;
    text.resize(static_cast<std::size_t>(
        user.SendToList(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item))));
    return Utf8(text);
}

}  // namespace

void AddControlFacts(const User& user, const std::string& moment, Facts& facts) {
    const UncountedScope uncounted(user.Program().watch);
    for (const auto& [number, name] : Controls()) {
        const auto id = static_cast<int>(number);
        const HWND control = user.Control(id);
        const bool hasChangingText = std::ranges::find(kChangingTexts, id) != std::end(kChangingTexts);
        std::string state = ::IsWindowEnabled(control) ? "E" : "-";
        state += (::GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) ? "S" : "h";
        if (User::Send(control, BM_GETCHECK) == BST_CHECKED) state += " C";
        const std::string text = hasChangingText ? User::TextOf(control) : "";
        if (!text.empty()) state += ' ' + user.Program().platform.Shortened(text);
        facts[moment + '.' + name] = state;
    }
}

void AddListFacts(const User& user, const std::string& moment, Facts& facts) {
    const UncountedScope uncounted(user.Program().watch);
    const auto rows = static_cast<int>(user.SendToList(LVM_GETITEMCOUNT));
    std::vector<std::string> paths;
    std::vector<std::string> durations;
    for (int row = 0; row < rows; ++row) {
        paths.push_back(Cell(user, row, 0));
        durations.push_back(Cell(user, row, 1));
    }
    facts[moment + ".rows"] = Lines(paths);
    facts[moment + ".durations"] = Lines(durations);
    facts[moment + ".selected"] =
        std::to_string(user.SendToList(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    const LRESULT first = user.SendToList(LVM_GETCOLUMNWIDTH, 0);
    const LRESULT second = user.SendToList(LVM_GETCOLUMNWIDTH, 1);
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
