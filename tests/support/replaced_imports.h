// Replaces functions that the product imports from the system, for the life of a ReplacedImport. The product
// is linked into the test program, so its calls go through the same table and need no seam of their own; the
// fault tests, which load it as a library, say where its imports are. Calls made inside the system's
// libraries are not affected. Optimised code may read a slot once per function: replace before the call.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

struct ImportSlot {
    std::string library;
    std::string name;
    void** address;
};

// All functions that `module`, by default this program, imports by name.
std::vector<ImportSlot> ImportSlots(HMODULE module = nullptr);

// Writes to an import slot, which is read-only memory.
void WriteImportSlot(void** slot, void* function);

class ReplacedImport {
public:
    // `function` must have the type of the import `name`. Throws when the program does not import it: a
    // replacement that replaces nothing would prove nothing.
    template <class Function>
    ReplacedImport(const char* name, Function* function) : m_slot(s_find(name)), m_original(*m_slot) {
        WriteImportSlot(m_slot, reinterpret_cast<void*>(function));
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    virtual ~ReplacedImport() { WriteImportSlot(m_slot, m_original); }

    // What the slot held before, to be called on.
    template <class Function>
    [[nodiscard]] Function* Original() const {
        return reinterpret_cast<Function*>(m_original);
    }

    // Where the slot of a function is, from now on.
    using FindSlot = void** (*)(const char* name);
    static void ReplaceIn(FindSlot find) { s_find = find; }

private:
    static void** FindInThisProgram(const char* name);

    static inline FindSlot s_find = &FindInThisProgram;

    void** m_slot;
    void* m_original;
};

// A replacement, which ends with it.
using Replaced = std::unique_ptr<ReplacedImport>;

template <class Function, class Handler>
class HandledImport;

template <class Result, class... Arguments, class Handler>
class HandledImport<Result(Arguments...), Handler> final : public ReplacedImport {
public:
    using Function = Result(Arguments...);

    HandledImport(const char* name, Handler handler) : ReplacedImport(name, Keep(std::move(handler))) {
        if (Original<Function>() != &Call) s_original = Original<Function>();
    }

private:
    static Function* Keep(Handler handler) {
        s_handler.emplace(std::move(handler));
        return &Call;
    }
    static Result Call(Arguments... arguments) {
        if constexpr (std::is_invocable_v<Handler&, Function*, Arguments...>) {
            return (*s_handler)(s_original, arguments...);
        } else {
            return (*s_handler)(arguments...);
        }
    }

    static inline std::optional<Handler> s_handler;
    static inline Function* s_original = nullptr;
};

// Calls of the import `name`, of type `Function`, go to a lambda for the life of what this returns. The
// lambda takes the call's arguments, behind the function that it replaced where it calls that. A place in the
// code has one replacement at a time: the last one answers.
template <class Function, class Handler>
[[nodiscard]] Replaced Replace(const char* name, Handler handler) {
    return std::make_unique<HandledImport<Function, Handler>>(name, std::move(handler));
}

// The same for the function `name`, which gives the name and the type:
//
//   const auto beep = REPLACE_IMPORT(Beep, [&](DWORD, DWORD) { return ++beeps; });
//   const auto show = REPLACE_IMPORT(
//       ShowWindow, [](auto original, HWND window, int) { return original(window, SW_HIDE); });
#define REPLACE_IMPORT(name, ...) Replace<decltype(::name)>(#name, __VA_ARGS__)
