// The system as the program under test meets it: real, but for what would disturb the desktop, take time, reach
// the machine's power switch or tell nothing. Those calls are written down and answered as a test plans them.
//
// The program runs as <Folder()>\Talvenor.exe. The clock stands still but for the seconds that conversions
// take, timers never tick by themselves, converters run on paper, and no call ever asks for a shutdown.
#pragma once

#include "tests/support/temporary_folder.h"

#include <windows.h>

#include <atomic>
#include <map>
#include <set>
#include <string>
#include <vector>

// How one converter behaves. They are used up in order; the last one stays for all that follow.
struct ConverterPlan {
    DWORD exitCode = 0;
    DWORD startError = 0;  // not 0: it cannot be started
    bool held = false;     // runs until EndConverters, or until its console is asked to close
};

class Platform {
public:
    Platform();
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    ~Platform();

    // The function that answers in place of the system's; null when that one serves.
    [[nodiscard]] static void* FindDouble(const std::string& function);

    // The program's folder, with a converter in it. Its name has the same length in every process.
    [[nodiscard]] const std::wstring& Folder() const { return m_folder; }
    [[nodiscard]] std::wstring File(const wchar_t* name) const { return m_folder + L"\\" + name; }
    void RemoveConverter() const { ::DeleteFileW(File(L"pdf2djvu.exe").c_str()); }

    // Written before the program starts, or while it is known to do nothing.
    std::vector<ConverterPlan> converters{ConverterPlan{}};
    std::vector<std::wstring> chosenFiles;  // by the open dialog: a folder and names, or one path, or Cancel
    std::wstring chosenFolder;              // in the folder browser; empty: Cancel
    DWORD shellError = 0;                   // not 0: nothing can be opened
    bool anotherCopyRuns = false;
    bool realBoxes = false;  // message boxes are shown
    std::atomic<int> answerToQuestions{IDYES};

    // Lets every converter that runs end with `exitCode`.
    void EndConverters(DWORD exitCode);
    // How many have been started, and how many of them run.
    [[nodiscard]] int Started() const { return m_started; }
    [[nodiscard]] int RunningConverters() const;
    // Worker threads that have been started and have not ended.
    [[nodiscard]] int Workers() const { return m_workers; }
    // Blocks of memory and icons of the program that it has not given back.
    [[nodiscard]] int Blocks() const;
    [[nodiscard]] int Icons() const;
    // The timers that are set, as "2" or "1,2".
    [[nodiscard]] std::string Timers() const;

    // What the program asked for, in order, one text a request:
    //   boxes      "main error: Erreur CreateProcess :  File not found."   (owner, picture, text)
    //   beeps      "440"
    //   starts     "hidden a.pdf: /C "pdf2djvu.exe ..."" with ~ for the program's folder
    //   shell      "open explorer.exe C:\out"
    //   shutdowns  "token", "privilege", "enable", "request", "disable"
    //   closing    "close" for each request to a converter's console
    enum class Request { Box, Beep, Start, Shell, Shutdown, Close };
    [[nodiscard]] std::vector<std::string> Requests(Request kind) const;

    // The texts of the real log file, "" when there is none.
    [[nodiscard]] std::string Log() const;
    void WriteLog() const;

private:
    friend struct PlatformDoubles;

    struct Converter {
        DWORD exitCode;
        HANDLE ended;  // ours; the batch has its own
    };

    void Note(Request kind, std::string text);
    [[nodiscard]] std::string WithoutFolder(std::string text) const;

    TemporaryFolder m_unusedName;
    std::wstring m_folder;
    mutable SRWLOCK m_lock = SRWLOCK_INIT;
    std::map<Request, std::vector<std::string>> m_requests;
    std::map<HANDLE, Converter> m_converters;
    std::set<void*> m_blocks;
    std::set<HANDLE> m_icons;
    std::set<UINT_PTR> m_timers;
    std::atomic<int> m_started{0};
    std::atomic<int> m_workers{0};
    std::atomic<DWORD> m_tick{1'000'000};
};
