// The system as the program under test meets it: real, but for what would disturb the desktop, take time,
// reach the machine's power switch or show nothing. Those calls are written down and answered as a test plans
// them.
//
// The program runs as <Folder()>\Talvenor.exe, its current directory is another folder. The clock moves only
// by the seconds that a conversion takes, timers never tick by themselves, converters run on paper, and no
// call ever asks for a shutdown.
#pragma once

#include "tests/equipment/scripted_converters.h"
#include "tests/faults/harness/outcome.h"
#include "tests/support/replaced_imports.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8.h"

#include <windows.h>

#include <atomic>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

class Platform {
public:
    Platform();

    // The function that answers in place of the system's; null when that one serves.
    [[nodiscard]] static void* FindAnswer(const std::string& function);

    // The program's folder, with a converter in it.
    [[nodiscard]] std::wstring Folder() const { return m_folder.Path().wstring(); }
    [[nodiscard]] std::wstring File(const wchar_t* name) const { return m_folder.File(name); }
    // Paths below the program's folder with "~" in its place.
    [[nodiscard]] std::string Shortened(std::string text) const;

    WorkerCalls handles;  // only their names: a CallWatch sees the calls
    ScriptedConverters converters{handles};

    // Plans: made before the program starts, or while it does nothing.
    // Those of the converters are used up in order; the last one stays for all that follow.
    std::vector<Conversion> conversions{{.console = kConsoleClass}};
    std::wstring chosenFiles;  // what the open dialog leaves in its buffer, without the last null; "": Cancel
    std::wstring chosenFolder;  // in the folder browser; empty: Cancel
    DWORD shellError = 0;       // not 0: nothing can be opened
    bool anotherCopyRuns = false;
    bool consolesIgnoreClosing = false;
    bool screenReader = false;  // runs
    bool realMessages = false;  // message boxes are shown and wait for the user
    std::atomic<int> answerToQuestions{IDYES};

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
    [[nodiscard]] Counts Held() const;

    // Worker threads that have been started and have not ended.
    [[nodiscard]] int Workers() const { return m_workers; }
    // Notes a message of the test's own that has come out of the program's queue, see User::WaitForPosted.
    [[nodiscard]] int Markers() const { return m_markers; }
    static constexpr UINT kMarkerMessage = WM_APP + 0x3FF0;

private:
    using Converter = ScriptedConverters::Converter;
    void AnswerConverters();
    void AnswerDesktop();
    void AnswerObjects();
    void AnswerProcess();

    // Things that there are now, under the lock.
    template <class Thing>
    void Add(std::set<Thing>& things, std::type_identity_t<Thing> thing) {
        const std::lock_guard lock(m_lock);
        things.insert(thing);
    }
    template <class Thing>
    bool Remove(std::set<Thing>& things, std::type_identity_t<Thing> thing) {
        const std::lock_guard lock(m_lock);
        return things.erase(thing) != 0;
    }

    // Answers of functions that hand out a thing, and of those that take one back as their last argument.
    template <class Thing>
    auto HandsOut(std::set<Thing>& things) {
        return [this, &things](auto original, auto... arguments) {
            const auto thing = original(arguments...);
            if (thing) this->Add(things, thing);
            return thing;
        };
    }
    template <class Thing>
    auto TakesBack(std::set<Thing>& things) {
        return [this, &things](auto original, auto... arguments) {
            this->Remove(things, std::get<sizeof...(arguments) - 1>(std::tie(arguments...)));
            return original(arguments...);
        };
    }

    [[nodiscard]] static std::string TextOf(const wchar_t* text) { return text ? Utf8(text) : ""; }
    [[nodiscard]] std::filesystem::path FillFolder() const;  // returns what is to be the current one
    [[nodiscard]] std::string ReadLog() const;
    [[nodiscard]] Conversion PlanFor(const ScriptedConverters::Start& start, int number);
    void PlanConsoles();
    // The numbers of the converters on paper that fit.
    [[nodiscard]] std::vector<int> NumbersOf(bool (*fits)(const Converter& converter)) const;
    void Show(HWND window, const std::string& text);  // in the taskbar
    void Name(HWND control, const wchar_t* name);     // for a screen reader; null: no name of its own
    void Note(const std::string& kind, const std::string& text);

    TemporaryFolder m_folder;
    CurrentFolder m_current{FillFolder()};
    mutable SystemLock m_lock;
    std::map<std::string, std::vector<std::string>> m_requests = {
        {"messages", {}}, {"beeps", {}},    {"starts", {}}, {"shell", {}},      {"shutdowns", {}},
        {"closing", {}},  {"searches", {}}, {"jobs", {}},   {"awakeCalls", {}}, {"taskbar", {}}};
    std::map<std::string, std::string> m_names;
    std::string m_taskbarShows;
    std::set<void*> m_blocks;
    std::set<HANDLE> m_icons;
    std::set<UINT_PTR> m_timers;
    std::set<DWORD> m_awake;  // ids of threads
    std::atomic<int> m_objects{0};
    std::atomic<int> m_markers{0};
    std::size_t m_requested = 0;  // converters
    std::atomic<int> m_workers{0};
    // In the place of functions that this program need not import itself. Called on any of the program's
    // threads.
    std::vector<Replaced> m_answers;
};
