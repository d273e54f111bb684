// The command line of a benchmark: "name=number" for what may be changed, so that a short run is possible.
#pragma once

#include <map>
#include <string>

class Arguments {
public:
    // Throws driver::Failure at what is no such argument.
    Arguments(int count, char** values);

    [[nodiscard]] int Get(const std::string& name, int whenNotGiven) const;

private:
    std::map<std::string, int> m_numbers;
};

// Runs `benchmark` and makes an exit code of what comes of it: 0 when it could measure, whether or not a goal
// was met.
int RunBenchmark(int count, char** values, void (*benchmark)(const Arguments&));
