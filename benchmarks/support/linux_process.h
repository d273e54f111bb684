// A process under Wine as the Linux kernel accounts for it, which is finer than what Wine tells: all of its
// threads, Wine's own in them included. On a real Windows there is none, and everything here fails.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class LinuxProcess {
public:
    // The one process that was started by this path. Throws driver::Failure, as every operation does.
    explicit LinuxProcess(const std::wstring& programPath);

    // Times that a thread was put aside since the start, by itself or by the kernel. Threads that have ended
    // are forgotten.
    [[nodiscard]] std::uint64_t ContextSwitches() const;

    // Processor time, in the kernel's ticks of 10 ms. Of threads that have ended too.
    [[nodiscard]] std::uint64_t CpuTicks() const;
    [[nodiscard]] double CpuMilliseconds() const { return static_cast<double>(CpuTicks()) * kTickMs; }

    // Memory that this process has written to and no other shares, in kilobytes: what it has of its own. Code
    // is not among it, which counts as private or shared according to who else runs at the moment.
    [[nodiscard]] std::uint64_t PrivateKilobytes() const;

private:
    static constexpr double kTickMs = 10;

    std::wstring m_folder;  // below /proc
};
