// Stands in for the converter: tests copy it beside Talvenor.exe as pdf2djvu.exe. It writes down how it was
// started, runs as long as it is told and ends with the code it is told. With nothing set it ends with 0 at
// once. What can be set:
//
//   TALVENOR_STANDIN_OUT    file that one block a run is appended to (see below)
//   TALVENOR_STANDIN_MS     how long to run, milliseconds
//   TALVENOR_STANDIN_RC     exit code
//   TALVENOR_STANDIN_WRITE  1: write a few bytes to the file named after -o
//
// A PDF's own name goes before these: in "wait500 exit2.pdf" it runs for 500 ms and ends with 2.
//
// The block, in UTF-8; its last line is missing when the run was cut short:
//
//   command=<the command line as received>
//   directory=<current directory>
//   title=<title it was started with>
//   show=<show command it was started with, or -1>
//   console=hidden|visible|none|in a terminal
//   consoleTitle=<what the console's window reads>
//   ended=<exit code>
#include <windows.h>

#include <cstdio>
#include <string>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/stand_in_settings.h"

namespace {

constexpr wchar_t kRecordVariable[] = L"TALVENOR_STANDIN_OUT";
constexpr int kCannotRecord = 97;
constexpr int kCannotWriteOutput = 98;

std::wstring FileName(const std::wstring& path) {
    return path.substr(path.find_last_of(L"\\/") + 1);
}

std::wstring DescribeConsole() {
    const HWND console = ::GetConsoleWindow();
    wchar_t title[1024] = {};
    ::GetConsoleTitleW(title, 1024);
    wchar_t className[32] = {};
    ::GetClassNameW(console, className, 32);
    // What a program gets for its console's window when a terminal shows the console: it is never seen.
    const bool inTerminal = std::wstring(className) == L"PseudoConsoleWindow";
    const wchar_t* const state = !console                     ? L"none"
                                 : inTerminal                 ? L"in a terminal"
                                 : ::IsWindowVisible(console) ? L"visible"
                                                              : L"hidden";
    return std::wstring(L"console=") + state + L"\nconsoleTitle=" + title + L'\n';
}

bool WriteOutput(int argc, wchar_t** argv) {
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::wstring(argv[i]) != L"-o") continue;
        try {
            driver::WriteFileBytes(argv[i + 1], "AT&TFORM");
        } catch (const driver::Failure& failure) {
            std::fprintf(stderr, "stand-in converter: %s\n", failure.what());
            return false;
        }
    }
    return true;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const std::wstring pdf = argc > 1 ? FileName(argv[argc - 1]) : std::wstring();
    const DWORD runMs =
        stand_in::NumberInName(pdf, L"wait", stand_in::NumberSetting(L"TALVENOR_STANDIN_MS", 0));
    const DWORD code =
        stand_in::NumberInName(pdf, L"exit", stand_in::NumberSetting(L"TALVENOR_STANDIN_RC", 0));

    if (!stand_in::AppendRecord(kRecordVariable, stand_in::DescribeStart() + DescribeConsole())) {
        std::fputs("stand-in converter: cannot write its record\n", stderr);
        return kCannotRecord;
    }
    std::fputs("stand-in converter: converting\n", stderr);
    if (stand_in::Setting(L"TALVENOR_STANDIN_WRITE") == L"1" && !WriteOutput(argc, argv))
        return kCannotWriteOutput;
    ::Sleep(runMs);
    if (!stand_in::AppendRecord(kRecordVariable, L"ended=" + std::to_wstring(code) + L'\n'))
        return kCannotRecord;
    return static_cast<int>(code);
}
