// Puts another program in cmd.exe's place in the system folder, or takes cmd.exe away, for the life of this
// object. For a Wine session only, whose system folder is nobody else's; it must be started with cmd.exe=n,b
// among its DLL overrides (scripts/lib.sh does), or Wine keeps using its own interpreter.
//
// One test at a time: ctest needs RESOURCE_LOCK or RUN_SERIAL for tests that use it. A test that is killed
// leaves the swap behind; the next start of the session undoes it.
#pragma once
#include <string>

namespace driver {

class InterpreterSwap {
public:
    // An empty path takes the interpreter away. Throws Failure, also on a real Windows.
    explicit InterpreterSwap(const std::wstring& replacement);
    ~InterpreterSwap();
    InterpreterSwap(const InterpreterSwap&) = delete;
    InterpreterSwap& operator=(const InterpreterSwap&) = delete;

private:
    std::wstring m_interpreter;
    std::wstring m_saved;
};

}  // namespace driver
