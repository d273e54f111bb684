#include "tests/faults/harness/platform.h"

#include "tests/faults/harness/child_process.h"
#include "tests/faults/harness/program_host.h"
#include "tests/support/utf8.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

constexpr wchar_t kElsewhere[] = L"ailleurs";

}  // namespace

Platform::Platform() {
    MakeFolder();
}

Platform::~Platform() {
    EndConverters(1);
    ::SetCurrentDirectoryW(m_previousDirectory.c_str());
    std::error_code ignored;  // the next run of this test has another folder
    std::filesystem::remove_all(m_folder, ignored);
}

Platform& Platform::Current() {
    return CurrentHost().ThePlatform();
}

void* Platform::FindDouble(const std::string& function) {
    static const Doubles kDoubles = [] {
        Doubles doubles;
        AddConverters(doubles);
        AddDesktop(doubles);
        AddObjects(doubles);
        AddProcess(doubles);
        return doubles;
    }();
    const auto found = kDoubles.find(function);
    return found != kDoubles.end() ? found->second : nullptr;
}

void Platform::MakeFolder() {
    static int count = 0;
    std::array<wchar_t, 64> name{};
    ::wsprintfW(name.data(), L"talvenor-faults-%08x-%04x", ::GetCurrentProcessId(), ++count);
    const auto path = std::filesystem::temp_directory_path() / name.data();
    // A process of the same number may have been ended before it could remove its own.
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(path / kElsewhere);
    m_folder = path.wstring();
    std::ofstream(path / "pdf2djvu.exe") << "stand-in";
    // For its version resource.
    const std::filesystem::path built = TestFolder() / TALVENOR_PROGRAM;
    if (!::CopyFileW(built.c_str(), File(L"Talvenor.exe").c_str(), FALSE)) {
        throw std::runtime_error("the built program is not where it should be");
    }
    m_previousDirectory = std::filesystem::current_path().wstring();
    ::SetCurrentDirectoryW((path / kElsewhere).c_str());
}

void Platform::EndConverters(DWORD exitCode, int number) {
    const SystemLockHold lock = Lock();
    for (auto& [own, converter] : m_converters) {
        if (number == 0 || own == number) End(converter, exitCode);
    }
}

void Platform::End(Converter& converter, DWORD exitCode) {
    if (!converter.ended) return;
    converter.exitCode = exitCode;
    ::SetEvent(converter.ended);
    ::CloseHandle(converter.ended);
    converter.ended = nullptr;
}

Platform::Converter* Platform::FindConverter(HANDLE process) {
    const auto found = std::find_if(m_converters.begin(), m_converters.end(),
                                    [&](const auto& entry) { return entry.second.held.contains(process); });
    return found != m_converters.end() ? &found->second : nullptr;
}

std::vector<std::string> Platform::Requests(const std::string& kind) const {
    const SystemLockHold lock = Lock();
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
    std::vector<std::string> timers;
    for (const UINT_PTR id : m_timers.All()) timers.push_back(std::to_string(id));
    std::vector<std::string> strays;
    for (const auto& entry : std::filesystem::directory_iterator(File(kElsewhere))) {
        strays.push_back(entry.path().filename().string());
    }
    Facts facts = {{"awake", std::to_string(m_awake.Count())},
                   {"timers", Lines(timers, ',')},
                   {"log", ReadLog()},
                   {"strays", Lines(strays)}};
    const SystemLockHold lock = Lock();
    std::vector<std::string> outsideJob;
    for (const auto& [number, converter] : m_converters) {
        if (!converter.isInJob) outsideJob.push_back(std::to_string(number));
    }
    std::vector<std::string> names;
    for (const auto& [control, name] : m_names) names.push_back(control + ": " + name);
    facts["outsideJob"] = Lines(outsideJob, ' ');
    facts["names"] = Lines(names);
    facts["shown"] = m_taskbarShows;
    for (const auto& [kind, requests] : m_requests) facts[kind] = Lines(requests);
    return facts;
}

std::map<std::string, int> Platform::Held() const {
    return {{"blocks", m_blocks.Count()}, {"icons", m_icons.Count()}, {"objects", m_objects.load()}};
}

std::string Platform::Shortened(std::string text) const {
    const std::string folder = Utf8(m_folder);
    for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder, at)) {
        text.replace(at, folder.size(), 1, '~');
    }
    return text;
}

void Platform::Note(const std::string& kind, const std::string& text) {
    const std::string shortened = Shortened(text);
    const SystemLockHold lock = Lock();
    m_requests.at(kind).push_back(shortened);
}
