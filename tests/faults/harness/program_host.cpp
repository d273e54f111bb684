#include "tests/faults/harness/program_host.h"

#include "tests/equipment/window_driver.h"
#include "tests/faults/harness/failure_table.h"
#include "tests/faults/harness/import_thunks.h"
#include "tests/support/replaced_imports.h"

#include "res/resource.h"

#include <stdexcept>

namespace {

ProgramHost* g_current = nullptr;

constexpr driver::Milliseconds kEndLimit{15'000};
constexpr wchar_t kLibrary[] = L"fault_product.dll";

}  // namespace

ProgramHost& CurrentHost() {
    return *g_current;
}

bool IsInProgram(const void* address) {
    MEMORY_BASIC_INFORMATION region = {};
    ::VirtualQuery(address, &region, sizeof region);
    return region.AllocationBase && region.AllocationBase == ::GetModuleHandleW(kLibrary);
}

// Called by the library while it is being loaded, before its own code runs.
extern "C" __declspec(dllexport) void TakeOverImports(HMODULE library) {
    for (const ImportSlot& slot : ImportSlots(library)) {
        WriteImportSlot(slot.address, CurrentHost().Wrap(slot.name, *slot.address));
    }
}

ProgramHost::ProgramHost() {
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

void ProgramHost::Start() {
    const auto run = [](void* host) -> DWORD {
        static_cast<ProgramHost*>(host)->Run();
        return 0;
    };
    m_thread = ::CreateThread(nullptr, 0, run, this, 0, &m_threadId);
    if (!m_thread) throw std::runtime_error("no thread for the program");
}

bool ProgramHost::WaitForEnd() const {
    if (!driver::WaitUntil([this] { return HasEnded(); }, kEndLimit)) return false;
    // The system takes back what a thread had only when it is really gone.
    return m_life != Life::Ended ||
           ::WaitForSingleObject(m_thread, static_cast<DWORD>(kEndLimit.count())) == WAIT_OBJECT_0;
}

HWND ProgramHost::MainWindow() const {
    for (const HWND window : driver::TopLevelWindows()) {
        const bool isPrograms = ::GetWindowThreadProcessId(window, nullptr) == m_threadId;
        if (isPrograms && driver::FindControl(window, IDC_FILE_LIST)) return window;
    }
    return nullptr;
}

void* ProgramHost::Wrap(const std::string& name, void* real) {
    void* const answer = Platform::FindAnswer(name);
    if (!answer && !FindFailure(name)) return real;
    return WatchedCode(name, answer ? answer : real);
}

void ProgramHost::ProcessEnds(UINT exitCode) {
    m_exitCode = static_cast<int>(exitCode);
    m_life = Life::EndedByExitProcess;
    for (;;) ::SuspendThread(::GetCurrentThread());
}

void ProgramHost::Run() {
    watch.SetUiThread(::GetCurrentThreadId());
    const HMODULE library = ::LoadLibraryW(kLibrary);
    if (!library) throw std::runtime_error("the program's library cannot be loaded");
    const auto run =
        reinterpret_cast<int (*)()>(reinterpret_cast<void*>(::GetProcAddress(library, "RunProgram")));
    m_exitCode = run();
    ::FreeLibrary(library);
    m_life = Life::Ended;
}
