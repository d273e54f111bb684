// What there is to run: the suites as the build wrote them down for ctest and for us, and what is left out.
#pragma once
#include <string>
#include <string_view>
#include <vector>

// One entry of ctest: a test program with its arguments.
struct Suite {
    std::string name;
    unsigned limitSeconds = 0;
    std::wstring program;  // below our own folder
    std::string filter;    // which of the program's tests; empty: all
    std::vector<std::string> arguments;
};

struct LeftOut {
    bool isEntry = false;  // a whole entry of ctest, or a test
    std::string pattern;   // with *
    std::string reason;
};

// Each throws driver::Failure when the file is not as it should be.
std::vector<Suite> ReadSuites(const std::wstring& path);
std::vector<LeftOut> ReadLeftOut(const std::wstring& path);

// Whether a name fits a pattern in which * stands for any text.
bool Fits(std::string_view name, std::string_view pattern);
