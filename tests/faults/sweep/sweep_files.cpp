#include "tests/faults/sweep/sweep_files.h"

#include <algorithm>
#include <fstream>

namespace {

constexpr char kLineBreakInText = '\x1F';

}  // namespace

void AppendLine(const std::filesystem::path& file, std::string text) {
    std::replace(text.begin(), text.end(), '\n', kLineBreakInText);
    // Opened and closed for each line: what comes next may be the end of this process.
    std::ofstream(file, std::ios::binary | std::ios::app) << text << '\n';
}

std::vector<std::string> ReadLines(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        std::replace(line.begin(), line.end(), kLineBreakInText, '\n');
        lines.push_back(line);
    }
    return lines;
}

void WriteCalls(const std::filesystem::path& file, const std::vector<CallKey>& calls) {
    std::ofstream out(file, std::ios::binary);
    for (const CallKey& call : calls) out << call.nth << ' ' << call.label << '\n';
}

std::vector<CallKey> ReadCalls(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<CallKey> calls;
    CallKey call;
    while (in >> call.nth && in.get() && std::getline(in, call.label)) calls.push_back(call);
    return calls;
}
