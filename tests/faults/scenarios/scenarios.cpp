#include "tests/faults/scenarios/scenarios.h"

#include "tests/support/utf8.h"

#include <array>
#include <filesystem>
#include <fstream>

namespace {

// Later ones win.
Facts Together(std::initializer_list<Facts> parts) {
    Facts all;
    for (const Facts& part : parts) {
        for (const auto& [name, value] : part) all[name] = value;
    }
    return all;
}

// Every control in one state but for `others`, and the list, both but for `differences`.
Facts Window(const std::string& moment, const std::string& state, const std::vector<std::string>& others,
             const std::vector<std::string>& list, const std::vector<std::string>& differences) {
    Facts facts;
    for (const auto& [id, name] : Controls()) facts[moment + '.' + name] = state;
    const Facts given = At(moment, differences);
    const bool hasList = given.contains(moment + ".rows");
    return Together({facts, At(moment, others), hasList ? At(moment, list) : Facts(), given});
}

// What the failure of a call comes to, wherever it is made, unless a scenario says otherwise.
std::vector<Rule> RulesOfAllScenarios() {
    constexpr DWORD kNoMemory = 0xC0000017;
    return {
        {.call = ".* malloc #.*",
         .why = "a program without memory ends at once",
         .endsWithException = kNoMemory},
        OnlyTheEndCounts(".* GetWindowLongPtrW \\S+ (GWLP_USERDATA|DWLP_USER) #.*",
                         "the message that was on its way is lost; which one is up to the system"),
        When(".* CloseHandle #.*", "what is not closed stays", {May("handles: 1")}),
        When(".* HeapFree #.*", "what is not freed stays", {"blocks: 1"}),
        When(".* FreeLibrary #.*", "the library stays, with what it holds",
             {May(BecomesLike("handles", "[0-9]+"))}),
        When(".* DestroyIcon #.*", "what is not destroyed stays",
             {May("icons: 1"), May(BecomesLike("gdi", "[0-9]+"))}),
        When(".* DestroyWindow \\S+ #.*", "the window goes with its thread",
             {May(BecomesLike("gdi", "[0-9]+"))}),
        When(".* KillTimer \\S+ \\d #.*", "the timer goes on",
             {May(BecomesLike("timers", "[12]")), May("count.timers: 1")}),
        When(".* Beep #.*", "a beep that fails is not heard", {"beeps: "}),
        When(".* (MessageBoxW|malloc for a message's text) #.*",
             "a message box that cannot be shown is not, and nothing else", {"messages: "}),
        When(".* LoadStringW 128 #.*", "a caption that is not there is empty",
             {Reads("messages", " caption=", "")}),
        When(".* EnableWindow ([A-Z_]+) #.*", "one control stays enabled or disabled",
             {MayDiffer("\\w+.$1", "enabled")}),
        When(".* ShowWindow ([A-Z_]+) .*", "one control stays shown or hidden",
             {MayDiffer("\\w+.$1", "shown")}),
        When(".* (?:SetWindowTextW|GetWindowTextW|GetWindowTextLengthW) ([A-Z_]+) #.*",
             "one control keeps its text", {MayDiffer("\\w+.$1", "text")}),
        When(".* (?:GetDlgItem main|IsDlgButtonChecked main|SetFocus|IsWindowEnabled) ([A-Z_]+) #.*",
             "one control stays as it was", {MayDiffer("\\w+.$1", "enabled shown text")}),
    };
}

}  // namespace

void LeaveEarlierLog(Platform& platform) {
    std::ofstream(std::filesystem::path(platform.File(L"TalvenorLog.txt"))) << "earlier";
}

void Open(User& user) {
    user.Program().Start();
    user.WaitForWindow();
}

void OpenWithFiles(User& user, const std::vector<std::wstring>& paths) {
    Open(user);
    user.Drop(paths);
    user.Press(IDC_ADD);  // the open dialog is cancelled
}

void WaitForEndOfBatch(User& user, CallWatch& watch, Facts& facts) {
    user.WaitForWorkers();
    watch.End();
    AddWindowFacts(user, "done", facts);
}

Facts Idle(const std::string& moment, const std::vector<std::string>& differences) {
    return Window(moment, "ES",
                  {"OK: -S", "CANCEL: ES Quitter", "PAGES: -S", "RESOLUTION: -S", "OUTPUT_FOLDER: -S",
                   "BROWSE: -S", "OPEN_DESTINATION: -S", "OPEN_LOG: -h"},
                  {"durations: ", "selected: -1", "columns: fit"}, differences);
}

Facts Running(const std::string& moment, const std::vector<std::string>& differences) {
    return Window(moment, "-S",
                  {"CANCEL: ES Arrêter ", "STATUS: ES Conversion en cours : C:\\in\\a.pdf",
                   "OPEN_DESTINATION: ES", "OPEN_LOG: -h", "ABOUT: ES"},
                  {"durations: \n", "selected: 0", "columns: fit with durations"}, differences);
}

Facts AfterBatch(const std::string& moment, const std::vector<std::string>& differences) {
    return Window(moment, "ES", {"CANCEL: ES Quitter", "PAGES: -S", "RESOLUTION: -S", "OPEN_LOG: -h"},
                  {"durations: ", "selected: -1", "columns: fit with durations"}, differences);
}

Facts At(const std::string& moment, const std::vector<std::string>& facts) {
    Facts named;
    for (const std::string& fact : facts) {
        const auto [name, value] = ReadFact(fact);
        named[moment + '.' + name] = value;
    }
    return named;
}

Facts BatchOf(int rows, int done) {
    std::string taskbar;
    for (int row = 0; row <= done; ++row) {
        taskbar.append(std::to_string(row)).append(" of ").append(std::to_string(rows)).append("\n");
    }
    return {{"taskbar", taskbar.append("none")}, {"awakeCalls", "kept\ngiven back"}};
}

Facts Usually(std::initializer_list<Facts> differences) {
    Facts facts = {
        {"messages", ""},   {"beeps", ""},    {"starts", ""},  {"shell", ""},    {"shutdowns", ""},
        {"closing", ""},    {"searches", ""}, {"jobs", ""},    {"shown", ""},    {"outsideJob", ""},
        {"awakeCalls", ""}, {"awake", "0"},   {"taskbar", ""}, {"names", ""},    {"objects", "0"},
        {"log", "none"},    {"strays", ""},   {"timers", ""},  {"exit", "2"},    {"blocks", "0"},
        {"icons", "0"},     {"handles", "0"}, {"gdi", "0"},    {"windows", "0"},
    };
    return Together({facts, Together(differences)});
}

std::string ShownStart(const std::string& djvu) {
    return "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"" + djvu + "\" -v  \"C:\\in\\a.pdf\"\"";
}

std::string SystemText(DWORD error) {
    std::array<wchar_t, 260> text{};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, error, LANG_USER_DEFAULT, text.data(),
                     static_cast<DWORD>(text.size()), nullptr);
    return Utf8(text.data());
}

const std::vector<Scenario>& AllScenarios() {
    static const std::vector<Scenario> kScenarios = [] {
        std::vector<Scenario> all =
            Joined({StartScenarios(), FileListScenarios(), OptionScenarios(), HiddenBatchScenarios(),
                    StopScenarios(), DisabledKeyScenarios(), ScreenReaderScenarios(), OutputFolderScenarios(),
                    ShellScenarios(), CountdownScenarios(), AboutScenarios(), QuitScenarios()});
        for (Scenario& scenario : all) scenario.rules = Joined({scenario.rules, RulesOfAllScenarios()});
        return all;
    }();
    return kScenarios;
}
