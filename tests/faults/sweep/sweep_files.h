// What the process that sweeps and the one that started it exchange, by way of two files in a folder.
#pragma once

#include "tests/faults/harness/call_watch.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

inline constexpr char kCallsFile[] = "calls";
inline constexpr char kDifferencesFile[] = "differences";
inline constexpr char kVerdictsFile[] = "verdicts";

// Texts, each on a line of its own whatever it holds.
void WriteLines(const std::filesystem::path& file, const std::vector<std::string>& lines);
[[nodiscard]] std::vector<std::string> ReadLines(const std::filesystem::path& file);

// The calls of a scenario that were recorded or are to fail, in order.
void WriteCalls(const std::filesystem::path& file, const std::vector<CallKey>& calls);
[[nodiscard]] std::vector<CallKey> ReadCalls(const std::filesystem::path& file);

// How the run in which a call failed ended, as far as the sweeping process could tell.
struct Verdict {
    enum class Kind { Good, NotReached, Wrong };
    Kind kind = Kind::Good;
    std::string text;  // of what is wrong
};

// The sweeping process writes down each run before it begins and its verdict after it, so that a run without
// verdict is one that the process did not survive.
class VerdictWriter {
public:
    explicit VerdictWriter(std::filesystem::path file) : m_file(std::move(file)) {}
    void Begin(std::size_t call) const;
    void End(std::size_t call, const Verdict& verdict) const;

private:
    void Append(const std::string& line) const;

    std::filesystem::path m_file;
};

struct Verdicts {
    std::map<std::size_t, Verdict> given;
    std::optional<std::size_t> begun;  // the call of the last run that began
};
[[nodiscard]] Verdicts ReadVerdicts(const std::filesystem::path& file);
