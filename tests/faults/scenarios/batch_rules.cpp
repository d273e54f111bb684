// The rules of a batch. What its scenarios have of their own, for example which option a control stands for,
// comes before these.
#include "tests/faults/scenarios/scenarios.h"

namespace {

constexpr char kColumns[] = "(do not )?fit( with durations)?";

// The list does not say how many rows it has, which reads as none.
const Rule kRowsUnknown = When(
    "(worker|ui) SendMessageW FILE_LIST LVM_GETITEMCOUNT #.*",
    "a list that does not answer has no rows: the batch ends there, or waits for its stop as on an empty "
    "list",
    {MayBeOver("running|ticked", "done"), MayDiffer("(running|done).[A-Z_]+", "enabled shown text"),
     May(BecomesLike("\\w+.columns", kColumns)), May("\\w+.selected: -1"),
     MayHaveEmptyLines("\\w+.durations"), MayEndEarly("starts"), MayEndEarly("log"),
     May(BecomesLike("log", "earlier|none")), May(BecomesLike("taskbar", "((\\d of \\d\n)*none(\nnone)?)?")),
     May("awakeCalls: "),
     May(BecomesLike("messages",
                     "(information main Conversion terminée !)?|"
                     "question main Un traitement est en cours.\r\n"
                     "Êtes-vous sûr de vouloir l'interrompre \\?"))});

}  // namespace

std::vector<Rule> BatchRules() {
    return {
        kRowsUnknown,
        When("ui _beginthread #1", "without a thread nothing happens, and nothing is said",
             {"starts: ", "messages: ", May("log: earlier"),
              "taskbar: ", "awakeCalls: ", MayBeOver("running|ticked", "done"),
              MayDiffer("done.(OPEN_DESTINATION|OUTPUT_FOLDER|BROWSE)", "enabled"), "done.columns: fit",
              MayHaveEmptyLines("done.durations")}),
        When("ui (CreateWindowExW Static|SetWindowLongPtrW other GWLP_(USERDATA|WNDPROC)|"
             "CoCreateInstance taskbar|ITaskbarList3::HrInit) #1",
             "the taskbar shows nothing, and the batch goes on", {"taskbar: "}),
        When("ui ITaskbarList3::SetProgressValue #.", "the taskbar shows one step less",
             {May(BecomesLike("taskbar", "(\\d of \\d\n)*none"))}),
        When("ui ITaskbarList3::SetProgressState #1", "the taskbar goes on showing how far it was",
             {Loses("taskbar", "\nnone"), BecomesLike("shown", "\\d of \\d")}),
        When("ui PostMessageW #.|worker PostMessageW #1",
             "a report that is not taken is lost, the last as well as any other",
             {May(BecomesLike("taskbar", "(\\d of \\d\n?)*(none)?")),
              May(BecomesLike("shown", "\\d of \\d"))}),
        When("worker SetThreadExecutionState awake #1", "a machine that cannot be kept awake is not",
             {Loses("awakeCalls", "kept\n")}),
        When("worker SetThreadExecutionState as usual #1",
             "it goes on until the thread ends, with which the request does",
             {Loses("awakeCalls", "\ngiven back"), "awake: 1"}),
        When("worker AssignProcessToJobObject #.", "what is not in the job is not ended with it",
             {BecomesLike("outsideJob", "[12]")}),
        When("(worker|ui) SendMessageW (FILE_LIST|header) "
             "(LVM_SETCOLUMNWIDTH|LVM_GETCOLUMNWIDTH|LVM_GETHEADER|"
             "LVM_GETSTRINGWIDTHW|HDM_GETBITMAPMARGIN) #.*",
             "the columns do not get their widths", {May(BecomesLike("\\w+.columns", kColumns))}),
        When("worker GetClientRect FILE_LIST #.*", "the columns do not get their widths",
             {May(BecomesLike("\\w+.columns", kColumns))}),
        When("(worker|ui) SendMessageW FILE_LIST LVM_SETITEMSTATE #.*",
             "a row that is not selected gets no duration and does not enable the destination's button; one "
             "that stays selected keeps both",
             {May(BecomesLike("\\w+.selected", "-1|0|1")), MayHaveEmptyLines("\\w+.durations"),
              MayDiffer("\\w+.OPEN_DESTINATION", "enabled"), MayDiffer("\\w+.STATUS", "text")}),
        When("(worker|ui) SendMessageW FILE_LIST (LVM_GETNEXTITEM|LVM_SETITEMW) #.*",
             "a duration is not written", {MayHaveEmptyLines("\\w+.durations")}),
        When("ui SendMessageW FILE_LIST LVM_GETITEMTEXTW #.*",
             "a row that cannot be read has an empty path, with which the converter does what it does; or "
             "the status line does not show the path",
             {MayDiffer("\\w+.STATUS", "text"),
              May(BecomesLike("starts", "[^]*(hidden|visible)  in ~: [^]* -v [^]*\"\"\"[^]*"))}),
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #.*",
             "the destination's button follows the row instead of the folder",
             {MayDiffer("\\w+.OPEN_DESTINATION", "enabled")}),
        When("(worker|ui) (FindResourceExW|LoadResource|LockResource).* #.*",
             "a text that is not there is empty, and the button keeps the one that it has",
             {May(BecomesLike("\\w+.CANCEL", "ES (Quitter|Arrêter )")), MayDiffer("\\w+.STATUS", "text"),
              May(BecomesLike("\\w+.columns", kColumns)), May(Loses("\\w+.durations", "*** Annulé !")),
              May(BecomesLike("log", "(\\r\\n.*\\r\\n.*\\r\\n\\*+\\r\\n\\r\\n)+"))}),
        When("worker LoadStringW 131 #1", "the message box is empty",
             {Loses("messages", "Conversion terminée !")}),
    };
}
