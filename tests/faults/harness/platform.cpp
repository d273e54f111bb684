#include "tests/faults/harness/platform.h"

#include "tests/equipment/file_bytes.h"
#include "tests/faults/harness/program_host.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

constexpr wchar_t kElsewhere[] = L"ailleurs";

void* SystemFunction(const char* name) {
    for (const wchar_t* const library : {L"kernel32.dll", L"user32.dll", L"msvcrt.dll", L"advapi32.dll",
                                         L"ole32.dll", L"shell32.dll", L"comdlg32.dll"}) {
        if (const FARPROC found = ::GetProcAddress(::LoadLibraryW(library), name)) {
            return reinterpret_cast<void*>(found);
        }
    }
    throw std::logic_error(std::string("no library has ") + name);
}

// What answers in the place of functions, by their names: one table for all lives of the program.
std::map<std::string, void*>& Answers() {
    static std::map<std::string, void*> s_answers;
    return s_answers;
}

void** FindSlot(const char* name) {
    const auto [answer, isNew] = Answers().try_emplace(name);
    if (isNew) answer->second = SystemFunction(name);
    return &answer->second;
}

// Before the first Platform: replacements are among its members.
[[maybe_unused]] const bool g_hasTable = (ReplacedImport::ReplaceIn(&FindSlot), true);

}  // namespace

Platform::Platform() {
    handles.keepsCalls = false;
    converters.planner = [this](const ScriptedConverters::Start& start, int number) {
        return PlanFor(start, number);
    };
    PlanConsoles();
    AnswerConverters();
    AnswerDesktop();
    AnswerObjects();
    AnswerProcess();
}

void* Platform::FindAnswer(const std::string& function) {
    const auto answer = Answers().find(function);
    return answer != Answers().end() ? answer->second : nullptr;
}

std::filesystem::path Platform::FillFolder() const {
    std::ofstream(std::filesystem::path(File(L"pdf2djvu.exe"))) << "stand-in";
    // For its version resource.
    const std::filesystem::path built = driver::OwnPath().parent_path() / TALVENOR_PROGRAM;
    if (!::CopyFileW(built.c_str(), File(L"Talvenor.exe").c_str(), FALSE)) {
        throw std::runtime_error("the built program is not where it should be");
    }
    const std::filesystem::path elsewhere = File(kElsewhere);
    std::filesystem::create_directory(elsewhere);
    return elsewhere;
}

std::vector<std::string> Platform::Requests(const std::string& kind) const {
    const std::lock_guard lock(m_lock);
    return m_requests.at(kind);
}

// The log as text: it is written in the system's code page.
std::string Platform::ReadLog() const {
    const std::filesystem::path log = File(L"TalvenorLog.txt");
    if (!std::filesystem::exists(log)) return "none";
    std::ifstream file(log, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const int size = static_cast<int>(bytes.size());
    std::wstring text(bytes.size(), L'\0');
    text.resize(
        static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), size)));
    return Utf8(text);
}

Facts Platform::State() const {
    std::vector<std::string> strays;
    for (const auto& entry : std::filesystem::directory_iterator(File(kElsewhere))) {
        strays.push_back(entry.path().filename().string());
    }
    Facts facts = {{"log", ReadLog()},
                   {"outsideJob", Numbers(NumbersOf([](const Converter& one) { return !one.isInJob; }), ' ')},
                   {"strays", Lines(strays)}};
    // Only now: the converters have a lock of their own.
    const std::lock_guard lock(m_lock);
    facts["timers"] = Numbers(m_timers, ',');
    facts["awake"] = std::to_string(m_awake.size());
    std::vector<std::string> names;
    for (const auto& [control, name] : m_names) names.push_back(control + ": " + name);
    facts["names"] = Lines(names);
    facts["shown"] = m_taskbarShows;
    for (const auto& [kind, requests] : m_requests) facts[kind] = Lines(requests);
    return facts;
}

Counts Platform::Held() const {
    const std::lock_guard lock(m_lock);
    const auto number = [](const auto& things) { return static_cast<long long>(things.size()); };
    return {{"blocks", number(m_blocks)}, {"icons", number(m_icons)}, {"objects", m_objects}};
}

std::string Platform::Shortened(std::string text) const {
    const std::string folder = Utf8(Folder());
    for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder, at)) {
        text.replace(at, folder.size(), 1, '~');
    }
    return text;
}

void Platform::Note(const std::string& kind, const std::string& text) {
    const std::string shortened = Shortened(text);
    const std::lock_guard lock(m_lock);
    m_requests.at(kind).push_back(shortened);
}
