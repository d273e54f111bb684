#include "tests/equipment/program.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"

namespace driver {
namespace {

struct NameLess {
    // Names of environment variables are compared without regard to case, and a block is sorted that way.
    bool operator()(const std::wstring& left, const std::wstring& right) const {
        return ::CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                      static_cast<int>(right.size()), TRUE) == CSTR_LESS_THAN;
    }
};
using Environment = std::map<std::wstring, std::wstring, NameLess>;

Environment InheritedEnvironment() {
    Environment environment;
    wchar_t* const block = ::GetEnvironmentStringsW();
    if (!block) FailCall("GetEnvironmentStringsW", ::GetLastError());
    for (const wchar_t* entry = block; *entry;) {
        const std::wstring text(entry);
        // From 1 on: a drive's current directory is kept under a name that begins with "=".
        const std::size_t equals = text.find(L'=', 1);
        if (equals != std::wstring::npos) environment[text.substr(0, equals)] = text.substr(equals + 1);
        entry += text.size() + 1;
    }
    ::FreeEnvironmentStringsW(block);
    return environment;
}

std::wstring EnvironmentBlock(const std::map<std::wstring, std::wstring>& changes) {
    Environment environment = InheritedEnvironment();
    for (const auto& [name, value] : changes) {
        environment.erase(name);
        if (!value.empty()) environment[name] = value;
    }
    std::wstring block;
    for (const auto& [name, value] : environment)
        block.append(name).append(1, L'=').append(value).append(1, L'\0');
    block += L'\0';
    return block;
}

}  // namespace

Program::Program(const std::wstring& path, const StartOptions& options) {
    std::wstring commandLine = L'"' + path + L'"';
    if (!options.arguments.empty()) commandLine += L' ' + options.arguments;
    std::wstring environment = EnvironmentBlock(options.environment);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    if (options.show) {
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = *options.show;
    }
    // Detached: with a console to inherit, every converter would write into ours instead of opening its own.
    constexpr DWORD kFlags = DETACHED_PROCESS | CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT;
    const wchar_t* const directory = options.directory.empty() ? nullptr : options.directory.c_str();
    m_tree = StartProcessTree(ToUtf8(path), [&](PROCESS_INFORMATION* started) {
        return ::CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, kFlags,
                                environment.data(), directory, &startup, started);
    });
}

bool Program::HasEnded() const noexcept {
    return ::WaitForSingleObject(Process(), 0) == WAIT_OBJECT_0;
}

std::optional<DWORD> Program::WaitForExit(Milliseconds limit) const {
    // The handle decides, not the code: 259 is a code like any other, although it also reads STILL_ACTIVE.
    const DWORD answer = ::WaitForSingleObject(Process(), static_cast<DWORD>(limit.count()));
    if (answer == WAIT_TIMEOUT) return std::nullopt;
    if (answer != WAIT_OBJECT_0) FailCall("WaitForSingleObject", ::GetLastError());
    DWORD code = 0;
    if (!::GetExitCodeProcess(Process(), &code)) FailCall("GetExitCodeProcess", ::GetLastError());
    return code;
}

}  // namespace driver
