#include "tests/faults/harness/platform.h"

#include "tests/faults/harness/lock_hold.h"
#include "tests/faults/harness/outcome.h"
#include "tests/support/utf8.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

constexpr wchar_t kElsewhere[] = L"ailleurs";

std::wstring BuiltProgram() {
    std::array<wchar_t, MAX_PATH> self{};
    ::GetModuleFileNameW(nullptr, self.data(), MAX_PATH);
    return std::filesystem::path(self.data()).parent_path() / TALVENOR_PROGRAM;
}

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

void Platform::MakeFolder() {
    static int count = 0;
    std::array<wchar_t, 64> name{};
    ::wsprintfW(name.data(), L"talvenor-faults-%08x-%04x", ::GetCurrentProcessId(), ++count);
    const auto path = std::filesystem::temp_directory_path() / name.data();
    // A process of the same number may have been ended before it could remove its own.
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(path);
    m_folder = path.wstring();
    std::ofstream(path / "pdf2djvu.exe") << "stand-in";
    // For its version resource.
    if (!::CopyFileW(BuiltProgram().c_str(), File(L"Talvenor.exe").c_str(), FALSE)) {
        throw std::runtime_error("the built program is not where it should be");
    }
    m_previousDirectory = std::filesystem::current_path().wstring();
    std::filesystem::create_directories(path / kElsewhere);
    ::SetCurrentDirectoryW((path / kElsewhere).c_str());
}

std::vector<std::string> Platform::StrayFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(File(kElsewhere))) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

void Platform::EndConverters(DWORD exitCode, int number) {
    const SystemLockHold lock(m_lock);
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

std::string Platform::ConvertersOutsideJob() const {
    const SystemLockHold lock(m_lock);
    std::string numbers;
    for (const auto& [number, converter] : m_converters) {
        if (!converter.isInJob) numbers.append(numbers.empty() ? "" : " ").append(std::to_string(number));
    }
    return numbers;
}

int Platform::AwakeThreads() const {
    const SystemLockHold lock(m_lock);
    return static_cast<int>(m_awake.size());
}

std::string Platform::TaskbarShows() const {
    const SystemLockHold lock(m_lock);
    return m_taskbarShows;
}

std::string Platform::Names() const {
    const SystemLockHold lock(m_lock);
    std::vector<std::string> names;
    for (const auto& [control, name] : m_names) {
        std::string line = control;
        names.push_back(line.append(": ").append(name));
    }
    return Lines(names);
}

int Platform::Blocks() const {
    const SystemLockHold lock(m_lock);
    return static_cast<int>(m_blocks.size());
}

int Platform::Icons() const {
    const SystemLockHold lock(m_lock);
    return static_cast<int>(m_icons.size());
}

std::string Platform::Timers() const {
    const SystemLockHold lock(m_lock);
    std::string ids;
    for (const UINT_PTR id : m_timers) ids.append(ids.empty() ? "" : ",").append(std::to_string(id));
    return ids;
}

std::vector<std::string> Platform::Requests(Request kind) const {
    const SystemLockHold lock(m_lock);
    const auto requests = m_requests.find(kind);
    return requests != m_requests.end() ? requests->second : std::vector<std::string>();
}

std::string Platform::Shortened(std::string text) const {
    const std::string folder = Utf8(m_folder);
    for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder, at)) {
        text.replace(at, folder.size(), 1, '~');
    }
    return text;
}

void Platform::Note(Request kind, const std::string& text) {
    std::string shortened = Shortened(text);
    const SystemLockHold lock(m_lock);
    m_requests[kind].push_back(std::move(shortened));
}
