#include "tests/support/replaced_imports.h"

std::vector<ImportSlot> ImportSlots(HMODULE module) {
    std::vector<ImportSlot> slots;
    auto* const base = reinterpret_cast<BYTE*>(module ? module : ::GetModuleHandleW(nullptr));
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; library->Name != 0; ++library) {
        auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* const entry =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            slots.push_back({reinterpret_cast<const char*>(base + library->Name),
                             reinterpret_cast<const char*>(entry->Name),
                             reinterpret_cast<void**>(&slot->u1.Function)});
        }
    }
    return slots;
}

void WriteImportSlot(void** slot, void* function) {
    DWORD protection = 0;
    ::VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    *slot = function;
    ::VirtualProtect(slot, sizeof *slot, protection, &protection);
}

void** ReplacedImport::FindInThisProgram(const char* name) {
    for (const ImportSlot& slot : ImportSlots()) {
        if (slot.name == name) return slot.address;
    }
    throw std::logic_error(std::string("the test program does not import ") + name);
}
