#include "tests/faults/harness/leak_counts.h"

#include "res/resource.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace {

// The first ones bring what the system keeps once in a process.
constexpr int kFirst = 3;
constexpr std::size_t kCounted = 5;

INT_PTR CALLBACK BareDialogProc(HWND /*dialog*/, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return message == WM_INITDIALOG ? TRUE : FALSE;
}

DWORD WINAPI OpenAndDestroy(void* /*unused*/) {
    const HWND dialog = ::CreateDialogParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_MAIN), nullptr,
                                             &BareDialogProc, 0);
    return dialog && ::DestroyWindow(dialog) ? 0 : 1;
}

void RunBareWindow() {
    const HANDLE thread = ::CreateThread(nullptr, 0, &OpenAndDestroy, nullptr, 0, nullptr);
    if (!thread) throw std::runtime_error("no thread for a bare window");
    ::WaitForSingleObject(thread, INFINITE);
    DWORD exitCode = 1;
    ::GetExitCodeThread(thread, &exitCode);
    ::CloseHandle(thread);
    if (exitCode != 0) throw std::runtime_error("no bare window of the program's main dialog");
}

// The middle one of some: now and then the system takes or releases something of its own.
int Measure() {
    for (int i = 0; i < kFirst; ++i) RunBareWindow();
    std::array<int, kCounted> kept = {};
    for (int& one : kept) {
        const int before = GdiObjectCount();
        RunBareWindow();
        one = GdiObjectCount() - before;
    }
    std::sort(kept.begin(), kept.end());
    return kept[kCounted / 2];
}

}  // namespace

int GdiObjectsKeptByTheSystem() {
    static const int s_kept = Measure();
    return s_kept;
}
