#include "tests/faults/scenarios/usual.h"

#include "tests/support/utf8.h"

#include "res/resource.h"

#include <array>
#include <filesystem>
#include <fstream>

namespace {

Facts AtMoment(const std::string& moment, const Facts& states) {
    Facts facts;
    for (const auto& [id, state] : states) facts[moment + '.' + id] = state;
    return facts;
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

void BeginHiddenBatchOfTwo(User& user) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDC_HIDE_OUTPUT);
    user.Press(IDOK);
    user.WaitForConverter(1);
    user.WaitForPosted();
}

Facts IdleControls(const std::string& moment) {
    return AtMoment(moment,
                    {
                        {"1", "-S"},    {"2", "ES Quitter"}, {"1003", "ES"}, {"1004", "ES"}, {"1005", "ES"},
                        {"1014", "-S"}, {"1015", "ES"},      {"1016", "ES"}, {"1017", "ES"}, {"1018", "ES"},
                        {"1019", "ES"}, {"1022", "-S"},      {"1024", "-h"}, {"1026", "ES"}, {"1027", "-S"},
                        {"1028", "-S"}, {"1030", "ES"},      {"1032", "-S"}, {"1033", "ES"}, {"1034", "ES"},
                        {"1036", "ES"}, {"1037", "ES"},      {"1038", "ES"}, {"1040", "ES"}, {"57664", "ES"},
                    });
}

Facts RunningControls(const std::string& moment) {
    return AtMoment(moment, {
                                {"1", "-S"},     {"2", "ES Arrêter "},
                                {"1003", "-S"},  {"1004", "ES Conversion en cours : C:\\in\\a.pdf"},
                                {"1005", "-S"},  {"1014", "-S"},
                                {"1015", "-S"},  {"1016", "-S"},
                                {"1017", "-S"},  {"1018", "-S"},
                                {"1019", "-S"},  {"1022", "ES"},
                                {"1024", "-h"},  {"1026", "-S"},
                                {"1027", "-S"},  {"1028", "-S"},
                                {"1030", "-S"},  {"1032", "-S"},
                                {"1033", "-S"},  {"1034", "-S"},
                                {"1036", "-S"},  {"1037", "-S"},
                                {"1038", "-S"},  {"1040", "-S"},
                                {"57664", "ES"},
                            });
}

Facts ControlsAfterBatch(const std::string& moment) {
    return Together({IdleControls(moment), AtMoment(moment, {
                                                                {"1", "ES"},
                                                                {"1022", "ES"},
                                                                {"1027", "ES"},
                                                                {"1028", "ES"},
                                                            })});
}

Facts List(const std::string& moment, const ListContents& contents) {
    return AtMoment(moment, {
                                {"rows", contents.rows},
                                {"durations", contents.durations},
                                {"selected", std::to_string(contents.selected)},
                                {"columns", contents.columns},
                            });
}

Facts QuietRun() {
    return {
        {"messages", ""},   {"beeps", ""},    {"starts", ""},  {"shell", ""},    {"shutdowns", ""},
        {"closing", ""},    {"searches", ""}, {"jobs", ""},    {"shown", ""},    {"outsideJob", ""},
        {"awakeCalls", ""}, {"awake", "0"},   {"taskbar", ""}, {"names", ""},    {"objects", "0"},
        {"log", "none"},    {"strays", ""},   {"timers", ""},  {"exit", "2"},    {"blocks", "0"},
        {"icons", "0"},     {"handles", "0"}, {"gdi", "0"},    {"windows", "0"},
    };
}

Facts QuietRunToTheEndOfTheProcess() {
    Facts facts = QuietRun();
    for (const char* const left : {"blocks", "icons", "handles", "gdi", "windows", "objects"})
        facts.erase(left);
    return facts;
}

Facts BatchOf(int rows, int done) {
    std::string taskbar;
    for (int row = 0; row <= done; ++row) {
        taskbar.append(std::to_string(row)).append(" of ").append(std::to_string(rows)).append("\n");
    }
    return {{"taskbar", taskbar.append("none")}, {"awakeCalls", "kept\ngiven back"}};
}

Facts Together(std::initializer_list<Facts> parts) {
    Facts all;
    for (const Facts& part : parts) {
        for (const auto& [name, value] : part) all[name] = value;
    }
    return all;
}

std::string LogRecord(const std::string& duration, std::size_t rule) {
    return "\r\nTerminé le : 16/11, 2026 - 14:05:09\r\n*** Durée de conversion (hh:mm:ss) : " + duration +
           "\r\n" + std::string(rule, '*') + "\r\n\r\n";
}

std::string SystemText(DWORD error) {
    std::array<wchar_t, 260> text{};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, error, LANG_USER_DEFAULT, text.data(),
                     static_cast<DWORD>(text.size()), nullptr);
    return Utf8(text.data());
}
