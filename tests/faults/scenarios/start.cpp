#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    watch.Begin();
    user.Program().Start();
    user.WaitForWindow();
    watch.End();
    if (!user.Window()) return;
    AddSetUpFacts(user, facts);
    AddControlFacts(user, "start", facts);
    AddListFacts(user, "start", facts);
    // The two controls whose messages pass through the window's map.
    User::Send(user.Control(IDC_PAGES), WM_CHAR, L'a');
    user.Drop({L"C:\\in\\a.pdf"});
    AddListFacts(user, "dropped", facts);
}

// Nothing of the window is there to be looked at.
Rule EndsAtOnce(const std::string& call, const std::string& why, std::vector<Change> changes) {
    changes.push_back(Becomes("beeps", ""));
    return {.call = call, .why = why, .changes = std::move(changes), .endsAtOnce = true};
}

std::vector<Rule> Rules() {
    return {
        EndsAtOnce("ui CreateDialogParamW 102 #1", "a window that cannot be made ends the program, with 0",
                   {Becomes("exit", "0")}),
        EndsAtOnce("ui (SetWindowLongPtrW main DWLP_USER #1|GetWindowLongPtrW main DWLP_USER #2)",
                   "a window that cannot be bound to its object is as good as none", {Becomes("exit", "0")}),
        EndsAtOnce("ui (GetModuleFileNameW #1|PathRemoveFileSpecW #1|PathAppendW pdf2djvu.exe #1|"
                   "PathFileExistsW pdf2djvu.exe #1)",
                   "a converter that cannot be looked for is missing",
                   {Becomes("messages", "error none pdf2djvu\\.exe est absent ![^]*")}),
        {.call = "ui (GetWindowRect main|MonitorFromWindow|GetMonitorInfoW|SetWindowPos main) #1",
         .why = "the window opens where the system puts it",
         .changes = {Becomes("start.centred", "no")}},
        {.call = "ui (LoadImageW 128|SendMessageW main WM_SETICON) #1",
         .why = "no big icon",
         .changes = {Becomes("start.icons", "small")}},
        {.call = "ui (LoadImageW 128|SendMessageW main WM_SETICON) #2",
         .why = "no small icon",
         .changes = {Becomes("start.icons", "big ")}},
        {.call = "ui (GetDlgItem main 1014 #1|SetWindowLongPtrW 1014 GWLP_(USERDATA|WNDPROC) #1)",
         .why = "the page edit has no filter",
         .changes = {Becomes("beeps", "")}},
        {.call = "ui SetWindowLongPtrW 1040 GWLP_(USERDATA|WNDPROC) #1",
         .why = "drops do not reach the window",
         .changes = {Becomes("dropped.rows", "")}},
        {.call = "ui GetDlgItem main 1040 #1",
         .why = "the list is as the template has it",
         .changes = {Becomes("dropped.rows", ""), Becomes("(start|dropped).columns", "do not fit"),
                     Becomes("start.titles", "none\\|none"), Becomes("start.list", "0 with no images.*"),
                     MayBecome("gdi", "[0-9]+")}},
        {.call = "ui SendMessageW 1040 LVM_SETEXTENDEDLISTVIEWSTYLE #1",
         .why = "no grid and no tips in the list",
         .changes = {Reads("start.list", "0 with", "1057 with")}},
        {.call = "ui (ImageList_Create|SendMessageW 1040 LVM_SETIMAGELIST) #1",
         .why = "no picture in the rows",
         .changes = {Reads("start.list", "no images", "1 images"), MayBecome("gdi", "[0-9]+")}},
        {.call = "ui (LoadImageW 213|ImageList_ReplaceIcon) #1",
         .why = "no picture in the rows",
         .changes = {Reads("start.list", "0 images", "1 images")}},
        {.call = "ui (FindResourceExW 9|LoadResource|LockResource) #1",
         .why = "columns without titles",
         .changes = {Becomes("start.titles", "\\|")}},
        {.call = "ui (FindResourceExW|LoadResource|LockResource).* #.*",
         .why = "a tip without text",
         .changes = {Becomes("start.tips", "6 tools, 5 texts, wrapped")}},
        {.call = "ui GetClientRect 1040 #1",
         .why = "the first column has no width",
         .changes = {Becomes("(start|dropped)\\.columns", "do not fit")}},
        {.call = "ui SendMessageW 1040 LVM_INSERTCOLUMNW #1",
         .why = "one column is missing",
         .changes = {Becomes("start.titles", "Durée de conversion\\|none"),
                     Becomes("(start|dropped).columns", "do not fit")}},
        {.call = "ui SendMessageW 1040 LVM_INSERTCOLUMNW #2",
         .why = "one column is missing",
         .changes = {Becomes("start.titles", "Fichiers PDF\\|none")}},
        {.call = "ui (GetDlgItem main 1018|GetClientRect 1018|SendMessageW tips TTM_SETMAXTIPWIDTH) #1",
         .why = "tips in one line",
         .changes = {Becomes("start.tips", "6 tools, 6 texts")}},
        {.call = "ui CreateWindowExW tooltips_class32 #1",
         .why = "no tips",
         .changes = {Becomes("start.tips", "0 tools, 0 texts")}},
        {.call = "ui SendMessageW tips TTM_ADDTOOLW #\\d",
         .why = "one tip is missing",
         .changes = {Becomes("start.tips", "5 tools, 5 texts, wrapped")}},
        {.call = "ui (GetModuleFileNameW #2|PathRemoveFileSpecW #2|PathAppendW TalvenorLog.txt #1|"
                 "PathFileExistsW TalvenorLog.txt #1)",
         .why = "a log that is not found has no button",
         .changes = {Becomes("start.1024", "-h")}},
        {.call = "ui (LoadIconW 128|GetDlgItem main 1|SendMessageW 1 BM_SETIMAGE) #1",
         .why = "a button without its picture",
         .changes = {Loses("start.pictures", "1 ")}},
        {.call = "ui (LoadIconW 207 #1|GetDlgItem main 1003 #2|SendMessageW 1003 BM_SETIMAGE #1)",
         .why = "a button without its picture",
         .changes = {Loses("start.pictures", "1003 ")}},
        {.call = "ui (LoadIconW 208|GetDlgItem main 1005|SendMessageW 1005 BM_SETIMAGE) #1",
         .why = "a button without its picture",
         .changes = {Loses("start.pictures", "1005 ")}},
        {.call = "ui (LoadIconW 212|GetDlgItem main 1028|SendMessageW 1028 BM_SETIMAGE) #1",
         .why = "a button without its picture",
         .changes = {Loses("start.pictures", "1028 ")}},
    };
}

}  // namespace

Scenario StartScenario() {
    return {"start", &LeaveEarlierLog, &Use,
            Together({QuietRun(),
                      IdleControls("start"),
                      List("start", {}),
                      List("dropped", {.rows = "C:\\in\\a.pdf"}),
                      {
                          {"beeps", "400 100"},
                          {"log", "earlier"},
                          {"start.1024", "ES"},
                          {"start.title", "Talvenor"},
                          {"start.centred", "yes"},
                          {"start.icons", "big small"},
                          {"start.pictures", "1 1003 1005 1028 "},
                          {"start.titles", "Fichiers PDF|Durée de conversion"},
                          {"start.list", "1057 with 1 images drops"},
                          {"start.tips", "6 tools, 6 texts, wrapped"},
                      }}),
            Rules()};
}
