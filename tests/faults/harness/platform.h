// The system as the program under test meets it: real, but for what would disturb the desktop, take time,
// reach the machine's power switch or show nothing. Those calls are written down and answered as a test plans
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

// What the interpreter of a converter has that could be asked to close.
enum class Console {
    Window,    // an ordinary window
    Terminal,  // one of class "PseudoConsoleWindow", which does nothing when it is asked
    None
};

// How one converter behaves. They are used up in order; the last one stays for all that follow.
struct ConverterPlan {
    DWORD exitCode = 0;
    DWORD startError = 0;  // not 0: it cannot be started
    bool held = false;  // runs until EndConverters, until its console is asked to close, or its job is ended
    Console console = Console::Window;
};

class Platform {
public:
    // What the program asks for, one text a request:
    //   Message   "error main Erreur CreateProcess :  File not found."  (picture, owner, text)
    //   Beep      "440 100"
    //   Start     "hidden a.pdf in ~: /C "pdf2djvu.exe ...""                   (window, title, arguments)
    //   Shell     "explorer.exe C:\out"
    //   Shutdown  "open token", "look up privilege", "enable", "request", "disable"
    //   Close     "console 1": the first converter's was asked to close; "terminal 1"
    //   Search    "1": windows were looked through while the first converter's process was held; "nobody"
    //   Job       "C000013A: 1 2": what was in the job and still ran was ended, with this code
    //   Awake     "kept", "given back": what a thread asks of the power management
    //   Taskbar   "1 of 2", "none": what the main window's button is to show
    enum class Request { Message, Beep, Start, Shell, Shutdown, Close, Search, Job, Awake, Taskbar };

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
    bool screenReader = false;  // runs
    std::wstring foundOnPath;   // where "explorer.exe" is on the search path; empty: where the system has it
    bool realMessages = false;  // message boxes are shown and wait for the user
    std::atomic<int> answerToQuestions{IDYES};

    // Lets every converter that runs, or the one started as the `number`th, end with `exitCode`.
    void EndConverters(DWORD exitCode, int number = 0);

    // Those that are waited for, which is when a stop finds them, or were. Those that could not be started
    // count as well.
    [[nodiscard]] int ConvertersStarted() const { return m_started; }
    // Worker threads that have been started and have not ended.
    [[nodiscard]] int Workers() const { return m_workers; }
    // How often the system was asked to create a modeless dialog, as the main window is one.
    [[nodiscard]] int ModelessDialogs() const { return m_modelessDialogs; }
    // Blocks of memory and icons of the program that it has not given back.
    [[nodiscard]] int Blocks() const;
    [[nodiscard]] int Icons() const;
    // Numbers of the converters that were started and never put into a job, as "1 2".
    [[nodiscard]] std::string ConvertersOutsideJob() const;
    // Threads that keep the machine awake.
    [[nodiscard]] int AwakeThreads() const;
    // What the taskbar's button shows now: "1 of 2", or nothing.
    [[nodiscard]] std::string TaskbarShows() const;
    // The names that controls have for a screen reader, as "1014: Pages :", one a line.
    [[nodiscard]] std::string Names() const;
    // COM objects that the program has not let go of.
    [[nodiscard]] int ComObjects() const { return m_comObjects; }
    // Notes a message of the test's own that has come out of the program's queue, see User::WaitForPosted.
    [[nodiscard]] int Markers() const { return m_markers; }
    static constexpr UINT kMarkerMessage = WM_APP + 0x3FF0;
    // The timers that are set, as "2".
    [[nodiscard]] std::string Timers() const;
    [[nodiscard]] std::vector<std::string> Requests(Request kind) const;

    // Paths below the program's folder with "~" in its place.
    [[nodiscard]] std::string Shortened(std::string text) const;

private:
    friend struct ComDoubles;
    friend struct ConverterDoubles;
    friend struct DesktopDoubles;
    friend struct ProcessDoubles;

    struct Converter {
        int number = 0;
        DWORD exitCode = 0;
        HANDLE ended =
            nullptr;  // ours, null when it has ended; the batch owns and closes another to the same
        Console console = Console::Window;
        std::set<HANDLE> held = {};  // the program's handles to it
        bool isInJob = false;
    };

    // Null for a handle to something else. The caller has the lock.
    [[nodiscard]] Converter* FindConverter(HANDLE process);
    static void End(Converter& converter, DWORD exitCode);
    void Note(Request kind, const std::string& text);
    void MakeFolder();

    std::wstring m_folder;
    std::wstring m_previousDirectory;
    mutable SRWLOCK m_lock = SRWLOCK_INIT;
    std::map<Request, std::vector<std::string>> m_requests;
    std::map<int, Converter> m_converters;  // all that were started on paper, by their numbers
    std::set<void*> m_blocks;
    std::set<HANDLE> m_icons;
    std::set<UINT_PTR> m_timers;
    std::set<DWORD> m_awake;  // ids of threads
    std::map<std::string, std::string> m_names;
    std::string m_taskbarShows;
    std::atomic<int> m_comObjects{0};
    std::atomic<int> m_markers{0};
    std::atomic<int> m_requested{0};
    std::atomic<int> m_started{0};
    std::atomic<int> m_workers{0};
    std::atomic<int> m_modelessDialogs{0};
    std::atomic<DWORD> m_tick{1'000'000};
};
