// Code of ours in front of functions that the program calls: each call is first shown to a watch, which may
// send it elsewhere.
#pragma once

#include "tests/faults/harness/call_watch.h"

#include <cstdint>
#include <deque>
#include <string>

class ImportThunks {
public:
    explicit ImportThunks(CallWatch& watch);
    ImportThunks(const ImportThunks&) = delete;
    ImportThunks& operator=(const ImportThunks&) = delete;
    // The program must have been unloaded.
    ~ImportThunks();

    // The code to be called in the place of the function `name`. Its calls go to `target` unless the watch
    // has another function for them. Arguments are whole numbers and pointers only: floating-point ones do
    // not arrive.
    [[nodiscard]] void* Wrap(const std::string& name, void* target);

private:
    struct Thunk {
        CallWatch& watch;
        std::string name;
        void* target;
    };

    struct Code;

    static void* Enter(const Thunk* thunk, const std::uint64_t* registers);

    CallWatch& m_watch;
    std::deque<Thunk> m_thunks;  // addresses must stay
    Code* m_code;
};
