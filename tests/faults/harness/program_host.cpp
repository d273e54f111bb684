#include "tests/faults/harness/program_host.h"

#include "tests/equipment/window_driver.h"
#include "tests/faults/harness/failure_table.h"

#include "res/resource.h"

#include <stdexcept>

namespace {

ProgramHost* g_current = nullptr;

constexpr driver::Milliseconds kEndLimit{15'000};
constexpr wchar_t kLibrary[] = L"fault_product.dll";

void* ChooseTarget(const std::string& name, void* real) {
    if (void* const answer = Platform::FindAnswer(name)) return answer;
    return FindFailure(name) ? real : nullptr;
}

}  // namespace

ProgramHost& CurrentHost() {
    return *g_current;
}

bool IsInProgram(const void* address) {
    MEMORY_BASIC_INFORMATION region = {};
    ::VirtualQuery(address, &region, sizeof region);
    return region.AllocationBase && region.AllocationBase == ::GetModuleHandleW(kLibrary);
}

// Called by the library while it is being loaded.
extern "C" __declspec(dllexport) void TakeOverImports(HMODULE library) {
    CurrentHost().TakeOver(library);
}

ProgramHost::ProgramHost(Platform& platform, CallWatch& watch) : m_platform(platform), m_watch(watch) {
    if (g_current) throw std::logic_error("one program at a time");
    g_current = this;
    // What the program's library brings along stays: a system library that comes and goes with it may leave
    // handles behind each time (comdlg32 does, by way of the printing library), which are not the program's.
    for (const wchar_t* const name : {L"comctl32.dll", L"comdlg32.dll", L"ole32.dll", L"shell32.dll"}) {
        ::LoadLibraryW(name);
    }
}

ProgramHost::~ProgramHost() {
    if (m_thread) ::CloseHandle(m_thread);
    g_current = nullptr;
}

void ProgramHost::Start(int showCommand) {
    m_showCommand = showCommand;
    m_thread = ::CreateThread(nullptr, 0, &RunThread, this, 0, &m_threadId);
    if (!m_thread) throw std::runtime_error("no thread for the program");
}

bool ProgramHost::WaitForEnd() const {
    if (!driver::WaitUntil([this] { return HasEnded(); }, kEndLimit)) return false;
    // The system takes back what a thread had only when it is really gone.
    return m_life != Life::Ended ||
           ::WaitForSingleObject(m_thread, static_cast<DWORD>(kEndLimit.count())) == WAIT_OBJECT_0;
}

HWND ProgramHost::MainWindow() const {
    HWND found = nullptr;
    const auto look = [](HWND window, LPARAM main) -> BOOL {
        if (!driver::FindControl(window, IDC_FILE_LIST)) return TRUE;
        *reinterpret_cast<HWND*>(main) = window;
        return FALSE;
    };
    ::EnumThreadWindows(m_threadId, look, reinterpret_cast<LPARAM>(&found));
    return found;
}

void* ProgramHost::WrapFoundFunction(const std::string& name, void* real) {
    return m_thunks.Wrap(name, ChooseTarget(name, real));
}

void ProgramHost::ProcessEnds(UINT exitCode) {
    m_exitCode = static_cast<int>(exitCode);
    m_life = Life::EndedByExitProcess;
    for (;;) ::SuspendThread(::GetCurrentThread());
}

void ProgramHost::TakeOver(HMODULE library) {
    m_thunks.Redirect(library, &ChooseTarget);
}

void* ProgramHost::Route(const ImportedFunction& function, const CallArguments& arguments) {
    void* const sentElsewhere = CurrentHost().m_watch.Route(function.name, arguments);
    return sentElsewhere ? sentElsewhere : function.target;
}

DWORD WINAPI ProgramHost::RunThread(void* host) {
    static_cast<ProgramHost*>(host)->Run();
    return 0;
}

void ProgramHost::Run() {
    m_watch.SetUiThread(::GetCurrentThreadId());
    const HMODULE library = ::LoadLibraryW(kLibrary);
    if (!library) throw std::runtime_error("the program's library cannot be loaded");
    using RunProgram = int (*)(int);
    const auto run =
        reinterpret_cast<RunProgram>(reinterpret_cast<void*>(::GetProcAddress(library, "RunProgram")));
    m_exitCode = run(m_showCommand);
    ::FreeLibrary(library);
    m_life = Life::Ended;
}
