// Which keys still do something while the control with the focus is disabled.
#include "ui/disabled_keys.h"

#include <gtest/gtest.h>

namespace {

// The numbers of the system.
constexpr unsigned kKeyDown = 0x100;
constexpr unsigned kKeyUp = 0x101;
constexpr unsigned kChar = 0x102;
constexpr unsigned kDeadChar = 0x103;
constexpr unsigned kSysKeyDown = 0x104;
constexpr unsigned kSysKeyUp = 0x105;
constexpr unsigned kSysChar = 0x106;
constexpr unsigned kSysDeadChar = 0x107;
constexpr unsigned kReserved = 0x108;
constexpr unsigned kUnicodeChar = 0x109;

// A character has a code and no key: that of Alt is Ctrl+R, those of Tab and Escape are characters as well.
TEST(RouteKeyOfDisabledControl, LeavesTabAndEscapeToTheLoopAltToTheDialogAndNothingElse) {
    for (unsigned long long key = 0; key <= 0x1F600; ++key) {
        const bool isTabOrEscape = key == 0x09 || key == 0x1B;
        const KeyRoute withAlt = key == 0x12 ? KeyRoute::ToDialog : KeyRoute::Nowhere;
        ASSERT_EQ(RouteKeyOfDisabledControl(kKeyDown, key), isTabOrEscape ? KeyRoute::Usual : withAlt) << key;
        ASSERT_EQ(RouteKeyOfDisabledControl(kKeyUp, key), withAlt) << key;
        for (const unsigned message : {kChar, kDeadChar, kReserved, kUnicodeChar}) {
            ASSERT_EQ(RouteKeyOfDisabledControl(message, key), KeyRoute::Nowhere) << message << ' ' << key;
        }
        for (const unsigned message : {kSysKeyDown, kSysKeyUp, kSysChar, kSysDeadChar}) {
            ASSERT_EQ(RouteKeyOfDisabledControl(message, key), KeyRoute::ToDialog) << message << ' ' << key;
        }
    }
}

TEST(RouteKeyOfDisabledControl, LeavesEveryOtherMessageAlone) {
    for (unsigned message = 0; message <= 0xFFFF; ++message) {
        if (message >= kKeyDown && message <= kUnicodeChar) continue;
        for (const unsigned long long wParam : {0x09ull, 0x12ull, 0x1Bull, 0x20ull}) {
            ASSERT_EQ(RouteKeyOfDisabledControl(message, wParam), KeyRoute::Usual) << message;
        }
    }
}

}  // namespace
