// The system as the program under test meets it: real, but for what would disturb the desktop, take time,
// reach the machine's power switch or show nothing. Those calls are written down and answered as a test plans
// them.
//
// The program runs as <Folder()>\Talvenor.exe, its current directory is another folder. The clock moves only
// by the seconds that a conversion takes, timers never tick by themselves, converters run on paper, and no
// call ever asks for a shutdown.
#pragma once

#include "tests/faults/harness/lock_hold.h"
#include "tests/faults/harness/outcome.h"

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
    Platform();
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    ~Platform();

    // The function that answers in place of the system's; null when that one serves.
    [[nodiscard]] static void* FindDouble(const std::string& function);

    // The program's folder, with a converter in it. Its name has the same length in every process.
    [[nodiscard]] const std::wstring& Folder() const { return m_folder; }
    [[nodiscard]] std::wstring File(const wchar_t* name) const { return m_folder + L"\\" + name; }
    // Paths below the program's folder with "~" in its place.
    [[nodiscard]] std::string Shortened(std::string text) const;

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

    // What the program has asked for:
    //   messages    "error main Erreur CreateProcess :  File not found."  (picture, owner, text)
    //   beeps       "440 100"
    //   starts      "hidden a.pdf in ~: /C "pdf2djvu.exe ...""            (window, title, folder, arguments)
    //   shell       "explorer.exe C:\out"
    //   shutdowns   "open token", "look up privilege", "enable", "request", "disable"
    //   closing     "console 1": the first converter's was asked to close; "terminal 1"
    //   searches    "1": windows were looked through while the first converter's process was held; "nobody"
    //   jobs        "C000013A: 1 2": what was in the job and still ran was ended, with this code
    //   awakeCalls  "kept", "given back": what a thread asks of the power management
    //   taskbar     "1 of 2", "none": what the main window's button is to show
    [[nodiscard]] std::vector<std::string> Requests(const std::string& kind) const;
    // All requests, one line each, and what there is now:
    //   outsideJob  "1 2": converters that were started and never put into a job
    //   awake       number of threads that keep the machine awake
    //   shown       "1 of 2": in the taskbar's button
    //   names       "PAGES: Pages :": that controls have for a screen reader, one a line
    //   timers      "1,2": those that are set
    //   log         its text, "none" when there is no log
    //   strays      files in the current directory, which nothing is to be written to
    [[nodiscard]] Facts State() const;
    [[nodiscard]] std::string Fact(const std::string& name) const { return State().at(name); }
    // What the program has not given back: "blocks" of memory, "icons", COM "objects".
    [[nodiscard]] std::map<std::string, int> Held() const;

    // Worker threads that have been started and have not ended.
    [[nodiscard]] int Workers() const { return m_workers; }
    // How often the system was asked to create a modeless dialog, as the main window is one.
    [[nodiscard]] int ModelessDialogs() const { return m_modelessDialogs; }
    // Notes a message of the test's own that has come out of the program's queue, see User::WaitForPosted.
    [[nodiscard]] int Markers() const { return m_markers; }
    static constexpr UINT kMarkerMessage = WM_APP + 0x3FF0;

private:
    // The functions that answer, by the names of those in whose place they do. Called by the program's code
    // on any of its threads.
    using Doubles = std::map<std::string, void*>;
    static void AddConverters(Doubles& doubles);
    static void AddDesktop(Doubles& doubles);
    static void AddObjects(Doubles& doubles);
    static void AddProcess(Doubles& doubles);

    struct Converter {
        DWORD exitCode = 0;
        HANDLE ended = nullptr;  // ours, null when it has ended; the batch closes another to the same
        Console console = Console::Window;
        std::set<HANDLE> held = {};  // the program's handles to it
        bool isInJob = false;
    };

    struct WindowOfConverter {
        int number = 0;
        Console kind = Console::None;  // also that of any other window
    };

    // Things of one kind that there are now.
    template <class Thing>
    class Things {
    public:
        void Add(Thing thing) {
            const SystemLockHold lock(m_lock);
            m_things.insert(thing);
        }
        bool Remove(Thing thing) {
            const SystemLockHold lock(m_lock);
            return m_things.erase(thing) != 0;
        }
        [[nodiscard]] std::set<Thing> All() const {
            const SystemLockHold lock(m_lock);
            return m_things;
        }
        [[nodiscard]] int Count() const { return static_cast<int>(All().size()); }

    private:
        mutable SRWLOCK m_lock = SRWLOCK_INIT;
        std::set<Thing> m_things;
    };

    static Platform& Current();
    void MakeFolder();
    [[nodiscard]] std::string ReadLog() const;
    [[nodiscard]] SystemLockHold Lock() const { return SystemLockHold(m_lock); }
    // The caller has the lock. Null for a handle to something else.
    [[nodiscard]] Converter* FindConverter(HANDLE process);
    static void End(Converter& converter, DWORD exitCode);
    [[nodiscard]] WindowOfConverter FindConsole(HWND window);
    void Show(HWND window, const std::string& text);  // in the taskbar
    void Note(const std::string& kind, const std::string& text);

    std::wstring m_folder;
    std::wstring m_previousDirectory;
    mutable SRWLOCK m_lock = SRWLOCK_INIT;
    std::map<std::string, std::vector<std::string>> m_requests = {
        {"messages", {}}, {"beeps", {}},    {"starts", {}}, {"shell", {}},      {"shutdowns", {}},
        {"closing", {}},  {"searches", {}}, {"jobs", {}},   {"awakeCalls", {}}, {"taskbar", {}}};
    std::map<int, Converter> m_converters;  // all that were started on paper, by their numbers
    std::map<std::string, std::string> m_names;
    std::string m_taskbarShows;
    Things<void*> m_blocks;
    Things<HANDLE> m_icons;
    Things<UINT_PTR> m_timers;
    Things<DWORD> m_awake;  // ids of threads
    std::atomic<int> m_objects{0};
    std::atomic<int> m_markers{0};
    std::atomic<int> m_requested{0};
    std::atomic<int> m_started{0};
    std::atomic<int> m_workers{0};
    std::atomic<int> m_modelessDialogs{0};
    std::atomic<DWORD> m_tick{1'000'000};
};
