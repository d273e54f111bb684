// What the functions that answer in the system's place have in common.
#pragma once

#include "tests/faults/harness/lock_hold.h"
#include "tests/faults/harness/platform.h"
#include "tests/faults/harness/program_host.h"
#include "tests/support/utf8.h"

#include <windows.h>

#include <string>

struct DoublesBase {
    using Request = Platform::Request;

    static Platform& Current() { return CurrentHost().ThePlatform(); }
    static std::string Text(const wchar_t* text) { return text ? Utf8(text) : ""; }
};
