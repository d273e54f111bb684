// Replaces functions that this program imports from the system, for the life of a ReplacedImport. The product
// is linked into the test program, so its calls go through the same table and need no seam of their own.
// Calls made inside the system's libraries are not affected. Optimised code may read a slot once per
// function: replace before the call.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
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
    ReplacedImport(const char* name, Function* function) : m_slot(Find(name)), m_original(*m_slot) {
        WriteImportSlot(m_slot, reinterpret_cast<void*>(function));
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    ~ReplacedImport() { WriteImportSlot(m_slot, m_original); }

    // What the slot held before, to be called on.
    template <class Function>
    [[nodiscard]] Function* Original() const {
        return reinterpret_cast<Function*>(m_original);
    }

private:
    static void** Find(const char* name);

    void** m_slot;
    void* m_original;
};
