#include "benchmarks/support/arguments.h"

#include "tests/equipment/failure.h"

#include <fcntl.h>
#include <io.h>

#include <charconv>
#include <cstdio>

Arguments::Arguments(int count, char** values) {
    for (int i = 1; i < count; ++i) {
        const std::string argument = values[i];
        const std::size_t equals = argument.find('=');
        if (equals == std::string::npos) throw driver::Failure("not name=number: " + argument);
        int number = 0;
        const char* const end = argument.data() + argument.size();
        if (std::from_chars(argument.data() + equals + 1, end, number).ptr != end || number <= 0)
            throw driver::Failure("not a number above 0: " + argument);
        m_numbers[argument.substr(0, equals)] = number;
    }
}

int Arguments::Get(const std::string& name, int whenNotGiven) const {
    const auto found = m_numbers.find(name);
    return found == m_numbers.end() ? whenNotGiven : found->second;
}

int RunBenchmark(int count, char** values, void (*benchmark)(const Arguments&)) {
    _setmode(_fileno(stdout), _O_BINARY);  // lines end as the scripts expect
    try {
        benchmark(Arguments(count, values));
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "benchmark failed: %s\n", failure.what());
        return 1;
    }
    return 0;
}
