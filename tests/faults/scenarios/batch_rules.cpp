// The rules of a batch. What its scenarios have of their own, for example which option a control stands for,
// comes before these.
#include "tests/faults/scenarios/rules.h"

namespace {

constexpr char kColumns[] = "(do not )?fit( with durations)?";

// The list does not say how many rows it has, which reads as none.
const Rule kRowsUnknown = {
    .call = "(worker|ui) SendMessageW 1040 LVM_GETITEMCOUNT #.*",
    .why =
        "a list that does not answer has no rows: the batch ends there, or waits for its stop as on an empty "
        "list",
    .changes = {MayBeOver("running|ticked", "done"), MayDiffer("(running|done)\\.\\d+", "enabled shown text"),
                MayBecome("\\w+\\.columns", kColumns), MayBecome("\\w+\\.selected", "-1"),
                MayHaveEmptyLines("\\w+\\.durations"), MayEndEarly("starts"), MayEndEarly("log"),
                MayBecome("log", "earlier|none"), MayBecome("taskbar", "((\\d of \\d\n)*none(\nnone)?)?"),
                MayBecome("awakeCalls", ""),
                MayBecome("messages",
                          "(information main Conversion terminée !)?|"
                          "question main Un traitement est en cours.\r\n"
                          "Êtes-vous sûr de vouloir l'interrompre \\?")}};

}  // namespace

std::vector<Rule> BatchRules() {
    return {
        kRowsUnknown,
        {.call = "ui _beginthread #1",
         .why = "without a thread nothing happens, and nothing is said",
         .changes = {Becomes("starts", ""), Becomes("messages", ""), MayBecome("log", "earlier"),
                     Becomes("taskbar", ""), Becomes("awakeCalls", ""), MayBeOver("running|ticked", "done"),
                     MayDiffer("done\\.(1022|1027|1028)", "enabled"), Becomes("done.columns", "fit"),
                     MayHaveEmptyLines("done.durations")}},
        {.call = "ui (CreateWindowExW Static|SetWindowLongPtrW other GWLP_(USERDATA|WNDPROC)|"
                 "CoCreateInstance taskbar|ITaskbarList3::HrInit) #1",
         .why = "the taskbar shows nothing, and the batch goes on",
         .changes = {Becomes("taskbar", "")}},
        {.call = "ui ITaskbarList3::SetProgressValue #.",
         .why = "the taskbar shows one step less",
         .changes = {MayBecome("taskbar", "(\\d of \\d\n)*none")}},
        {.call = "ui ITaskbarList3::SetProgressState #1",
         .why = "the taskbar goes on showing how far it was",
         .changes = {Loses("taskbar", "\nnone"), Becomes("shown", "\\d of \\d")}},
        {.call = "ui PostMessageW #.|worker PostMessageW #1",
         .why = "a report that is not taken is lost, the last as well as any other",
         .changes = {MayBecome("taskbar", "(\\d of \\d\n?)*(none)?"), MayBecome("shown", "\\d of \\d")}},
        {.call = "worker SetThreadExecutionState awake #1",
         .why = "a machine that cannot be kept awake is not",
         .changes = {Loses("awakeCalls", "kept\n")}},
        {.call = "worker SetThreadExecutionState as usual #1",
         .why = "it goes on until the thread ends, with which the request does",
         .changes = {Loses("awakeCalls", "\ngiven back"), Becomes("awake", "1")}},
        {.call = "worker AssignProcessToJobObject #.",
         .why = "what is not in the job is not ended with it",
         .changes = {Becomes("outsideJob", "[12]")}},
        {.call =
             "(worker|ui) SendMessageW (1040|header) (LVM_SETCOLUMNWIDTH|LVM_GETCOLUMNWIDTH|LVM_GETHEADER|"
             "LVM_GETSTRINGWIDTHW|HDM_GETBITMAPMARGIN) #.*",
         .why = "the columns do not get their widths",
         .changes = {MayBecome("\\w+\\.columns", kColumns)}},
        {.call = "worker GetClientRect 1040 #.*",
         .why = "the columns do not get their widths",
         .changes = {MayBecome("\\w+\\.columns", kColumns)}},
        {.call = "(worker|ui) SendMessageW 1040 LVM_SETITEMSTATE #.*",
         .why =
             "a row that is not selected gets no duration and does not enable the destination's button; one "
             "that stays selected keeps both",
         .changes = {MayBecome("\\w+\\.selected", "-1|0|1"), MayHaveEmptyLines("\\w+\\.durations"),
                     MayDiffer("\\w+\\.1022", "enabled"), MayDiffer("\\w+\\.1004", "text")}},
        {.call = "(worker|ui) SendMessageW 1040 (LVM_GETNEXTITEM|LVM_SETITEMW) #.*",
         .why = "a duration is not written",
         .changes = {MayHaveEmptyLines("\\w+\\.durations")}},
        {.call = "ui SendMessageW 1040 LVM_GETITEMTEXTW #.*",
         .why = "a row that cannot be read has an empty path, with which the converter does what it does; or "
                "the status line does not show the path",
         .changes = {MayDiffer("\\w+\\.1004", "text"),
                     MayBecome("starts", "[^]*(hidden|visible)  in ~: [^]* -v [^]*\"\"\"[^]*")}},
        {.call = "ui IsDlgButtonChecked main 1026 #.*",
         .why = "the destination's button follows the row instead of the folder",
         .changes = {MayDiffer("\\w+\\.1022", "enabled")}},
        {.call = "(worker|ui) (FindResourceExW|LoadResource|LockResource).* #.*",
         .why = "a text that is not there is empty, and the button keeps the one that it has",
         .changes = {MayBecome("\\w+\\.2", "ES (Quitter|Arrêter )"), MayDiffer("\\w+\\.1004", "text"),
                     MayBecome("\\w+\\.columns", kColumns), MayLose("\\w+\\.durations", "*** Annulé !"),
                     MayBecome("log", "(\\r\\n.*\\r\\n.*\\r\\n\\*+\\r\\n\\r\\n)+")}},
        {.call = "worker LoadStringW 131 #1",
         .why = "the message box is empty",
         .changes = {Loses("messages", "Conversion terminée !")}},
    };
}
