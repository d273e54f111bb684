#include "tests/equipment/system_program_swap.h"

#include <windows.h>

#include "tests/equipment/failure.h"
#include "tests/equipment/wait_until.h"
#include "tests/equipment/wine.h"

namespace driver {
namespace {

// A program that has just ended may still be open for a moment.
constexpr Milliseconds kFreeLimit{10'000};

}  // namespace

SystemProgramSwap::SystemProgramSwap(const std::wstring& program, const std::wstring& replacement)
    : m_program(program), m_saved(program + L".saved") {
    if (!UnderWine()) throw Failure("the programs of a real Windows are never replaced");
    if (!::MoveFileExW(m_program.c_str(), m_saved.c_str(), 0)) FailCall("MoveFileExW", ::GetLastError());
    if (!::CopyFileW(replacement.c_str(), m_program.c_str(), TRUE)) {
        const DWORD error = ::GetLastError();
        ::MoveFileExW(m_saved.c_str(), m_program.c_str(), 0);
        FailCall("CopyFileW", error);
    }
}

SystemProgramSwap::~SystemProgramSwap() {
    // A failure shows in the next test that needs the program, and is mended by the next start of the
    // session.
    static_cast<void>(WaitUntil(
        [&] { return ::MoveFileExW(m_saved.c_str(), m_program.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE; },
        kFreeLimit));
}

std::unique_ptr<SystemProgramSwap> SwapInterpreter(const std::wstring& replacement) {
    wchar_t folder[MAX_PATH] = {};
    if (!::GetSystemDirectoryW(folder, MAX_PATH)) FailCall("GetSystemDirectoryW", ::GetLastError());
    return std::make_unique<SystemProgramSwap>(std::wstring(folder) + L"\\cmd.exe", replacement);
}

}  // namespace driver
