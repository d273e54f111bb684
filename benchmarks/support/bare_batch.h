// Runs a batch as bare_batch.exe does it, in a process of its own.
#pragma once

#include "benchmarks/support/batch_window.h"
#include "benchmarks/support/installation.h"

#include "tests/equipment/program.h"

#include <string>
#include <vector>

// With a window, that one shows the files being converted as Talvenor does.
enum class BareWindow { None, Shown };

class BareBatch {
public:
    // `program` is bare_batch.exe in the folder of `installation`. The batch runs from here on.
    BareBatch(const Installation& installation, const std::wstring& program,
              const std::vector<std::wstring>& paths, Consoles consoles, BareWindow window);

    [[nodiscard]] const driver::Program& Process() const noexcept { return m_program; }

    // Whether the batch is over, and the window gone.
    [[nodiscard]] bool IsFinished() const;

    struct Cost {
        double wallMs = 0;
        double cpuMs = 0;  // the process's own
    };
    // Waits for the end of the batch. Throws driver::Failure when it failed.
    [[nodiscard]] Cost Finish() const;

private:
    const Installation& m_installation;
    const driver::Program m_program;
};
