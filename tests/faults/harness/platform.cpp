#include "tests/faults/harness/platform.h"

#include "tests/faults/harness/lock_hold.h"
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
    for (auto& [process, converter] : m_running) {
        if (!converter.ended || (number != 0 && converter.number != number)) continue;
        converter.exitCode = exitCode;
        ::SetEvent(converter.ended);
        ::CloseHandle(converter.ended);
        converter.ended = nullptr;
    }
}

bool Platform::ConverterRuns() const {
    const SystemLockHold lock(m_lock);
    return std::any_of(m_running.begin(), m_running.end(),
                       [](const auto& entry) { return entry.second.ended != nullptr; });
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
