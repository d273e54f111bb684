// Calls as short texts, the same in every run: "GetDlgItem main ADD",
// "SendMessageW FILE_LIST LVM_SETITEMW".
#pragma once

#include "res/resource.h"

#include <windows.h>

#include <cstdint>
#include <string>

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

// The controls of the main window by the names of their ids, without "IDC_" or "ID".
struct NamedControl {
    int id;
    const char* name;
    bool hasChangingText = false;
};
inline constexpr NamedControl kControls[] = {
    {IDOK, "OK"},
    {IDCANCEL, "CANCEL", true},
    {IDC_ADD, "ADD"},
    {IDC_STATUS, "STATUS", true},
    {IDC_CLEAR, "CLEAR"},
    {IDC_PAGES, "PAGES", true},
    {IDC_NO_TEXT, "NO_TEXT"},
    {IDC_LINES, "LINES"},
    {IDC_NO_METADATA, "NO_METADATA"},
    {IDC_EXTRA_OPTIONS, "EXTRA_OPTIONS", true},
    {IDC_HIDE_OUTPUT, "HIDE_OUTPUT"},
    {IDC_OPEN_DESTINATION, "OPEN_DESTINATION"},
    {IDC_OPEN_LOG, "OPEN_LOG"},
    {IDC_OUTPUT_FOLDER_CHECK, "OUTPUT_FOLDER_CHECK"},
    {IDC_OUTPUT_FOLDER, "OUTPUT_FOLDER", true},
    {IDC_BROWSE, "BROWSE"},
    {IDC_MONOCHROME, "MONOCHROME"},
    {IDC_RESOLUTION, "RESOLUTION", true},
    {IDC_RESOLUTION_CHECK, "RESOLUTION_CHECK"},
    {IDC_PAGES_CHECK, "PAGES_CHECK"},
    {IDC_NO_OUTLINE, "NO_OUTLINE"},
    {IDC_NO_HYPERLINKS, "NO_HYPERLINKS"},
    {IDC_SHUT_DOWN, "SHUT_DOWN"},
    {IDC_FILE_LIST, "FILE_LIST"},
    {IDC_ABOUT, "ABOUT"},
};

// A control by its name, one of the system's by its number, a dialog of the program as main, about or
// countdown, others as "other" or "none".
[[nodiscard]] std::string WindowLabel(HWND window);

// The function and what its first arguments say about the call. Addresses and sizes are left out.
[[nodiscard]] std::string CallLabel(const std::string& function, const CallArguments& arguments);
