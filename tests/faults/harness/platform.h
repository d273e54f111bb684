// The system as the program under test meets it: real, but for what would disturb the desktop, take time,
// reach the machine's power switch or tell nothing. Those calls are written down and answered as a test plans
// them.
//
// The program runs as <Folder()>\Talvenor.exe, its current directory is another folder. The clock moves only
// by the seconds that a conversion takes, timers never tick by themselves, converters run on paper, and no
// call ever asks for a shutdown.
#pragma once

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
    // What the program asks for, one text a request:
    //   Box       "error main Erreur CreateProcess :  File not found."  (picture, owner, text)
    //   Beep      "440 100"
    //   Start     "hidden a.pdf in ~: /C "pdf2djvu.exe ...""                   (window, title, arguments)
    //   Shell     "explorer.exe C:\out"
    //   Shutdown  "open token", "look up privilege", "enable", "request", "disable"
    //   Close     "console": a converter was asked to close
    enum class Request { Box, Beep, Start, Shell, Shutdown, Close };

    Platform();
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    ~Platform();

    // The function that answers in place of the system's; null when that one serves.
    [[nodiscard]] static void* FindDouble(const std::string& function);

    // The program's folder, with a converter in it. Its name has the same length in every process.
    [[nodiscard]] const std::wstring& Folder() const { return m_folder; }
    [[nodiscard]] std::wstring File(const wchar_t* name) const { return m_folder + L"\\" + name; }
    // Names of the files in the current directory, which nothing is to be written to.
    [[nodiscard]] std::vector<std::string> StrayFiles() const;

    // Plans: made before the program starts, or while it does nothing.
    std::vector<ConverterPlan> converters{ConverterPlan{}};
    std::wstring realConverter;  // a command line: converters are real processes, and this is what they run
    std::wstring chosenFiles;  // what the open dialog leaves in its buffer, without the last null; "": Cancel
    std::wstring chosenFolder;  // in the folder browser; empty: Cancel
    DWORD shellError = 0;       // not 0: nothing can be opened
    bool anotherCopyRuns = false;
    bool consolesIgnoreClosing = false;
    bool realBoxes = false;  // message boxes are shown and wait for the user
    std::atomic<int> answerToQuestions{IDYES};

    // Lets every converter that runs, or the one started as the `number`th, end with `exitCode`.
    void EndConverters(DWORD exitCode, int number = 0);

    // Those that could not be started count as well.
    [[nodiscard]] int ConvertersStarted() const { return m_started; }
    // Worker threads that have been started and have not ended.
    [[nodiscard]] int Workers() const { return m_workers; }
    // Blocks of memory and icons of the program that it has not given back.
    [[nodiscard]] int Blocks() const;
    [[nodiscard]] int Icons() const;
    // The timers that are set, as "2".
    [[nodiscard]] std::string Timers() const;
    [[nodiscard]] std::vector<std::string> Requests(Request kind) const;

    // Paths below the program's folder with "~" in its place.
    [[nodiscard]] std::string Shortened(std::string text) const;

private:
    friend struct ConverterDoubles;
    friend struct DesktopDoubles;
    friend struct ProcessDoubles;

    struct Converter {
        int number = 0;
        DWORD exitCode = 0;
        HANDLE ended =
            nullptr;  // ours, null when it has ended; the batch owns and closes another to the same
    };

    [[nodiscard]] bool ConverterRuns() const;
    void Note(Request kind, const std::string& text);
    void MakeFolder();

    std::wstring m_folder;
    std::wstring m_previousDirectory;
    mutable SRWLOCK m_lock = SRWLOCK_INIT;
    std::map<Request, std::vector<std::string>> m_requests;
    std::map<HANDLE, Converter> m_running;  // by the handle that the batch has
    std::set<void*> m_blocks;
    std::set<HANDLE> m_icons;
    std::set<UINT_PTR> m_timers;
    std::atomic<int> m_requested{0};
    std::atomic<int> m_started{0};
    std::atomic<int> m_workers{0};
    std::atomic<DWORD> m_tick{1'000'000};
};
