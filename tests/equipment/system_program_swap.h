// Puts another program in the place of one of the system's, for the life of this object. For a Wine session
// only, whose system folders belong to it alone. Wine has to be told to take a program of that name from its
// file (scripts/lib.sh does, for the interpreter), or it keeps using its own.
//
// One test at a time: ctest needs RESOURCE_LOCK or RUN_SERIAL for tests that use it. A test that is killed
// leaves the swap behind; the next start of the session undoes it.
#pragma once
#include <filesystem>
#include <string>
#include <system_error>

#include "tests/equipment/failure.h"
#include "tests/equipment/wait_until.h"
#include "tests/equipment/wine.h"

namespace driver {

class SystemProgramSwap {
public:
    // Throws when it cannot, and Failure on a real Windows.
    SystemProgramSwap(const std::wstring& program, const std::wstring& replacement)
        : m_program(program), m_saved(program + L".saved") {
        if (!UnderWine()) throw Failure("the programs of a real Windows are never replaced");
        std::filesystem::rename(m_program, m_saved);
        std::filesystem::copy_file(replacement, m_program);
    }
    // A failure shows in the next test that needs the program, and is mended by the next start of the
    // session. A program that has just ended may still be open for a moment.
    ~SystemProgramSwap() {
        static_cast<void>(WaitUntil([&] {
            std::error_code error;
            std::filesystem::rename(m_saved, m_program, error);
            return !error;
        }));
    }
    SystemProgramSwap(const SystemProgramSwap&) = delete;
    SystemProgramSwap& operator=(const SystemProgramSwap&) = delete;

private:
    const std::wstring m_program;
    const std::wstring m_saved;
};

}  // namespace driver
