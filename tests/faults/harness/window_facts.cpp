#include "tests/faults/harness/window_facts.h"

#include "tests/equipment/list_reader.h"
#include "tests/support/utf8.h"

#include "res/resource.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

constexpr int kChangingTexts[] = {IDCANCEL,          IDC_STATUS,        IDC_PAGES,
                                  IDC_EXTRA_OPTIONS, IDC_OUTPUT_FOLDER, IDC_RESOLUTION};

std::string Column(HWND list, int column) {
    std::vector<std::string> cells;
    for (const std::wstring& text : driver::ColumnTexts(list, column)) cells.push_back(Utf8(text));
    return Lines(cells);
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
    const HWND list = user.Control(IDC_FILE_LIST);
    facts[moment + ".rows"] = Column(list, 0);
    facts[moment + ".durations"] = Column(list, 1);
    facts[moment + ".selected"] = std::to_string(driver::SelectedRow(list));
    const LRESULT first = user.SendToList(LVM_GETCOLUMNWIDTH, 0);
    const LRESULT second = user.SendToList(LVM_GETCOLUMNWIDTH, 1);
    RECT client = {};
    ::GetClientRect(list, &client);
    std::string columns = first + second == client.right ? "fit" : "do not fit";
    if (second > 0) columns += " with durations";
    facts[moment + ".columns"] = columns;
}

void AddWindowFacts(const User& user, const std::string& moment, Facts& facts) {
    AddControlFacts(user, moment, facts);
    AddListFacts(user, moment, facts);
}
