// Opens Talvenor's main window and its About box, and prints the version that the box shows and then, one
// path a line, which libraries are loaded:
//
//   library_lister Talvenor.exe [--add] [NAME]
//
// With --add, "Ajouter" is pressed before; nothing of the dialog that it opens may be there. With a name, the
// running program also loads the library of that name, as any part of it or of the system might, by the bare
// name.
#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <psapi.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tests/equipment/failure.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/remote_memory.h"
#include "tests/equipment/text.h"
#include "tests/equipment/window_driver.h"

namespace {

void LoadByBareName(const driver::Program& program, HWND window, const std::wstring& name) {
    driver::RemoteMemory memory(window, (name.size() + 1) * sizeof(wchar_t));
    memory.Write(name.c_str(), (name.size() + 1) * sizeof(wchar_t));
    // At the same place in every process, like all of this library.
    const auto load = reinterpret_cast<LPTHREAD_START_ROUTINE>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "LoadLibraryW")));
    const UniqueHandle thread(
        ::CreateRemoteThread(program.Process(), nullptr, 0, load, memory.Address(), 0, nullptr));
    if (!thread) driver::FailCall("CreateRemoteThread", ::GetLastError());
    if (::WaitForSingleObject(thread.Get(), static_cast<DWORD>(driver::kSoon.count())) != WAIT_OBJECT_0)
        throw driver::Failure("the library is not loaded and not refused");
}

void PrintLibraries(const driver::Program& program) {
    std::vector<HMODULE> modules(1024);
    DWORD bytes = 0;
    const auto room = static_cast<DWORD>(modules.size() * sizeof(HMODULE));
    if (!::EnumProcessModules(program.Process(), modules.data(), room, &bytes) || bytes > room)
        driver::FailCall("EnumProcessModules", ::GetLastError());
    modules.resize(bytes / sizeof(HMODULE));
    for (const HMODULE module : modules) {
        wchar_t path[MAX_PATH] = {};
        ::GetModuleFileNameExW(program.Process(), module, path, MAX_PATH);
        std::puts(driver::ToUtf8(path).c_str());
    }
}

void Run(const std::wstring& path, bool add, const std::wstring& libraryName) {
    const driver::Program program(path);
    const driver::MainWindow window(program);
    if (add) driver::Ask(window.Control(IDC_ADD), BM_CLICK);
    driver::Click(window.Control(IDC_ABOUT));
    const HWND about = window.WaitForDialog();
    std::puts(driver::ToUtf8(driver::Text(driver::Control(about, IDC_VERSION))).c_str());
    if (!libraryName.empty()) LoadByBareName(program, window.Window(), libraryName);
    PrintLibraries(program);
    driver::AnswerDialog(about, IDOK);
    if (window.Quit() != driver::kExitCodeOfQuit) throw driver::Failure("Quitter ended with another code");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdout), _O_BINARY);
    try {
        const std::vector<std::wstring> words(argv + 1, argv + argc);
        if (words.empty()) throw driver::Failure("library_lister Talvenor.exe [--add] [NAME]");
        const bool add = words.size() > 1 && words[1] == L"--add";
        const std::size_t name = add ? 2 : 1;
        Run(words[0], add, words.size() > name ? words[name] : L"");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "library_lister: %s\n", failure.what());
        return 1;
    }
    return 0;
}
