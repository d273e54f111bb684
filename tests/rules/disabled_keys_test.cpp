// Which keys still do something while the control with the focus is disabled.
#include "ui/disabled_keys.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

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

struct KeyCase {
    const char* name;
    unsigned message;
    unsigned long long key;
    KeyRoute route;
};
std::ostream& operator<<(std::ostream& out, const KeyCase& row) {
    return out << "message " << row.message << ", key " << row.key;
}

class RouteKeyOfDisabledControlTest : public testing::TestWithParam<KeyCase> {};

TEST_P(RouteKeyOfDisabledControlTest, IsTheWayOfTheKey) {
    EXPECT_EQ(RouteKeyOfDisabledControl(GetParam().message, GetParam().key), GetParam().route);
}

INSTANTIATE_TEST_SUITE_P(
    All, RouteKeyOfDisabledControlTest,
    testing::Values(KeyCase{"Tab", kKeyDown, 0x09, KeyRoute::Usual},
                    KeyCase{"Escape", kKeyDown, 0x1B, KeyRoute::Usual},
                    KeyCase{"TabReleased", kKeyUp, 0x09, KeyRoute::Nowhere},
                    KeyCase{"EscapeReleased", kKeyUp, 0x1B, KeyRoute::Nowhere},
                    KeyCase{"TabAsCharacter", kChar, 0x09, KeyRoute::Nowhere},
                    KeyCase{"EscapeAsCharacter", kChar, 0x1B, KeyRoute::Nowhere},
                    KeyCase{"Enter", kKeyDown, 0x0D, KeyRoute::Nowhere},
                    KeyCase{"EnterAsCharacter", kChar, 0x0D, KeyRoute::Nowhere},
                    KeyCase{"Space", kKeyDown, 0x20, KeyRoute::Nowhere},
                    KeyCase{"SpaceReleased", kKeyUp, 0x20, KeyRoute::Nowhere},
                    KeyCase{"ArrowDown", kKeyDown, 0x28, KeyRoute::Nowhere},
                    KeyCase{"Delete", kKeyDown, 0x2E, KeyRoute::Nowhere},
                    KeyCase{"F7", kKeyDown, 0x76, KeyRoute::Nowhere},
                    KeyCase{"ContextMenu", kKeyDown, 0x5D, KeyRoute::Nowhere},
                    KeyCase{"ContextMenuReleased", kKeyUp, 0x5D, KeyRoute::Nowhere},
                    KeyCase{"Break", kKeyDown, 0x03, KeyRoute::Nowhere},
                    KeyCase{"OfAnInputMethod", kKeyDown, 0xE5, KeyRoute::Nowhere},
                    KeyCase{"Letter", kChar, 'a', KeyRoute::Nowhere},
                    // The character with the code that Alt has as a key is Ctrl+R.
                    KeyCase{"CharacterWithAltsCode", kChar, 0x12, KeyRoute::Nowhere},
                    KeyCase{"DeadCharacter", kDeadChar, '^', KeyRoute::Nowhere},
                    KeyCase{"BetweenTheMessages", kReserved, 0, KeyRoute::Nowhere},
                    KeyCase{"UnicodeCharacter", kUnicodeChar, 0x1F600, KeyRoute::Nowhere},
                    KeyCase{"AltAndF4", kSysKeyDown, 0x73, KeyRoute::ToDialog},
                    KeyCase{"AltAndF4Released", kSysKeyUp, 0x73, KeyRoute::ToDialog},
                    KeyCase{"AltAndSpace", kSysChar, 0x20, KeyRoute::ToDialog},
                    KeyCase{"AltAndTab", kSysKeyDown, 0x09, KeyRoute::ToDialog},
                    KeyCase{"AltAndBackspace", kSysKeyDown, 0x08, KeyRoute::ToDialog},
                    KeyCase{"AltAndDeadCharacter", kSysDeadChar, '^', KeyRoute::ToDialog},
                    KeyCase{"Alt", kSysKeyDown, 0x12, KeyRoute::ToDialog},
                    KeyCase{"AltReleased", kSysKeyUp, 0x12, KeyRoute::ToDialog},
                    KeyCase{"AltWithCtrl", kKeyDown, 0x12, KeyRoute::ToDialog},
                    KeyCase{"AltReleasedAfterAnotherKey", kKeyUp, 0x12, KeyRoute::ToDialog},
                    KeyCase{"F10", kSysKeyDown, 0x79, KeyRoute::ToDialog}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(RouteKeyOfDisabledControl, LeavesEveryOtherMessageAlone) {
    for (unsigned message = 0; message <= 0xFFFF; ++message) {
        if (message >= kKeyDown && message <= kUnicodeChar) continue;
        for (const unsigned long long wParam : {0x09ull, 0x12ull, 0x1Bull, 0x20ull}) {
            ASSERT_EQ(RouteKeyOfDisabledControl(message, wParam), KeyRoute::Usual) << message;
        }
    }
}

TEST(RouteKeyOfDisabledControl, LetsNoOtherKeyThrough) {
    for (unsigned long long key = 0; key <= 0x10000; ++key) {
        const bool isUsual = RouteKeyOfDisabledControl(kKeyDown, key) == KeyRoute::Usual;
        ASSERT_EQ(isUsual, key == 0x09 || key == 0x1B) << key;
    }
}

}  // namespace
