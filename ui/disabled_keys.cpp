#include "ui/disabled_keys.h"

namespace {

// The numbers of the system's messages and keys.
constexpr unsigned kFirstKeyMessage = 0x0100;
constexpr unsigned kKeyDown = 0x0100;
constexpr unsigned kKeyUp = 0x0101;
constexpr unsigned kFirstKeyMessageWithAlt = 0x0104;
constexpr unsigned kLastKeyMessageWithAlt = 0x0107;
constexpr unsigned kLastKeyMessage = 0x0109;

constexpr unsigned long long kTab = 0x09;
constexpr unsigned long long kAlt = 0x12;
constexpr unsigned long long kEscape = 0x1B;

}  // namespace

KeyRoute RouteKeyOfDisabledControl(unsigned message, unsigned long long wParam) noexcept {
    if (message < kFirstKeyMessage || message > kLastKeyMessage) return KeyRoute::Usual;
    // F10 comes among those with Alt, and leads to the window's menu as Alt does.
    if (message >= kFirstKeyMessageWithAlt && message <= kLastKeyMessageWithAlt) return KeyRoute::ToDialog;
    // Alt itself comes as an ordinary key when Ctrl is held too, or another key was pressed meanwhile.
    if ((message == kKeyDown || message == kKeyUp) && wParam == kAlt) return KeyRoute::ToDialog;
    if (message == kKeyDown && (wParam == kTab || wParam == kEscape)) return KeyRoute::Usual;
    return KeyRoute::Nowhere;
}
