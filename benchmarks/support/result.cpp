#include "benchmarks/support/result.h"

#include <cstdio>

void Print(const Result& result) {
    const char* const verdict = result.goal.empty() ? "reported" : result.met ? "met" : "**missed**";
    std::printf("| %s | %s | %s | %s | %s | %s | %s |\n", result.what.c_str(), result.limit.c_str(),
                result.talvenor.c_str(), result.bare.c_str(), result.ratio.c_str(), result.goal.c_str(),
                verdict);
    std::fflush(stdout);
}

void Say(const std::string& text) {
    std::fprintf(stderr, "  %s\n", text.c_str());
}

std::string Number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string WithUnit(double value, const char* unit, int decimals) {
    return Number(value, decimals) + (*unit ? " " : "") + unit;
}

std::string Times(double ratio) {
    return Number(ratio, 2) + " ×";
}
