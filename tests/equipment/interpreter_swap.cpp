#include "tests/equipment/interpreter_swap.h"

#include <windows.h>

#include "tests/equipment/failure.h"

namespace driver {
namespace {

std::wstring InterpreterPath() {
    wchar_t folder[MAX_PATH] = {};
    if (!::GetSystemDirectoryW(folder, MAX_PATH)) FailCall("GetSystemDirectoryW", ::GetLastError());
    return std::wstring(folder) + L"\\cmd.exe";
}

}  // namespace

InterpreterSwap::InterpreterSwap(const std::wstring& replacement)
    : SystemProgramSwap(InterpreterPath(), replacement) {}

}  // namespace driver
