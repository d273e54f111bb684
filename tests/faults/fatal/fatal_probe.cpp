// Does one thing that the library would throw for, in a program that is built as the real one is and has its
// handlers: fatal_probe THING. Ends with 0 when it is still there afterwards, 1 when it does not know the
// thing.

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <set>
#include <string>
#include <vector>

namespace {

// What the optimiser must not see through.
volatile std::size_t g_tooMany = std::numeric_limits<std::size_t>::max() / 4;
volatile std::size_t g_four = 4;
const wchar_t* volatile g_noText = nullptr;

// Keeps what was made from being optimised away.
const void* volatile g_sink = nullptr;

void Keep(const std::wstring& text) {
    g_sink = text.data();
}

// That blocks are freed: their places are used again.
template <class Allocate, class Delete>
void ExpectFreed(Allocate allocate, Delete free) {
    std::set<void*> places;
    for (int i = 0; i < 1'000; ++i) {
        void* const block = allocate();
        places.insert(block);
        free(block);
    }
    if (places.size() > 100) std::abort();
}

struct Thing {
    const char* name;
    void (*run)();
};

constexpr Thing kThings[] = {
    {"nothing", [] {}},
    {"new", [] { g_sink = operator new(g_tooMany); }},
    {"new-array", [] { g_sink = new char[g_tooMany]; }},
    {"new-nothrow",
     [] {
         g_sink = new (std::nothrow) char[g_tooMany];
         if (g_sink) std::abort();
     }},
    {"delete",
     [] {
         const auto one = [] { return operator new(1'000); };
         ExpectFreed(one, [](void* block) { operator delete(block); });
         ExpectFreed(one, [](void* block) { operator delete (block, std::size_t{1'000}); });
         const auto array = [] { return operator new[](1'000); };
         ExpectFreed(array, [](void* block) { operator delete[](block); });
         ExpectFreed(array, [](void* block) { operator delete[](block, std::size_t{1'000}); });
     }},
    {"text-length", [] { Keep(std::wstring(L"a").append(g_tooMany, L'b')); }},
    {"vector-length",
     [] {
         std::vector<long long> numbers;
         numbers.reserve(g_tooMany);
         g_sink = numbers.data();
     }},
    {"text-range", [] { Keep(std::wstring(L"abc").substr(g_four)); }},
    {"text-from-null", [] { Keep(std::wstring(g_noText)); }},
    // What the library calls in cases that its containers rule out first.
    {"bad-alloc", [] { std::__throw_bad_alloc(); }},
    {"bad-array-length", [] { std::__throw_bad_array_new_length(); }},
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
