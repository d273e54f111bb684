#include "tests/portable/suite_list.h"

#include <algorithm>
#include <sstream>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace {

std::vector<std::string> Lines(const std::wstring& path) {
    std::istringstream text(driver::ReadFileBytes(path));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line.front() != '#') lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> Fields(const std::string& line) {
    std::istringstream text(line);
    std::vector<std::string> fields;
    for (std::string field; std::getline(text, field, '\t');) fields.push_back(field);
    return fields;
}

Suite ReadSuite(const std::string& line) {
    const auto fields = Fields(line);
    if (fields.size() < 3) throw driver::Failure("no suite: " + line);
    Suite suite;
    suite.name = fields[0];
    suite.limitSeconds = static_cast<unsigned>(std::stoul(fields[1]));
    suite.program = driver::FromUtf8(fields[2]);
    std::replace(suite.program.begin(), suite.program.end(), L'/', L'\\');
    constexpr std::string_view kFilter = "--gtest_filter=";
    for (std::size_t i = 3; i < fields.size(); ++i) {
        if (fields[i].starts_with(kFilter)) {
            suite.filter = fields[i].substr(kFilter.size());
        } else {
            suite.arguments.push_back(fields[i]);
        }
    }
    return suite;
}

LeftOut ReadOne(std::string line) {
    LeftOut one;
    constexpr std::string_view kEntry = "entry ";
    if (line.starts_with(kEntry)) {
        one.isEntry = true;
        line.erase(0, kEntry.size());
    }
    const std::size_t colon = line.find(": ");
    if (colon == std::string::npos) throw driver::Failure("no name and reason: " + line);
    one.pattern = line.substr(0, colon);
    one.reason = line.substr(colon + 2);
    return one;
}

}  // namespace

std::vector<Suite> ReadSuites(const std::wstring& path) {
    std::vector<Suite> suites;
    for (const std::string& line : Lines(path)) suites.push_back(ReadSuite(line));
    if (suites.empty()) throw driver::Failure("no suites in " + driver::ToUtf8(path));
    return suites;
}

std::vector<LeftOut> ReadLeftOut(const std::wstring& path) {
    std::vector<LeftOut> all;
    for (const std::string& line : Lines(path)) all.push_back(ReadOne(line));
    return all;
}

bool Fits(std::string_view name, std::string_view pattern) {
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos) return name == pattern;
    if (!name.starts_with(pattern.substr(0, star))) return false;
    const std::string_view rest = pattern.substr(star + 1);
    for (std::size_t at = star; at <= name.size(); ++at) {
        if (Fits(name.substr(at), rest)) return true;
    }
    return false;
}
