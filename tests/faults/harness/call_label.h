// Calls as short texts, the same in every run: "GetDlgItem main ADD",
// "SendMessageW FILE_LIST LVM_SETITEMW".
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// The arguments of a call in their order. Only those that the function has may be read.
class CallArguments {
public:
    explicit CallArguments(const std::uint64_t* registers) noexcept : m_registers(registers) {}

    [[nodiscard]] std::uint64_t operator[](int index) const noexcept {
        // The first four were in registers; behind them the stack holds the return address, four places that
        // belong to the called function, and the others.
        return m_registers[index < 4 ? index : index + 5];
    }

private:
    const std::uint64_t* m_registers;
};

// Numbers with the names that code has for them.
using Names = std::vector<std::pair<std::int64_t, std::string>>;

// The controls of the main window by their ids, which are named without "IDC_" or "ID".
[[nodiscard]] const Names& Controls();

// A control by its name, one of the system's by its number, a dialog of the program as main, about or
// countdown, others as "other" or "none".
[[nodiscard]] std::string WindowLabel(HWND window);

// The function and what its first arguments say about the call. Addresses and sizes are left out.
[[nodiscard]] std::string CallLabel(const std::string& function, const CallArguments& arguments);
