// The program is started: as usual, without its converter, and beside another copy.
#include "tests/faults/scenarios/scenarios.h"

#include "tests/support/utf8.h"

#include <commctrl.h>

#include <array>

namespace {

std::string ColumnTitle(const User& user, int column) {
    std::array<wchar_t, 100> text{};
    LVCOLUMNW question = {};
    question.mask = LVCF_TEXT;
    question.pszText = text.data();
    question.cchTextMax = static_cast<int>(text.size());
    if (!user.SendToList(LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&question))) {
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
        std::wstring text(2000, L'\0');
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

std::string DescribeToolTips() {
    // The list has a tool tip window of its own, with one tool.
    const HWND tips = FindOwnWindow([](HWND window) {
        return WindowLabel(window) == "tips" && User::Send(window, TTM_GETTOOLCOUNT) > 1;
    });
    const LRESULT tools = User::Send(tips, TTM_GETTOOLCOUNT);
    return std::to_string(tools) + " tools, " + std::to_string(CountTexts(tips, tools)) + " texts" +
           (User::Send(tips, TTM_GETMAXTIPWIDTH) > 0 ? ", wrapped" : "");
}

// What set-up alone makes: "title", "icons", "pictures" of buttons, "list" styles and number of images,
// "titles" of the columns, "tips" as the numbers of tools and of their texts, "centred".
void AddSetUpFacts(const User& user, Facts& facts) {
    facts["start.title"] = User::TextOf(user.Window());
    facts["start.centred"] = IsCentred(user.Window()) ? "yes" : "no";
    std::string& icons = facts["start.icons"];
    if (User::Send(user.Window(), WM_GETICON, ICON_BIG)) icons += "big ";
    if (User::Send(user.Window(), WM_GETICON, ICON_SMALL)) icons += "small";
    std::string& pictures = facts["start.pictures"];
    for (const auto& [id, name] : Controls()) {
        const HWND control = user.Control(static_cast<int>(id));
        if (User::Send(control, BM_GETIMAGE, IMAGE_ICON)) pictures += name + ' ';
    }
    facts["start.titles"] = ColumnTitle(user, 0) + '|' + ColumnTitle(user, 1);
    const auto images = reinterpret_cast<HIMAGELIST>(user.SendToList(LVM_GETIMAGELIST, LVSIL_SMALL));
    facts["start.list"] =
        std::to_string(user.SendToList(LVM_GETEXTENDEDLISTVIEWSTYLE)) + " with " +
        (images ? std::to_string(::ImageList_GetImageCount(images)) : "no") + " images" +
        (::GetWindowLongPtrW(user.Control(IDC_FILE_LIST), GWL_EXSTYLE) & WS_EX_ACCEPTFILES ? " drops" : "");
    facts["start.tips"] = DescribeToolTips();
}

void Start(User& user, CallWatch& watch, Facts& /*facts*/) {
    watch.Begin();
    Open(user);
}

void StartAndLook(User& user, CallWatch& watch, Facts& facts) {
    Start(user, watch, facts);
    watch.End();
    if (!user.Window()) return;
    AddSetUpFacts(user, facts);
    AddWindowFacts(user, "start", facts);
    // The two controls whose messages pass through the window's map.
    User::Send(user.Control(IDC_PAGES), WM_CHAR, L'a');
    user.Drop({L"C:\\in\\a.pdf"});
    AddListFacts(user, "dropped", facts);
}

// Nothing of the window is there to be looked at.
Rule EndsAtOnce(const std::string& call, const std::string& why, std::vector<Change> changes) {
    changes.push_back("beeps: ");
    Rule rule = When(call, why, std::move(changes));
    rule.endsAtOnce = true;
    return rule;
}

std::vector<Rule> StartRules() {
    return {
        EndsAtOnce("ui CreateDialogParamW 102 #1", "a window that cannot be made ends the program, with 0",
                   {"exit: 0"}),
        EndsAtOnce("ui (SetWindowLongPtrW main DWLP_USER #1|GetWindowLongPtrW main DWLP_USER #3)",
                   "a window that cannot be bound to its object is as good as none", {"exit: 0"}),
        EndsAtOnce("ui (GetModuleFileNameW|PathRemoveFileSpecW|PathAppendW pdf2djvu.exe|"
                   "PathFileExistsW pdf2djvu.exe) #1",
                   "a converter that cannot be looked for is missing",
                   {BecomesLike("messages", "error none pdf2djvu\\.exe est absent ![^]*")}),
        When("ui (GetWindowRect main|MonitorFromWindow|GetMonitorInfoW|SetWindowPos main) #1",
             "the window opens where the system puts it", {"start.centred: no"}),
        When("ui (LoadImageW 128|SendMessageW main WM_SETICON) #1", "no big icon", {"start.icons: small"}),
        When("ui (LoadImageW 128|SendMessageW main WM_SETICON) #2", "no small icon", {"start.icons: big "}),
        When("ui (GetDlgItem main PAGES|SetWindowLongPtrW PAGES GWLP_(USERDATA|WNDPROC)) #1",
             "the page edit has no filter", {"beeps: "}),
        When("ui SetWindowLongPtrW FILE_LIST GWLP_(USERDATA|WNDPROC) #1", "drops do not reach the window",
             {"dropped.rows: "}),
        When("ui GetDlgItem main FILE_LIST #1", "the list is as the template has it",
             {"dropped.rows: ", "(start|dropped).columns: do not fit", "start.titles: none|none",
              BecomesLike("start.list", "0 with no images.*"), May(BecomesLike("gdi", "[0-9]+"))}),
        When("ui SendMessageW FILE_LIST LVM_SETEXTENDEDLISTVIEWSTYLE #1", "no grid and no tips in the list",
             {Reads("start.list", "0 with", "1057 with")}),
        When("ui (ImageList_Create|SendMessageW FILE_LIST LVM_SETIMAGELIST) #1", "no picture in the rows",
             {Reads("start.list", "no images", "1 images"), May(BecomesLike("gdi", "[0-9]+"))}),
        When("ui (LoadImageW 213|ImageList_ReplaceIcon) #1", "no picture in the rows",
             {Reads("start.list", "0 images", "1 images")}),
        When("ui (FindResourceExW 9|LoadResource|LockResource) #1", "columns without titles",
             {"start.titles: |"}),
        When("ui (FindResourceExW|LoadResource|LockResource).* #.*", "a tip without text",
             {"start.tips: 6 tools, 5 texts, wrapped"}),
        When("ui GetClientRect FILE_LIST #1", "the first column has no width",
             {"(start|dropped).columns: do not fit"}),
        When("ui SendMessageW FILE_LIST LVM_INSERTCOLUMNW #1", "one column is missing",
             {"start.titles: Durée de conversion|none", "(start|dropped).columns: do not fit"}),
        When("ui SendMessageW FILE_LIST LVM_INSERTCOLUMNW #2", "one column is missing",
             {"start.titles: Fichiers PDF|none"}),
        When("ui (GetDlgItem main|GetClientRect) EXTRA_OPTIONS #1|ui SendMessageW tips TTM_SETMAXTIPWIDTH #1",
             "tips in one line", {"start.tips: 6 tools, 6 texts"}),
        When("ui CreateWindowExW tooltips_class32 #1", "no tips", {"start.tips: 0 tools, 0 texts"}),
        When("ui SendMessageW tips TTM_ADDTOOLW #\\d", "one tip is missing",
             {"start.tips: 5 tools, 5 texts, wrapped"}),
        When("ui (GetModuleFileNameW #2|PathRemoveFileSpecW #2|PathAppendW TalvenorLog.txt #1|"
             "PathFileExistsW TalvenorLog.txt #1)",
             "a log that is not found has no button", {"start.OPEN_LOG: -h"}),
        When("ui (LoadIconW 128|GetDlgItem main OK|SendMessageW OK BM_SETIMAGE) #1",
             "a button without its picture", {Loses("start.pictures", "OK ")}),
        When("ui (LoadIconW 207 #1|GetDlgItem main ADD #2|SendMessageW ADD BM_SETIMAGE #1)",
             "a button without its picture", {Loses("start.pictures", "ADD ")}),
        When("ui (LoadIconW 208|GetDlgItem main CLEAR|SendMessageW CLEAR BM_SETIMAGE) #1",
             "a button without its picture", {Loses("start.pictures", "CLEAR ")}),
        When("ui (LoadIconW 212|GetDlgItem main BROWSE|SendMessageW BROWSE BM_SETIMAGE) #1",
             "a button without its picture", {Loses("start.pictures", "BROWSE ")}),
    };
}

std::vector<Rule> MissingConverterRules() {
    return {
        When("ui (CreateDialogParamW 102 #1|SetWindowLongPtrW main DWLP_USER #1|"
             "GetWindowLongPtrW main DWLP_USER #3)",
             "a window that cannot be made ends the program, with 0", {"exit: 0", "messages: "}),
        When("ui PeekMessageW #1", "the code of a quit that cannot be looked for is 0", {"exit: 0"}),
        When("ui LoadStringW 130 #1", "the message box is empty", {"messages: error none "}),
    };
}

}  // namespace

std::vector<Scenario> StartScenarios() {
    return {
        {.name = "start",
         .prepare = &LeaveEarlierLog,
         .use = &StartAndLook,
         .usual = Usually(
             {Idle("start", {"OPEN_LOG: ES", "rows: ", "title: Talvenor", "centred: yes", "icons: big small",
                             "pictures: OK ADD CLEAR BROWSE ", "titles: Fichiers PDF|Durée de conversion",
                             "list: 1057 with 1 images drops", "tips: 6 tools, 6 texts, wrapped"}),
              At("dropped", {"rows: C:\\in\\a.pdf", "durations: ", "selected: -1", "columns: fit"}),
              {{"beeps", "400 100"}, {"log", "earlier"}}}),
         .rules = StartRules()},
        {.name = "missing_converter",
         .prepare = [](Platform& platform) { ::DeleteFileW(platform.File(L"pdf2djvu.exe").c_str()); },
         .use = &Start,
         .usual = Usually({{{"messages",
                             "error none pdf2djvu.exe est absent !\r\n\r\n(Talvenor.exe doit se trouver dans "
                             "le\r\nmême dossier que \"pdf2djvu.exe\")"}}}),
         .rules = MissingConverterRules()},
        {.name = "second_copy",
         .prepare = [](Platform& platform) { platform.anotherCopyRuns = true; },
         .use = &Start,
         .usual = Usually({{{"exit", "0"}}}),
         .rules = {When("ui CreateMutexW #1", "better two copies than none", {"exit: 2"})}},
    };
}
