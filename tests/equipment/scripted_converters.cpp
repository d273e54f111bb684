#include "tests/equipment/scripted_converters.h"

#include "tests/support/call_text.h"

#include <algorithm>
#include <utility>

namespace {

HANDLE Duplicate(HANDLE handle) {
    HANDLE copy = nullptr;
    const HANDLE self = ::GetCurrentProcess();
    ::DuplicateHandle(self, handle, self, &copy, 0, FALSE, DUPLICATE_SAME_ACCESS);
    return copy;
}

constexpr std::string_view kProcess = "process ";

// How records call the process of a converter, whichever handle to it is used.
std::string ProcessName(std::size_t number) {
    return std::string(kProcess) + std::to_string(number);
}

}  // namespace

ScriptedConverters::ScriptedConverters(WorkerCalls& calls) : m_calls(calls) {
    ReplaceProcessCalls();
    ReplaceConsoleCalls();
}

void ScriptedConverters::ReplaceProcessCalls() {
    m_replaced.push_back(REPLACE_IMPORT(
        CreateProcessW,
        [this](auto original, LPCWSTR interpreter, LPWSTR arguments, LPSECURITY_ATTRIBUTES processSecurity,
               LPSECURITY_ATTRIBUTES threadSecurity, BOOL inheritsHandles, DWORD flags, LPVOID environment,
               LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION process) -> BOOL {
            m_calls.Note("CreateProcessW");
            const Conversion plan = Begin({interpreter, arguments, folder, startup->lpTitle, *startup,
                                           processSecurity || threadSecurity, inheritsHandles != FALSE, flags,
                                           environment != nullptr, ::GetCurrentThreadId()},
                                          *process);
            if (plan.realCommand) {
                std::wstring command = plan.realCommand;
                const BOOL started = original(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                              nullptr, startup, process);
                if (started) m_calls.NameHandle(process->hProcess, "real process");
                return started;
            }
            // The system may write into both of these, and a buffer that must not be written to would fault
            // here.
            arguments[0] = L'\0';
            startup->lpTitle[0] = L'\0';
            if (plan.startError == 0) return TRUE;
            ++m_awaited;
            ::SetLastError(plan.startError);  // last: nothing here may change it
            return FALSE;
        }));
    m_replaced.push_back(
        REPLACE_IMPORT(AssignProcessToJobObject, [this](auto original, HANDLE job, HANDLE process) {
            m_calls.Note("AssignProcessToJobObject " + (job ? m_calls.HandleName(process) : "without a job"));
            const std::lock_guard lock(m_lock);
            Converter* const converter = Find(process);
            if (!converter) return original(job, process);
            converter->isInJob = true;
            return TRUE;
        }));
    m_replaced.push_back(
        REPLACE_IMPORT(WaitForSingleObject, [this](auto original, HANDLE handle, DWORD milliseconds) {
            const std::string name = m_calls.HandleName(handle);
            if (name.empty()) return original(handle, milliseconds);
            ++m_awaited;
            m_calls.Note(CallText("WaitForSingleObject", name,
                                  milliseconds == INFINITE ? "INFINITE" : std::to_string(milliseconds)));
            const DWORD result = original(handle, milliseconds);
            const std::lock_guard lock(m_lock);
            if (const Converter* const converter = Find(handle); converter && result == WAIT_OBJECT_0) {
                tick += converter->plan.durationMs;
            }
            return result;
        }));
    m_replaced.push_back(
        REPLACE_IMPORT(GetExitCodeProcess, [this](auto original, HANDLE process, LPDWORD code) {
            const std::string name = m_calls.HandleName(process);
            if (!name.starts_with(kProcess)) return original(process, code);
            m_calls.Note("GetExitCodeProcess " + name);
            const std::lock_guard lock(m_lock);
            const Converter& converter = *Find(process);
            *code = converter.end ? STILL_ACTIVE : converter.plan.exitCode;
            return TRUE;
        }));
    m_replaced.push_back(REPLACE_IMPORT(CloseHandle, [this](auto original, HANDLE handle) {
        if (const std::string name = m_calls.HandleName(handle); !name.empty()) {
            m_calls.Note("CloseHandle " + name);
            m_calls.ForgetHandle(handle);
        }
        return original(handle);
    }));
    // As the system: a process can be opened as long as it runs or somebody holds it.
    m_replaced.push_back(REPLACE_IMPORT(
        OpenProcess, [this](auto original, DWORD access, BOOL inherits, DWORD processId) -> HANDLE {
            consoles.requests.Add(CallText("OpenProcess", processId, "access=" + Hex(access)) +
                                  (inherits ? " inherited" : ""));
            if (consoles.whenOpened) consoles.whenOpened();
            if (!consoles.canOpenProcesses) return nullptr;
            const std::vector<Converter> all = Converters();
            const auto last = std::find_if(all.rbegin(), all.rend(), [&](const Converter& converter) {
                return converter.plan.processId == processId;
            });
            if (last == all.rend()) return original(access, inherits, processId);
            if (!last->end && !last->isHeld) {
                ::SetLastError(ERROR_INVALID_PARAMETER);
                return nullptr;
            }
            const HANDLE process = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
            m_calls.NameHandle(process, ProcessName(static_cast<std::size_t>(all.rend() - last)));
            return process;
        }));
    m_replaced.push_back(REPLACE_IMPORT(GetTickCount, [this]() -> DWORD {
        m_calls.Note("GetTickCount");
        return tick;
    }));
}

void ScriptedConverters::Plan(std::vector<Conversion> conversions) {
    const std::lock_guard lock(m_lock);
    m_plan = std::move(conversions);
}

void ScriptedConverters::HoldAll() {
    const std::lock_guard lock(m_lock);
    m_unplanned.held = true;
}

void ScriptedConverters::Release(int number, std::optional<DWORD> exitCode) {
    const std::lock_guard lock(m_lock);
    End(m_converters.at(static_cast<std::size_t>(number) - 1), exitCode);
}

void ScriptedConverters::ReleaseAll(std::optional<DWORD> exitCode) {
    const std::lock_guard lock(m_lock);
    m_nothingHeld = true;
    if (exitCode) m_unplanned.exitCode = *exitCode;
    for (Converter& converter : m_converters) End(converter, exitCode);
}

std::vector<ScriptedConverters::Start> ScriptedConverters::Starts() const {
    const std::lock_guard lock(m_lock);
    return m_starts;
}

std::vector<ScriptedConverters::Converter> ScriptedConverters::Converters() const {
    const std::lock_guard lock(m_lock);
    std::vector<Converter> converters = m_converters;
    for (std::size_t i = 0; i < converters.size(); ++i) {
        converters[i].isHeld = m_calls.HasHandle(ProcessName(i + 1));
    }
    return converters;
}

Conversion ScriptedConverters::Begin(Start start, PROCESS_INFORMATION& process) {
    const std::lock_guard lock(m_lock);
    const std::size_t number = m_converters.size() + 1;
    Conversion plan = planner ? planner(start, static_cast<int>(number)) : m_unplanned;
    if (!planner) m_starts.push_back(std::move(start));
    if (!m_plan.empty()) {
        plan = m_plan.front();
        m_plan.erase(m_plan.begin());
    }
    if (plan.startError != 0 || plan.realCommand) return plan;
    const bool isHeld = plan.held && !m_nothingHeld;
    process.hProcess = ::CreateEventW(nullptr, TRUE, !isHeld, nullptr);
    process.hThread = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    process.dwProcessId = plan.processId;
    process.dwThreadId = 1;
    m_converters.push_back({plan, isHeld ? Duplicate(process.hProcess) : nullptr});
    m_calls.NameHandle(process.hProcess, ProcessName(number));
    m_calls.NameHandle(process.hThread, "thread " + std::to_string(number));
    return plan;
}

ScriptedConverters::Converter* ScriptedConverters::Find(HANDLE process) {
    const std::string name = m_calls.HandleName(process);
    if (!name.starts_with(kProcess)) return nullptr;
    return &m_converters.at(std::stoul(name.substr(kProcess.size())) - 1);
}

void ScriptedConverters::End(Converter& converter, std::optional<DWORD> exitCode) {
    if (!converter.end) return;
    if (exitCode) converter.plan.exitCode = *exitCode;
    ::SetEvent(converter.end);
    ::CloseHandle(converter.end);
    converter.end = nullptr;
}
