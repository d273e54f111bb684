#include "tests/faults/sweep/sweep_files.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace {

constexpr char kLineBreakInText = '\x1F';

std::string WithReplaced(std::string text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

}  // namespace

void WriteLines(const std::filesystem::path& file, const std::vector<std::string>& lines) {
    std::ofstream out(file, std::ios::binary);
    for (const std::string& line : lines) out << WithReplaced(line, '\n', kLineBreakInText) << '\n';
}

std::vector<std::string> ReadLines(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("no file of lines");
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(WithReplaced(line, kLineBreakInText, '\n'));
    return lines;
}

void WriteCalls(const std::filesystem::path& file, const std::vector<CallKey>& calls) {
    std::ofstream out(file, std::ios::binary);
    for (const CallKey& call : calls) out << call.nth << ' ' << call.label << '\n';
}

std::vector<CallKey> ReadCalls(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("no list of calls");
    std::vector<CallKey> calls;
    CallKey call;
    while (in >> call.nth && in.get() && std::getline(in, call.label)) calls.push_back(call);
    return calls;
}

void VerdictWriter::Begin(std::size_t call) const {
    Append("begin " + std::to_string(call) + '\n');
}

void VerdictWriter::End(std::size_t call, const Verdict& verdict) const {
    Append("end " + std::to_string(call) + ' ' + std::to_string(static_cast<int>(verdict.kind)) + ' ' +
           WithReplaced(verdict.text, '\n', kLineBreakInText) + '\n');
}

void VerdictWriter::Append(const std::string& line) const {
    // Opened and closed for each line: what comes next may be the end of this process.
    std::ofstream out(m_file, std::ios::binary | std::ios::app);
    out << line;
}

Verdicts ReadVerdicts(const std::filesystem::path& file) {
    Verdicts verdicts;
    std::ifstream in(file, std::ios::binary);
    std::string word;
    std::size_t call = 0;
    while (in >> word >> call) {
        if (word == "begin") {
            verdicts.begun = call;
            continue;
        }
        int kind = 0;
        std::string text;
        in >> kind;
        in.get();
        std::getline(in, text);
        verdicts.given[call] = {static_cast<Verdict::Kind>(kind), WithReplaced(text, kLineBreakInText, '\n')};
    }
    return verdicts;
}
