#include "tests/equipment/interpreter_swap.h"

#include <windows.h>

#include "tests/equipment/failure.h"
#include "tests/equipment/wait_until.h"
#include "tests/equipment/wine.h"

namespace driver {
namespace {

// A program that has just ended may still be open for a moment.
constexpr Milliseconds kFreeLimit{10'000};

std::wstring InterpreterPath() {
    wchar_t folder[MAX_PATH] = {};
    if (!::GetSystemDirectoryW(folder, MAX_PATH)) FailCall("GetSystemDirectoryW", ::GetLastError());
    return std::wstring(folder) + L"\\cmd.exe";
}

}  // namespace

InterpreterSwap::InterpreterSwap(const std::wstring& replacement)
    : m_interpreter(InterpreterPath()), m_saved(m_interpreter + L".saved") {
    if (!UnderWine()) throw Failure("the interpreter of a real Windows is never replaced");
    if (!::MoveFileExW(m_interpreter.c_str(), m_saved.c_str(), 0)) FailCall("MoveFileExW", ::GetLastError());
    if (replacement.empty()) return;
    if (!::CopyFileW(replacement.c_str(), m_interpreter.c_str(), TRUE)) {
        const DWORD error = ::GetLastError();
        ::MoveFileExW(m_saved.c_str(), m_interpreter.c_str(), 0);
        FailCall("CopyFileW", error);
    }
}

InterpreterSwap::~InterpreterSwap() {
    // A failure shows in the next test that needs the interpreter, and is mended by the next start of the
    // session.
    static_cast<void>(WaitUntil(
        [&] {
            return ::MoveFileExW(m_saved.c_str(), m_interpreter.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
        },
        kFreeLimit));
}

}  // namespace driver
