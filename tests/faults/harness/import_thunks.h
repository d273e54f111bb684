// Stands between a loaded module and everything that it imports: each call first comes to a function of ours,
// which says where it goes.
#pragma once

#include <windows.h>

#include <cstdint>
#include <deque>
#include <string>

// One imported function and where its calls go unless a call is sent elsewhere.
struct ImportedFunction {
    std::string name;
    void* target = nullptr;
};

// The arguments of a call in their order. Only those that the function has may be read.
class CallArguments {
public:
    explicit CallArguments(const std::uint64_t* registers) noexcept : m_registers(registers) {}

    [[nodiscard]] std::uint64_t operator[](int index) const noexcept {
        // The first four were in registers; behind them the stack holds the return address, four places that
        // belong to the called function, and the others.
        return m_registers[index < 4 ? index : index + 5];
    }
    [[nodiscard]] HWND Window(int index) const noexcept { return reinterpret_cast<HWND>((*this)[index]); }
    [[nodiscard]] int Int(int index) const noexcept { return static_cast<int>((*this)[index]); }

private:
    const std::uint64_t* m_registers;
};

// The functions of one module, redirected for as long as it stays loaded. Whole numbers and pointers only:
// floating-point arguments do not arrive.
class ImportThunks {
public:
    // Returns the function that the call goes to, which must have the type of the one that was called. Runs
    // on the calling thread; the last error is kept for it.
    using Route = void* (*)(const ImportedFunction& function, const CallArguments& arguments);

    explicit ImportThunks(Route route);
    ImportThunks(const ImportThunks&) = delete;
    ImportThunks& operator=(const ImportThunks&) = delete;
    ~ImportThunks();

    // Redirects the functions that `module` imports by name. `choose` returns the target of each, usually
    // `real`; null leaves the function alone.
    void Redirect(HMODULE module, void* (*choose)(const std::string& name, void* real));

    // The same for a function that was found at run time.
    [[nodiscard]] void* Wrap(const std::string& name, void* target);

private:
    struct Thunk {
        Route route;
        ImportedFunction function;
    };

    struct Code;

    static void* Enter(const Thunk* thunk, const std::uint64_t* registers);

    Route m_route;
    std::deque<Thunk> m_thunks;  // addresses must stay
    Code* m_code;
};
