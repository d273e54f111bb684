// Has pictures of a program's windows taken by the script that started us: says which window on the output,
// and waits on the input until the picture is made.
#pragma once
#include <windows.h>

#include <string>

#include "tests/equipment/program.h"

class Photographer {
public:
    explicit Photographer(const driver::Program& program) : m_program(program) {}

    // The window with its frame and, where there is one, the box in front of it. Throws Failure when nobody
    // answers.
    void Take(const std::string& name, HWND window, HWND box = nullptr) const;
    // The same of a window that changes by itself, such as a countdown: the program is held still meanwhile.
    void TakeStill(const std::string& name, HWND window) const;

private:
    const driver::Program& m_program;
};
