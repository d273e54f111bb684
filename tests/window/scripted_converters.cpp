#include "tests/window/scripted_converters.h"

#include <algorithm>
#include <utility>

namespace {

HANDLE Duplicate(HANDLE handle) {
    HANDLE copy = nullptr;
    const HANDLE self = ::GetCurrentProcess();
    ::DuplicateHandle(self, handle, self, &copy, 0, FALSE, DUPLICATE_SAME_ACCESS);
    return copy;
}

}  // namespace

ScriptedConverters::ScriptedConverters(WorkerCalls& calls) : m_calls(calls) {
    m_replaced.push_back(Replace<decltype(::CreateProcessW)>(
        "CreateProcessW",
        [this](LPCWSTR interpreter, LPWSTR arguments, LPSECURITY_ATTRIBUTES processSecurity,
               LPSECURITY_ATTRIBUTES threadSecurity, BOOL inheritsHandles, DWORD flags, LPVOID environment,
               LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION process) {
            m_calls.Note("CreateProcessW");
            Start start;
            start.interpreter = interpreter;
            start.arguments = arguments;
            start.folder = folder;
            start.title = startup->lpTitle;
            start.startup = *startup;
            start.ownSecurity = processSecurity || threadSecurity;
            start.inheritsHandles = inheritsHandles != FALSE;
            start.flags = flags;
            start.ownEnvironment = environment != nullptr;
            start.workerId = ::GetCurrentThreadId();
            // The system may write into both of these, and a buffer that must not be written to would fault
            // here.
            arguments[0] = L'\0';
            startup->lpTitle[0] = L'\0';
            const DWORD startError = Begin(std::move(start), *process);
            if (startError == 0) return TRUE;
            ::SetLastError(startError);  // last: nothing here may change it
            return FALSE;
        }));
    m_replaced.push_back(Replace<decltype(::WaitForSingleObject)>(
        "WaitForSingleObject", [this](auto original, HANDLE handle, DWORD milliseconds) {
            const std::string name = m_calls.HandleName(handle);
            if (name.empty()) return original(handle, milliseconds);
            m_calls.Note("WaitForSingleObject " + name + ' ' +
                         (milliseconds == INFINITE ? "INFINITE" : std::to_string(milliseconds)));
            const DWORD result = original(handle, milliseconds);
            if (Converter converter; result == WAIT_OBJECT_0 && Find(handle, converter)) {
                tick += converter.plan.durationMs;
            }
            return result;
        }));
    m_replaced.push_back(Replace<decltype(::GetExitCodeProcess)>(
        "GetExitCodeProcess", [this](auto original, HANDLE process, LPDWORD code) {
            Converter converter;
            if (!Find(process, converter)) return original(process, code);
            m_calls.Note("GetExitCodeProcess " + m_calls.HandleName(process));
            const bool hasEnded = ::WaitForSingleObject(converter.released, 0) == WAIT_OBJECT_0;
            *code = hasEnded ? converter.plan.exitCode : STILL_ACTIVE;
            return TRUE;
        }));
    m_replaced.push_back(
        Replace<decltype(::CloseHandle)>("CloseHandle", [this](auto original, HANDLE handle) {
            if (const std::string name = m_calls.HandleName(handle); !name.empty()) {
                m_calls.Note("CloseHandle " + name);
                m_calls.ForgetHandle(handle);
            }
            return original(handle);
        }));
    m_replaced.push_back(Replace<decltype(::GetTickCount)>("GetTickCount", [this]() -> DWORD {
        m_calls.Note("GetTickCount");
        return tick;
    }));
}

ScriptedConverters::~ScriptedConverters() {
    for (const Converter& converter : m_converters) ::CloseHandle(converter.released);
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
    Converter& converter = m_converters.at(static_cast<std::size_t>(number) - 1);
    if (exitCode) converter.plan.exitCode = *exitCode;
    ::SetEvent(converter.released);
}

void ScriptedConverters::ReleaseAll(std::optional<DWORD> exitCode) {
    const std::lock_guard lock(m_lock);
    m_nothingHeld = true;
    if (exitCode) m_unplanned.exitCode = *exitCode;
    for (Converter& converter : m_converters) {
        const bool hasEnded = ::WaitForSingleObject(converter.released, 0) == WAIT_OBJECT_0;
        if (exitCode && !hasEnded) converter.plan.exitCode = *exitCode;
        ::SetEvent(converter.released);
    }
}

std::vector<Start> ScriptedConverters::Starts() const {
    const std::lock_guard lock(m_lock);
    return m_starts;
}

DWORD ScriptedConverters::Begin(Start start, PROCESS_INFORMATION& process) {
    const std::lock_guard lock(m_lock);
    m_starts.push_back(std::move(start));
    Conversion plan = m_unplanned;
    if (!m_plan.empty()) {
        plan = m_plan.front();
        m_plan.erase(m_plan.begin());
    }
    if (plan.startError != 0) return plan.startError;
    const std::string number = std::to_string(m_converters.size() + 1);
    const bool endsAtOnce = !plan.held || m_nothingHeld;
    const HANDLE ended = ::CreateEventW(nullptr, TRUE, endsAtOnce, nullptr);
    process.hProcess = ended;
    process.hThread = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    process.dwProcessId = plan.processId;
    process.dwThreadId = 1;
    m_converters.push_back({plan, ended, Duplicate(ended)});
    m_calls.NameHandle(process.hProcess, "process " + number);
    m_calls.NameHandle(process.hThread, "thread " + number);
    return 0;
}

bool ScriptedConverters::Find(HANDLE handle, Converter& found) const {
    if (!m_calls.HandleName(handle).starts_with("process ")) return false;
    const std::lock_guard lock(m_lock);
    // From the end: the value of a handle that was closed is used again.
    const auto converter = std::find_if(m_converters.rbegin(), m_converters.rend(),
                                        [&](const Converter& one) { return one.ended == handle; });
    if (converter == m_converters.rend()) return false;
    found = *converter;
    return true;
}
