// The whole program as a library that the fault tests load, run and unload as often as they like. As a
// library it has an import table of its own: what is counted, replaced or made to fail there concerns the
// program's calls and not those of the test.

#include <windows.h>

extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier): the linker's name

namespace {

HMODULE ThisLibrary() {
    return reinterpret_cast<HMODULE>(&__ImageBase);
}

// Before the program's own static objects, which already call the system, the test takes over the imports.
__attribute__((constructor(101))) void HandOverImports() {
    using TakeOver = void (*)(HMODULE);
    const auto takeOver = reinterpret_cast<TakeOver>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(nullptr), "TakeOverImports")));
    if (takeOver) takeOver(ThisLibrary());
}

}  // namespace

// Runs the program, its window hidden, from its entry to its exit code.
extern "C" __declspec(dllexport) int RunProgram() {
    wchar_t commandLine[] = L"";
    return wWinMain(ThisLibrary(), nullptr, commandLine, SW_HIDE);
}
