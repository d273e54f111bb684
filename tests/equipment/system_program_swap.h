// Puts another program in the place of one of the system's, for the life of this object. For a Wine session
// only, whose system folders belong to it alone. Wine has to be told to take a program of that name from its
// file (scripts/lib.sh does, for the interpreter), or it keeps using its own.
//
// One test at a time: ctest needs RESOURCE_LOCK or RUN_SERIAL for tests that use it. A test that is killed
// leaves the swap behind; the next start of the session undoes it.
#pragma once
#include <memory>
#include <string>

namespace driver {

class SystemProgramSwap {
public:
    // Throws Failure, also on a real Windows.
    SystemProgramSwap(const std::wstring& program, const std::wstring& replacement);
    ~SystemProgramSwap();
    SystemProgramSwap(const SystemProgramSwap&) = delete;
    SystemProgramSwap& operator=(const SystemProgramSwap&) = delete;

private:
    std::wstring m_program;
    std::wstring m_saved;
};

// In the place of cmd.exe.
std::unique_ptr<SystemProgramSwap> SwapInterpreter(const std::wstring& replacement);

}  // namespace driver
