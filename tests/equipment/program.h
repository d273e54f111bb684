// A program under test, running in a process of its own: started as from the file explorer (no console to
// inherit), watched, and ended with everything it started when its owner gives up.
#pragma once
#include <windows.h>

#include <map>
#include <optional>
#include <string>

#include "tests/equipment/process_start.h"
#include "tests/equipment/wait_until.h"

namespace driver {

struct StartOptions {
    std::wstring arguments{};                            // as they follow the program's name, quotes included
    std::wstring directory{};                            // empty: the directory of the starting process
    std::map<std::wstring, std::wstring> environment{};  // added to the inherited one; an empty value removes
    std::optional<WORD> show{};                          // how the program is asked to show its window
};

class Program {
public:
    // Throws Failure when the program cannot be started.
    explicit Program(const std::wstring& path, const StartOptions& options = {});
    // Ends the whole process tree: no converter outlives the test that started it.
    ~Program() = default;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] DWORD Id() const noexcept { return m_tree.id; }
    [[nodiscard]] HANDLE Process() const noexcept { return m_tree.process.Get(); }
    [[nodiscard]] bool HasEnded() const noexcept;

    // The exit code, or nothing when the program still runs at the deadline.
    [[nodiscard]] std::optional<DWORD> WaitForExit(Milliseconds limit) const;

    // Whether nothing that the program has started runs any more.
    [[nodiscard]] bool IsAlone() const { return m_tree.Running() == 1; }

    // Ends the program and whatever it started, at once.
    void EndTree() const { m_tree.End(); }

private:
    ProcessTree m_tree;
};

}  // namespace driver
