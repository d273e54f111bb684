// What a benchmark prints: one line of the table of limits and goals for each thing that it measured.
#pragma once

#include <string>

struct Result {
    std::string what;      // was measured
    std::string limit;     // that it is measured against
    std::string talvenor;  // the two values, with their units
    std::string bare;
    std::string ratio;  // empty where the goal is none
    std::string goal;   // empty: reported for its own sake
    bool met = true;
};

// Prints the line on the standard output, where nothing else goes.
void Print(const Result& result);

// A line of progress, on the error output.
void Say(const std::string& text);

// "12.3", "12.3 ms", "1.05 ×"
[[nodiscard]] std::string Number(double value, int decimals = 1);
[[nodiscard]] std::string WithUnit(double value, const char* unit, int decimals = 1);
[[nodiscard]] std::string Times(double ratio);
