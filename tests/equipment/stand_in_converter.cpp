// Stands in for the converter: tests copy it beside Talvenor.exe as pdf2djvu.exe. It writes down how it was
// started and ends with 0 at once, unless the PDF's name says something else: for "wait500 exit2.pdf" it runs
// for 500 ms and ends with 2.
//
// What is written down of a run; the last line is missing when it was cut short:
//
//   command=<the command line as received>
//   program=<its own file>
//   directory=<current directory>
//   console=hidden|visible|none|in a terminal
//   title=<what the console's window reads>
//   ended=<exit code>
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/equipment/stand_in.h"

namespace {

std::wstring DescribeConsole() {
    const HWND console = ::GetConsoleWindow();
    wchar_t className[32] = {};
    ::GetClassNameW(console, className, 32);
    // What a program gets for its console's window when a terminal shows the console: it is never seen.
    const bool inTerminal = std::wstring(className) == L"PseudoConsoleWindow";
    const wchar_t* const state = !console                     ? L"none"
                                 : inTerminal                 ? L"in a terminal"
                                 : ::IsWindowVisible(console) ? L"visible"
                                                              : L"hidden";
    wchar_t title[1024] = {};
    ::GetConsoleTitleW(title, ARRAYSIZE(title));
    return std::wstring(L"console=") + state + L"\ntitle=" + title + L'\n';
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const std::wstring pdf = argc > 1 ? std::filesystem::path(argv[argc - 1]).filename() : L"";
    const DWORD code = stand_in::NumberIn(pdf, L"exit", 0);

    if (!stand_in::AppendRecord(stand_in::DescribeStart() + DescribeConsole())) {
        std::fputs("stand-in converter: cannot write its record\n", stderr);
        return stand_in::kCannotRecord;
    }
    std::fputs("stand-in converter: converting\n", stderr);
    ::Sleep(stand_in::NumberIn(pdf, L"wait", 0));
    const bool isRecorded = stand_in::AppendRecord(L"ended=" + std::to_wstring(code) + L'\n');
    return isRecorded ? static_cast<int>(code) : stand_in::kCannotRecord;
}
