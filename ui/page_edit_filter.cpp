#include "ui/page_edit_filter.h"

namespace {

constexpr unsigned kBackspace = 8;

constexpr bool IsDigit(unsigned code) noexcept {
    return code >= '0' && code <= '9';
}

}  // namespace

bool PageEditAcceptsCharacter(unsigned character) noexcept {
    return character == kBackspace || character == ',' || character == '-' || IsDigit(character);
}

bool PageEditAcceptsKey(unsigned key) noexcept {
    constexpr unsigned kLeft = 37;
    constexpr unsigned kRight = 39;
    // Deliberate: the key set mirrors the character set, so 44 and 45 are meant as "," and "-" although the
    // keys of these codes are Print Screen and Insert. Characters come through WM_CHAR in any case.
    constexpr unsigned kPrintScreen = ',';
    constexpr unsigned kInsert = '-';
    constexpr unsigned kDelete = 46;
    switch (key) {
    case kBackspace:
    case kLeft:
    case kRight:
    case kPrintScreen:
    case kInsert:
    case kDelete: return true;
    default: return IsDigit(key);
    }
}
