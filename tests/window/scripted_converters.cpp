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
    s_current = this;
}

ScriptedConverters::~ScriptedConverters() {
    for (const Converter& converter : m_converters) ::CloseHandle(converter.released);
    s_current = nullptr;
}

void ScriptedConverters::Plan(std::vector<Conversion> conversions) {
    const std::lock_guard lock(m_lock);
    m_plan = std::move(conversions);
}

void ScriptedConverters::Release(int number) {
    const std::lock_guard lock(m_lock);
    ::SetEvent(m_converters.at(static_cast<std::size_t>(number) - 1).released);
}

void ScriptedConverters::ReleaseAll() {
    const std::lock_guard lock(m_lock);
    m_nothingHeld = true;
    for (const Converter& converter : m_converters) ::SetEvent(converter.released);
}

std::vector<Start> ScriptedConverters::Starts() const {
    const std::lock_guard lock(m_lock);
    return m_starts;
}

BOOL WINAPI ScriptedConverters::Create(LPCWSTR interpreter, LPWSTR arguments,
                                       LPSECURITY_ATTRIBUTES processSecurity,
                                       LPSECURITY_ATTRIBUTES threadSecurity, BOOL inheritsHandles,
                                       DWORD flags, LPVOID environment, LPCWSTR folder,
                                       LPSTARTUPINFOW startup, LPPROCESS_INFORMATION process) {
    ScriptedConverters& self = *s_current;
    self.m_calls.Note("CreateProcessW");
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
    // The system may write into both of these, and a buffer that must not be written to would fault here.
    arguments[0] = L'\0';
    startup->lpTitle[0] = L'\0';

    DWORD startError = 0;
    {
        const std::lock_guard lock(self.m_lock);
        self.m_starts.push_back(std::move(start));
        Conversion plan;
        if (!self.m_plan.empty()) {
            plan = self.m_plan.front();
            self.m_plan.erase(self.m_plan.begin());
        }
        startError = plan.startError;
        if (startError == 0) {
            const std::string number = std::to_string(self.m_converters.size() + 1);
            const bool endsAtOnce = !plan.held || self.m_nothingHeld;
            const HANDLE ended = ::CreateEventW(nullptr, TRUE, endsAtOnce, nullptr);
            process->hProcess = ended;
            process->hThread = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
            process->dwProcessId = plan.processId;
            process->dwThreadId = 1;
            self.m_converters.push_back({plan, ended, Duplicate(ended)});
            self.m_calls.NameHandle(process->hProcess, "process " + number);
            self.m_calls.NameHandle(process->hThread, "thread " + number);
        }
    }
    if (startError == 0) return TRUE;
    ::SetLastError(startError);  // last: nothing here may change it
    return FALSE;
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

DWORD WINAPI ScriptedConverters::Wait(HANDLE handle, DWORD milliseconds) {
    ScriptedConverters& self = *s_current;
    const auto wait = self.m_wait.Original<decltype(::WaitForSingleObject)>();
    const std::string name = self.m_calls.HandleName(handle);
    if (name.empty()) return wait(handle, milliseconds);
    self.m_calls.Note("WaitForSingleObject " + name + ' ' +
                      (milliseconds == INFINITE ? "INFINITE" : std::to_string(milliseconds)));
    const DWORD result = wait(handle, milliseconds);
    if (Converter converter; result == WAIT_OBJECT_0 && self.Find(handle, converter)) {
        self.tick += converter.plan.durationMs;
    }
    return result;
}

BOOL WINAPI ScriptedConverters::ExitCode(HANDLE process, LPDWORD code) {
    ScriptedConverters& self = *s_current;
    Converter converter;
    if (!self.Find(process, converter)) {
        return self.m_exitCode.Original<decltype(::GetExitCodeProcess)>()(process, code);
    }
    self.m_calls.Note("GetExitCodeProcess " + self.m_calls.HandleName(process));
    *code = ::WaitForSingleObject(converter.released, 0) == WAIT_OBJECT_0 ? converter.plan.exitCode
                                                                          : STILL_ACTIVE;
    return TRUE;
}

BOOL WINAPI ScriptedConverters::Close(HANDLE handle) {
    ScriptedConverters& self = *s_current;
    if (const std::string name = self.m_calls.HandleName(handle); !name.empty()) {
        self.m_calls.Note("CloseHandle " + name);
        self.m_calls.ForgetHandle(handle);
    }
    return self.m_close.Original<decltype(::CloseHandle)>()(handle);
}

DWORD WINAPI ScriptedConverters::Tick() {
    s_current->m_calls.Note("GetTickCount");
    return s_current->tick;
}
