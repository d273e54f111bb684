// Puts another program in cmd.exe's place in the system folder, or takes cmd.exe away, for the life of this
// object; see system_program_swap.h.
#pragma once
#include <string>

#include "tests/equipment/system_program_swap.h"

namespace driver {

class InterpreterSwap : public SystemProgramSwap {
public:
    // An empty path takes the interpreter away. Throws Failure, also on a real Windows.
    explicit InterpreterSwap(const std::wstring& replacement);
};

}  // namespace driver
