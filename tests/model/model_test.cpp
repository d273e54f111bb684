// The real window against the model, over seeded random users. A sequence of actions is data: it can be
// replayed, printed and shortened.
#include "tests/equipment/scripted_converters.h"
#include "tests/model/window_model.h"
#include "tests/support/replaced_late_import.h"
#include "tests/window/main_window_fixture.h"
#include "tests/window/scripted_shell.h"

#include <windows.h>
#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>

#include <array>
#include <cstdlib>
#include <cwchar>
#include <optional>
#include <random>

namespace {

const std::vector<std::wstring> kPaths = {L"C:\\in\\a.pdf",    L"C:\\in\\b.PDF",     L"C:\\other\\a.pdf",
                                          L"C:\\in\\A.pdf",    L"C:\\in\\été 1.pdf", L"C:\\in\\note.txt",
                                          L"C:\\in\\x.pdf.bak"};
const std::vector<int> kCheckBoxIds = {IDC_PAGES_CHECK,     IDC_RESOLUTION_CHECK,
                                       IDC_NO_METADATA,     IDC_NO_OUTLINE,
                                       IDC_NO_HYPERLINKS,   IDC_NO_TEXT,
                                       IDC_LINES,           IDC_MONOCHROME,
                                       IDC_HIDE_OUTPUT,     IDC_OUTPUT_FOLDER_CHECK,
                                       IDC_SHUT_DOWN,       IDC_OUTPUT_FOLDER_CHECK,
                                       IDC_RESOLUTION_CHECK};
const std::vector<int> kHintedEdits = {IDC_PAGES, IDC_RESOLUTION, IDC_OUTPUT_FOLDER};
const std::vector<std::wstring> kPageTexts = {L"1", L"2-", L",8", L"a", L"x3 "};
const std::vector<std::wstring> kResolutions = {L"", L"50", L"72", L"300", L"6000", L"6001"};

template <class T>
const T& Pick(const std::vector<T>& values, std::uint32_t choice) {
    return values[choice % values.size()];
}

std::vector<std::wstring> PickPaths(std::uint32_t choice) {
    std::vector<std::wstring> paths;
    for (std::uint32_t count = choice % 3 + 1; count > 0; --count) {
        choice /= 7;
        paths.push_back(Pick(kPaths, choice));
    }
    return paths;
}

// The state of the Shift key, as this thread sees it.
class ShiftHold {
public:
    explicit ShiftHold(bool held) {
        ::GetKeyboardState(m_before.data());
        std::array<BYTE, 256> now = m_before;
        now[VK_SHIFT] = held ? 0x80 : 0;
        ::SetKeyboardState(now.data());
    }
    ShiftHold(const ShiftHold&) = delete;
    ShiftHold& operator=(const ShiftHold&) = delete;
    ~ShiftHold() { ::SetKeyboardState(m_before.data()); }

private:
    std::array<BYTE, 256> m_before{};
};

// Plays sequences of actions on the real window and on the model, side by side.
class ModelRun : public MainWindowFixture {
protected:
    ModelRun() { s_current = this; }

    // Something that a user can do, to window and model.
    struct UserAction {
        const char* name;
        std::size_t weight;  // how often it comes: a batch must be reached, and be left
        int control;         // that must be enabled, or kFocused; 0: none
        bool (*isPossible)(const WindowModel& model, std::uint32_t choice);  // besides; null: yes
        void (*play)(ModelRun& window, WindowModel& model, std::uint32_t choice);
    };
    static constexpr int kFocused = -1;  // any that has the focus, also a disabled one

    struct Action {
        const UserAction* what;
        std::uint32_t choice;  // which row, check box, text... : taken modulo what there is
    };

    // The same sequence for the same seed, on every machine.
    static std::vector<Action> RandomActions(std::uint32_t seed, int count) {
        std::vector<const UserAction*> urn;
        for (const UserAction& action : UserActions()) urn.insert(urn.end(), action.weight, &action);
        std::mt19937 random(seed);  // its numbers are fixed by the language; those of distributions are not
        std::vector<Action> actions;
        for (int i = 0; i < count; ++i) {
            const UserAction* const what = urn[random() % urn.size()];
            actions.push_back({what, static_cast<std::uint32_t>(random())});
        }
        return actions;
    }

    // A line for each action, as a test could be written from it.
    static std::string Describe(const std::vector<Action>& actions) {
        std::string text;
        for (const auto& [what, choice] : actions) {
            text += std::string("  ") + what->name + ' ' + std::to_string(choice) + '\n';
        }
        return text;
    }

    // The first difference between window and model, with the action after which it showed; nothing when
    // there is none. Each call begins with a window of its own.
    std::optional<std::string> Play(const std::vector<Action>& actions) {
        calls.Clear();
        m_shell.requests.clear();
        m_countdowns = 0;
        std::filesystem::remove(folder.File(L"TalvenorLog.txt"));  // of an earlier play
        WorkerCalls worker;
        ScriptedConverters converters(worker);
        m_converters = &converters;
        converters.HoldAll();
        Create();
        ::ShowWindow(Dialog(), SW_SHOW);
        ::SetActiveWindow(Dialog());
        WindowModel model({m_goodFolder});
        std::optional<std::string> difference = Compare(model);
        for (std::size_t step = 0; step < actions.size() && !difference; ++step) {
            if (!IsPossible(actions[step], model)) continue;
            actions[step].what->play(*this, model, actions[step].choice);
            ++effective;
            PumpPending();
            difference = Compare(model);
            if (difference)
                *difference += "\nafter step " + std::to_string(step) + ":\n" + Describe({actions[step]});
        }
        converters.ReleaseAll(1);
        WaitFor([&] { return !dialog->HasWorker(); });
        Destroy();
        return difference;
    }

    // The shortest part of a failing sequence that still fails, found by leaving actions out.
    std::vector<Action> Shrink(std::vector<Action> failing) {
        for (std::size_t part = failing.size() / 2; part > 0; part /= 2) {
            for (std::size_t from = 0; from + part <= failing.size();) {
                std::vector<Action> shorter = failing;
                const auto first = shorter.begin() + static_cast<std::ptrdiff_t>(from);
                shorter.erase(first, first + static_cast<std::ptrdiff_t>(part));
                if (Play(shorter)) {
                    failing = shorter;
                } else {
                    from += part;
                }
            }
        }
        return failing;
    }

    // Actions that did something, over all plays; a user whose every click is refused would prove little.
    int effective = 0;
    int conversions = 0;
    int keysOfDisabled = 0;  // pressed in a control that was disabled

private:
    static const std::vector<UserAction>& UserActions();

    [[nodiscard]] bool IsPossible(const Action& action, const WindowModel& model) {
        const auto& [name, weight, control, isPossible, play] = *action.what;
        if (control == kFocused && model.focus == 0) return false;
        if (control == kFocused && !model.enabled.at(model.focus)) ++keysOfDisabled;
        if (control > 0 && !model.enabled.at(control)) return false;
        return !isPossible || isPossible(model, action.choice);
    }

    [[nodiscard]] std::optional<std::string> Compare(const WindowModel& model) const {
        std::string differences;
        const auto expect = [&](const std::string& what, const auto& window, const auto& wanted) {
            if (window != wanted) {
                differences += what + ": window " + testing::PrintToString(window) + ", model " +
                               testing::PrintToString(wanted) + "\n";
            }
        };
        for (const auto& [id, enabled] : model.enabled)
            expect("enabled " + std::to_string(id), IsEnabled(id), enabled);
        for (const auto& [id, checked] : model.checked)
            expect("checked " + std::to_string(id), IsChecked(id), checked);
        for (const auto& [id, text] : model.text)
            expect("text " + std::to_string(id), Utf8(Text(id)), Utf8(text));
        expect("rows", RowCount(), static_cast<int>(model.rows.size()));
        for (int row = 0; row < std::min(RowCount(), static_cast<int>(model.rows.size())); ++row) {
            const ModelRow& wanted = model.rows[static_cast<std::size_t>(row)];
            expect("path of row " + std::to_string(row), Utf8(Cell(row, 0)), Utf8(wanted.path));
            expect("duration of row " + std::to_string(row), Utf8(Cell(row, 1)), Utf8(wanted.duration));
        }
        expect("selected row", SelectedRow(), model.selected);
        expect("log button shown", IsShown(IDC_OPEN_LOG), model.logButtonShown);
        expect("durations shown", ColumnWidth(1) > 0, model.durationsShown);
        expect("running", dialog->IsRunning(), model.running);
        expect("countdowns", m_countdowns, model.countdowns);
        if (model.focus != 0) expect("focus", ::GetDlgCtrlID(::GetFocus()), model.focus);
        std::vector<std::string> messages;
        int beeps = 0;
        for (const std::string& call : calls.Calls()) {
            if (call.starts_with("Beep")) ++beeps;
            if (call.starts_with("MessageBoxW owner=main text=")) {
                messages.push_back(call.substr(28, call.find(" caption=") - 28));
            }
        }
        std::vector<std::string> wantedMessages;
        for (const std::wstring& text : model.messages) wantedMessages.push_back(Utf8(text));
        expect("messages", messages, wantedMessages);
        expect("beeps", beeps, model.beeps);
        expect("opened folders", m_shell.Folders(), model.openedFolders);
        return differences.empty() ? std::nullopt : std::optional(differences);
    }

    // Parts of actions.

    // False when the worker neither ends nor starts another converter.
    bool WaitForWorker(int startedBefore) {
        return WaitFor([&] { return !dialog->HasWorker() || m_converters->Started() > startedBefore; });
    }
    void Type(WindowModel& model, int edit, const std::wstring& text) {
        ::SetFocus(Control(edit));
        SetText(edit, text.c_str());
        model.Replace(edit, text);
    }
    void Stop(WindowModel& model, bool confirmed) {
        messageAnswer = confirmed ? IDYES : IDNO;
        Click(IDCANCEL);
        model.Stop(confirmed);
    }
    void EndConverter(WindowModel& model, bool well) {
        const int started = m_converters->Started();
        m_converters->Release(started, well ? 0 : 1);
        ++conversions;
        if (WaitForWorker(started)) model.ConverterEnds(well);
    }
    // Messages of the keyboard for the control with the focus, served as the program's loop does.
    void PressKey(WORD key) {
        ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, 1);
        ServeKeys();
        ::PostMessageW(::GetFocus(), WM_KEYUP, key, 1);
        ServeKeys();
    }
    void Tab(WindowModel& model, bool forward) {
        const ShiftHold shift(!forward);
        PressKey(VK_TAB);
        model.TabKey(forward);
    }
    // A key that may begin a batch.
    void PressStartKey(WORD key, WindowModel& model, void (WindowModel::*keyOfModel)()) {
        const int started = m_converters->Started();
        const bool wasRunning = model.running;
        PressKey(key);
        (model.*keyOfModel)();
        if (model.running && !wasRunning) WaitForWorker(started);
    }
    void ServeKeys() {
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (loop.FilterMessage(message)) continue;
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }

    static bool Runs(const WindowModel& model, std::uint32_t) { return model.running; }
    static bool WorkerWaits(const WindowModel& model, std::uint32_t) { return model.workerWaits; }
    static bool NoWorkerWaits(const WindowModel& model, std::uint32_t) { return !model.workerWaits; }
    // Keys that begin a batch beside a stopped worker are left out, as the click is.
    static bool MayStart(const WindowModel& model) {
        return !model.enabled.at(model.focus) || !model.enabled.at(IDOK) || !model.workerWaits;
    }

    static BOOL WINAPI ChooseFile(LPOPENFILENAMEW dialog) {
        if (s_current->m_chosen.empty()) return FALSE;
        std::wcscpy(dialog->lpstrFile, s_current->m_chosen.front().c_str());
        return TRUE;
    }

    static inline ModelRun* s_current = nullptr;

    ScriptedConverters* m_converters = nullptr;  // of this play
    std::vector<std::wstring> m_chosen;          // in the open dialog: one, or none
    std::wstring m_browsed;
    int m_countdowns = 0;
    const std::wstring m_goodFolder = folder.Path().wstring();
    ScriptedShell m_shell;
    ReplacedLateImport m_open{"GetOpenFileNameW", &ChooseFile};
    Replaced m_browse = REPLACE_IMPORT(SHBrowseForFolderW, [this](LPBROWSEINFOW) {
        static ITEMIDLIST item = {};
        return m_browsed.empty() ? nullptr : &item;
    });
    Replaced m_path = REPLACE_IMPORT(SHGetPathFromIDListW, [this](PCIDLIST_ABSOLUTE, LPWSTR path) {
        std::wcscpy(path, m_browsed.c_str());
        return TRUE;
    });
    Replaced m_free = REPLACE_IMPORT(CoTaskMemFree, [](LPVOID) {});
    Replaced m_dialogBox =
        REPLACE_IMPORT(DialogBoxParamW, [this](HINSTANCE, LPCWSTR name, HWND, DLGPROC, LPARAM) {
            if (name == MAKEINTRESOURCEW(IDD_COUNTDOWN)) ++m_countdowns;
            return IDCANCEL;
        });
    Replaced m_timer =
        REPLACE_IMPORT(SetTimer, [](HWND, UINT_PTR, UINT, TIMERPROC) -> UINT_PTR { return 1; });
    Replaced m_kill = REPLACE_IMPORT(KillTimer, [](HWND, UINT_PTR) { return TRUE; });
};

auto ModelRun::UserActions() -> const std::vector<UserAction>& {
    using Window = ModelRun&;
    using Model = WindowModel&;
    using Choice = std::uint32_t;
    static const std::vector<UserAction> s_actions = {
        {"Drop", 8, IDC_FILE_LIST, nullptr,
         [](Window window, Model model, Choice choice) {
             window.Drop(PickPaths(choice));
             model.Drop(PickPaths(choice));
         }},
        {"AddByDialog", 8, IDC_ADD, nullptr,
         [](Window window, Model model, Choice choice) {
             window.m_chosen.clear();
             if (choice % 4 != 0) window.m_chosen.push_back(PickPaths(choice / 4).front());
             window.Click(IDC_ADD);
             model.AddByDialog(window.m_chosen);
         }},
        {"Clear", 1, IDC_CLEAR, nullptr,
         [](Window window, Model model, Choice) {
             window.Click(IDC_CLEAR);
             model.Clear();
         }},
        {"SelectRow", 6, IDC_FILE_LIST, [](const WindowModel& model, Choice) { return !model.rows.empty(); },
         [](Window window, Model model, Choice choice) {
             const int row = static_cast<int>(choice % model.rows.size());
             window.SelectRow(row);
             model.SelectRow(row);
         }},
        // A row less under a waiting worker is allowed; the row it works on is then another.
        {"DeleteKey", 3, IDC_FILE_LIST, &NoWorkerWaits,
         [](Window window, Model model, Choice) {
             window.PressListKey(VK_DELETE);
             model.DeleteKey(
                 static_cast<int>(window.SendList(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED)));
         }},
        {"ClickCheckBox", 14, 0,
         [](const WindowModel& model, Choice choice) { return model.enabled.at(Pick(kCheckBoxIds, choice)); },
         [](Window window, Model model, Choice choice) {
             window.Click(Pick(kCheckBoxIds, choice));
             model.ClickCheckBox(Pick(kCheckBoxIds, choice));
         }},
        {"ClickDisabledEdit", 7, 0,
         [](const WindowModel& model, Choice choice) {
             return !model.enabled.at(Pick(kHintedEdits, choice));
         },
         [](Window window, Model model, Choice choice) {
             const int edit = Pick(kHintedEdits, choice);
             RECT area = {};
             ::GetWindowRect(window.Control(edit), &area);
             POINT point = {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
             ::ScreenToClient(window.Dialog(), &point);
             ::SendMessageW(window.Dialog(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
             model.ClickDisabledEdit(edit);
         }},
        {"TypePages", 3, IDC_PAGES, nullptr,
         [](Window window, Model model, Choice choice) {
             ::SetFocus(window.Control(IDC_PAGES));
             ::SendMessageW(window.Control(IDC_PAGES), EM_SETSEL, 1000, 1000);
             for (const wchar_t character : Pick(kPageTexts, choice)) {
                 ::SendMessageW(window.Control(IDC_PAGES), WM_CHAR, character, 1);
             }
             model.TypePages(Pick(kPageTexts, choice));
         }},
        {"TypeResolution", 4, IDC_RESOLUTION, nullptr,
         [](Window window, Model model, Choice choice) {
             window.Type(model, IDC_RESOLUTION, Pick(kResolutions, choice));
         }},
        {"TypeFolder", 6, IDC_OUTPUT_FOLDER, nullptr,
         [](Window window, Model model, Choice choice) {
             const std::wstring& good = window.m_goodFolder;
             window.Type(model, IDC_OUTPUT_FOLDER,
                         Pick(std::vector{std::wstring(), good, good + L"x"}, choice));
         }},
        {"TypeExtraOptions", 2, IDC_EXTRA_OPTIONS, nullptr,
         [](Window window, Model model, Choice choice) {
             window.Type(model, IDC_EXTRA_OPTIONS, choice % 2 ? L"--loss-level=20" : L"");
         }},
        {"Browse", 3, IDC_BROWSE, nullptr,
         [](Window window, Model model, Choice choice) {
             window.m_browsed = choice % 2 ? window.m_goodFolder : L"";
             window.Click(IDC_BROWSE);
             model.Browse(window.m_browsed);
         }},
        {"OpenDestination", 4, IDC_OPEN_DESTINATION, nullptr,
         [](Window window, Model model, Choice) {
             window.Click(IDC_OPEN_DESTINATION);
             model.OpenDestination();
         }},
        {"Convert", 8, IDOK, &NoWorkerWaits,
         [](Window window, Model model, Choice) {
             const int started = window.m_converters->Started();
             window.Click(IDOK);
             if (window.WaitForWorker(started)) model.Convert();
         }},
        {"StopNo", 2, 0, &Runs, [](Window window, Model model, Choice) { window.Stop(model, false); }},
        {"StopYes", 3, 0, &Runs, [](Window window, Model model, Choice) { window.Stop(model, true); }},
        {"TimerTick", 3, 0, nullptr,
         [](Window window, Model model, Choice) {
             ::SendMessageW(window.Dialog(), WM_TIMER, 2, 0);
             model.TimerTick();
         }},
        {"ConverterEndsWell", 8, 0, &WorkerWaits,
         [](Window window, Model model, Choice) { window.EndConverter(model, true); }},
        {"ConverterEndsBadly", 2, 0, &WorkerWaits,
         [](Window window, Model model, Choice) { window.EndConverter(model, false); }},
        {"Tab", 6, kFocused, nullptr, [](Window window, Model model, Choice) { window.Tab(model, true); }},
        {"BackTab", 3, kFocused, nullptr,
         [](Window window, Model model, Choice) { window.Tab(model, false); }},
        {"PressDown", 6, kFocused, [](const WindowModel& model, Choice) { return model.KnowsDown(); },
         [](Window window, Model model, Choice) {
             window.PressKey(VK_DOWN);
             model.DownKey();
         }},
        {"PressSpace", 6, kFocused,
         [](const WindowModel& model, Choice) { return model.KnowsSpace() && MayStart(model); },
         [](Window window, Model model, Choice) {
             window.PressStartKey(VK_SPACE, model, &WindowModel::SpaceKey);
         }},
        {"PressEnter", 6, kFocused,
         [](const WindowModel& model, Choice) { return model.KnowsEnter() && MayStart(model); },
         [](Window window, Model model, Choice) {
             window.PressStartKey(VK_RETURN, model, &WindowModel::EnterKey);
         }},
        {"TypeCharacter", 6, kFocused,
         [](const WindowModel& model, Choice) { return model.KnowsCharacter(); },
         [](Window window, Model model, Choice choice) {
             const wchar_t character = choice % 2 ? L'7' : L'0';
             ::SendMessageW(::GetFocus(), EM_SETSEL, 1000, 1000);  // behind what is there
             ::PostMessageW(::GetFocus(), WM_CHAR, character, 1);
             window.ServeKeys();
             model.Character(character);
         }},
    };
    return s_actions;
}

// How many users, from the environment: more for a long run, or one seed that is to be looked at.
int FromEnvironment(const char* name, int otherwise) {
    const char* const value = std::getenv(name);
    return value ? std::atoi(value) : otherwise;
}

TEST_F(ModelRun, WindowDoesWhatTheModelSaysForRandomUsers) {
    const int users = FromEnvironment("TALVENOR_MODEL_USERS", 20);
    const int firstSeed = FromEnvironment("TALVENOR_MODEL_SEED", 1);
    constexpr int kSteps = 50;
    for (int seed = firstSeed; seed < firstSeed + users; ++seed) {
        const std::vector<Action> actions = RandomActions(static_cast<std::uint32_t>(seed), kSteps);
        if (!Play(actions)) continue;
        const std::vector<Action> shortest = Shrink(actions);
        const auto difference = Play(shortest);
        FAIL() << "seed " << seed << "\n"
               << (difference ? *difference : "(gone when played again: a matter of timing)")
               << "\nshortest sequence:\n"
               << Describe(shortest);
    }
    std::printf(
        "model: %d users, %d steps each, %d effective actions, %d conversions, %d keys of disabled "
        "controls\n",
        users, kSteps, effective, conversions, keysOfDisabled);
    // Half of what is tried must be possible, or the users prove little.
    EXPECT_GT(effective, users * kSteps / 2);
    EXPECT_GT(conversions, users / 2);
    EXPECT_GT(keysOfDisabled, users / 2);
}

}  // namespace
