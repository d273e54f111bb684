// Does one thing that the library would throw for, in a program that is built as the real one is and has its
// handlers: fatal_probe THING. Ends with 0 when it is still there afterwards, 1 when it does not know the
// thing.

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <vector>

namespace {

// What the optimiser must not see through.
volatile std::size_t g_zero = 0;

std::size_t Opaque(std::size_t value) {
    return value + g_zero;
}

constexpr std::size_t kHuge = std::numeric_limits<std::size_t>::max();

// Keeps what was made from being optimised away.
const void* volatile g_sink = nullptr;

struct Thing {
    const char* name;
    void (*run)();
};

constexpr Thing kThings[] = {
    {"nothing", [] {}},
    {"new", [] { g_sink = operator new(Opaque(kHuge / 2)); }},
    {"new-array", [] { g_sink = new char[Opaque(kHuge / 4)]; }},
    {"new-nothrow",
     [] {
         g_sink = new (std::nothrow) char[Opaque(kHuge / 4)];
         if (g_sink) std::abort();
     }},
    {"text-length",
     [] {
         std::wstring text(L"a");
         text.append(Opaque(kHuge / 4), L'b');
         g_sink = text.data();
     }},
    {"vector-length",
     [] {
         std::vector<long long> numbers;
         numbers.reserve(Opaque(kHuge / 4));
         g_sink = numbers.data();
     }},
    {"text-range",
     [] {
         const std::wstring text(L"abc");
         const std::wstring part = text.substr(Opaque(4));
         g_sink = part.data();
     }},
    {"text-from-null",
     [] {
         const std::wstring text(reinterpret_cast<const wchar_t*>(Opaque(0)));
         g_sink = text.data();
     }},
};

}  // namespace

int main(int argc, char** argv) {
    for (const Thing& thing : kThings) {
        if (argc != 2 || std::strcmp(argv[1], thing.name) != 0) continue;
        thing.run();
        return 0;
    }
    return 1;
}
