// A program under test, running in a process of its own: started as from the file explorer (no console to
// inherit), watched, and ended with everything it started when its owner gives up.
#pragma once
#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "tests/equipment/process_start.h"
#include "tests/equipment/wait_until.h"

namespace driver {

using Variables = std::map<std::wstring, std::wstring>;  // of an environment; an empty value: there is none

struct StartOptions {
    std::wstring arguments{};    // as they follow the program's name, quotes included
    std::wstring directory{};    // empty: the directory of the starting process
    Variables environment{};     // in place of the inherited ones
    std::optional<WORD> show{};  // how the program is asked to show its window
};

// While one lives, this process has other variables: what it starts inherits them.
class ExchangedVariables {
public:
    explicit ExchangedVariables(Variables variables) : m_others(std::move(variables)) { Exchange(); }
    ~ExchangedVariables() { Exchange(); }
    ExchangedVariables(const ExchangedVariables&) = delete;
    ExchangedVariables& operator=(const ExchangedVariables&) = delete;

private:
    void Exchange() {
        for (auto& [name, value] : m_others) {
            std::wstring before(::GetEnvironmentVariableW(name.c_str(), nullptr, 0), L'\0');
            before.resize(
                ::GetEnvironmentVariableW(name.c_str(), before.data(), static_cast<DWORD>(before.size())));
            ::SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : value.c_str());
            value = before;
        }
    }

    Variables m_others;
};

class Program {
public:
    // Throws Failure when the program cannot be started.
    explicit Program(const std::wstring& path, const StartOptions& options = {}) {
        std::wstring commandLine = L'"' + path + L'"';
        if (!options.arguments.empty()) commandLine += L' ' + options.arguments;
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        if (options.show) {
            startup.dwFlags = STARTF_USESHOWWINDOW;
            startup.wShowWindow = *options.show;
        }
        // Detached: with a console to inherit, every converter would write into ours instead of opening its
        // own.
        constexpr DWORD kFlags = DETACHED_PROCESS | CREATE_SUSPENDED;
        const wchar_t* const directory = options.directory.empty() ? nullptr : options.directory.c_str();
        const ExchangedVariables inherited(options.environment);
        m_tree = StartProcessTree(ToUtf8(path), [&](PROCESS_INFORMATION* started) {
            return ::CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, kFlags,
                                    nullptr, directory, &startup, started);
        });
    }
    // Ends the whole process tree: no converter outlives the test that started it.
    ~Program() = default;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] DWORD Id() const noexcept { return m_tree.id; }
    [[nodiscard]] HANDLE Process() const noexcept { return m_tree.process.Get(); }
    [[nodiscard]] bool HasEnded() const noexcept {
        return ::WaitForSingleObject(Process(), 0) == WAIT_OBJECT_0;
    }

    // The exit code, or nothing when the program still runs at the deadline.
    [[nodiscard]] std::optional<DWORD> WaitForExit(Milliseconds limit) const {
        // The handle decides, not the code: 259 is one like any other, although it also reads STILL_ACTIVE.
        const DWORD answer = ::WaitForSingleObject(Process(), static_cast<DWORD>(limit.count()));
        if (answer == WAIT_TIMEOUT) return std::nullopt;
        if (answer != WAIT_OBJECT_0) FailCall("WaitForSingleObject", ::GetLastError());
        DWORD code = 0;
        if (!::GetExitCodeProcess(Process(), &code)) FailCall("GetExitCodeProcess", ::GetLastError());
        return code;
    }

    // Whether nothing that the program has started runs any more.
    [[nodiscard]] bool IsAlone() const { return m_tree.Running() == 1; }

    // Ends the program and whatever it started, at once.
    void EndTree() const { m_tree.End(); }

private:
    ProcessTree m_tree;
};

}  // namespace driver
