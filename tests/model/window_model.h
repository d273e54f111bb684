// What a user may expect of the main window, as one small model that knows nothing of windows: which control
// is enabled when, what the list holds, what a batch does to both. It is written from the rules, not from the
// program, and is compared with the program after every action of a random user.
#pragma once

#include "res/resource.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cwctype>
#include <map>
#include <set>
#include <string>
#include <vector>

struct ModelRow {
    std::wstring path;
    std::wstring duration;
    bool operator==(const ModelRow&) const = default;
};

class WindowModel {
public:
    explicit WindowModel(std::set<std::wstring> existingFolders) : m_folders(std::move(existingFolders)) {
        for (const int id : kTabOrder) enabled[id] = true;
        for (const int id : {IDOK, IDC_PAGES, IDC_RESOLUTION, IDC_OUTPUT_FOLDER, IDC_BROWSE,
                             IDC_OPEN_DESTINATION, IDC_OPEN_LOG}) {
            enabled[id] = false;
        }
        for (const int id : kCheckBoxes) checked[id] = false;
        for (const int id : {IDC_PAGES, IDC_RESOLUTION, IDC_OUTPUT_FOLDER, IDC_EXTRA_OPTIONS, IDC_STATUS}) {
            text[id] = L"";
        }
        text[IDCANCEL] = L"Quitter";
    }

    // What the window shows.
    std::map<int, bool> enabled;
    std::map<int, bool> checked;
    std::map<int, std::wstring> text;  // edits, status line, button 2
    std::vector<ModelRow> rows;
    int selected = -1;
    int focusedRow = -1;  // of the list
    int focus = 0;        // id of the control that has it; 0: not known
    bool logButtonShown = false;
    bool durationsShown = false;
    bool running = false;
    int beeps = 0;
    std::vector<std::wstring> messages;       // texts of the message boxes shown
    std::vector<std::wstring> openedFolders;  // what Explorer was started on
    int countdowns = 0;

    // The batch's worker.
    bool workerWaits = false;  // for the converter of `workerRow`
    std::size_t workerRow = 0;

    // The user's actions. Those on a disabled control are the caller's to leave out, as the system does.

    void Drop(const std::vector<std::wstring>& paths) {
        for (const std::wstring& path : paths) {
            std::wstring end = path.size() < 4 ? L"" : path.substr(path.size() - 4);
            std::ranges::transform(end, end.begin(), [](wchar_t c) {
                return c < 128 ? static_cast<wchar_t>(std::towlower(c)) : c;
            });
            if (end == L".pdf") Append(path);
        }
    }
    // None chosen: cancelled.
    void AddByDialog(const std::vector<std::wstring>& chosen) {
        MoveFocus(IDC_ADD);
        for (const std::wstring& path : chosen) Append(path);
        enabled[IDOK] = !rows.empty();
    }
    void Clear() {
        MoveFocus(IDC_CLEAR);
        rows.clear();
        selected = focusedRow = -1;
        enabled[IDOK] = false;
        durationsShown = false;
        text[IDC_STATUS] = L"";
    }
    void SelectRow(int row) {
        if (selected == row && focusedRow == row) return;
        selected = focusedRow = row;
        RowChanged(row);
    }
    // `focusedAfterwards` is the row that the list hands the focus to. It does so without a word, so that
    // this row is not selected.
    void DeleteKey(int focusedAfterwards) {
        if (running) return;
        if (selected != -1) {
            RowChanged(selected);  // loses its selection before it goes
            rows.erase(rows.begin() + selected);
            selected = -1;
            focusedRow = focusedAfterwards;
        }
        if (selected == -1) text[IDC_STATUS] = L"";
    }
    void ClickCheckBox(int id) {
        MoveFocus(id);
        checked[id] = !checked[id];
        const bool on = checked[id];
        switch (id) {
        case IDC_PAGES_CHECK: enabled[IDC_PAGES] = on; break;
        case IDC_RESOLUTION_CHECK:
            enabled[IDC_RESOLUTION] = on;
            if (on && text[IDC_RESOLUTION].empty()) text[IDC_RESOLUTION] = L"300";
            break;
        case IDC_NO_TEXT: enabled[IDC_LINES] = !on; break;
        case IDC_OUTPUT_FOLDER_CHECK:
            enabled[IDC_BROWSE] = enabled[IDC_OUTPUT_FOLDER] = on;
            if (on) {
                MoveFocus(IDC_OUTPUT_FOLDER);
                if (OutputFolderExists()) enabled[IDC_OPEN_DESTINATION] = true;
            }
            break;
        default: break;
        }
    }
    void ClickDisabledEdit(int id) {
        enabled[id] = true;
        checked[id == IDC_PAGES        ? IDC_PAGES_CHECK
                : id == IDC_RESOLUTION ? IDC_RESOLUTION_CHECK
                                       : IDC_OUTPUT_FOLDER_CHECK] = true;
        if (id == IDC_OUTPUT_FOLDER) enabled[IDC_BROWSE] = true;
        MoveFocus(id);
    }
    void TypePages(const std::wstring& characters) {
        MoveFocus(IDC_PAGES);
        for (const wchar_t c : characters) {
            const bool accepted = c == L',' || c == L'-' || (c >= L'0' && c <= L'9');
            if (accepted) {
                text[IDC_PAGES] += c;
            } else {
                ++beeps;
            }
        }
    }
    // Focuses the edit and replaces its text.
    void Replace(int edit, const std::wstring& newText) {
        MoveFocus(edit);
        text[edit] = newText;
        if (edit == IDC_OUTPUT_FOLDER) enabled[IDC_OPEN_DESTINATION] = OutputFolderExists();
    }
    // An empty folder: cancelled.
    void Browse(const std::wstring& folder) {
        MoveFocus(IDC_BROWSE);
        if (folder.empty()) return;
        text[IDC_OUTPUT_FOLDER] = folder;
        enabled[IDC_OPEN_DESTINATION] = OutputFolderExists();
    }
    void OpenDestination() {
        MoveFocus(IDC_OPEN_DESTINATION);
        std::wstring folder;
        if (checked[IDC_OUTPUT_FOLDER_CHECK]) {
            folder = text[IDC_OUTPUT_FOLDER];
        } else if (selected != -1) {
            const std::wstring& path = rows[static_cast<std::size_t>(selected)].path;
            folder = path.substr(0, path.rfind(L'\\'));
        }
        if (!folder.empty()) openedFolders.push_back(folder);
    }
    void Convert() {
        MoveFocus(IDOK);
        Start();
    }
    void Stop(bool confirmed) {
        MoveFocus(IDCANCEL);
        messages.push_back(L"Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?");
        if (!confirmed) return;
        running = false;
        SetRunningState(false);
    }
    void TimerTick() { SetDurationOfSelected(running ? kNoTime : kCancelled); }

    // Keys, which go to the control with the focus. A disabled one gets none but Tab. Whether what a key does
    // here is described by these functions: else it is a click's or the system's.

    void TabKey(bool forward) {
        const std::size_t size = kTabOrder.size();
        const auto start = static_cast<std::size_t>(std::ranges::find(kTabOrder, focus) - kTabOrder.begin());
        for (std::size_t step = 1; step <= size; ++step) {
            const int next = kTabOrder[(start + (forward ? step : size - step)) % size];
            if (!enabled[next] || (next == IDC_OPEN_LOG && !logButtonShown)) continue;
            MoveFocus(next);
            return;
        }
    }
    [[nodiscard]] bool KnowsDown() const {
        return !HasKeys() || (focus == IDC_FILE_LIST && focusedRow != -1);
    }
    void DownKey() {
        if (HasKeys() && focusedRow + 1 < static_cast<int>(rows.size())) SelectRow(focusedRow + 1);
    }
    [[nodiscard]] bool KnowsSpace() const { return !HasKeys() || focus == IDOK || checked.contains(focus); }
    void SpaceKey() {
        if (!HasKeys()) return;
        if (focus == IDOK) {
            Start();
        } else {
            ClickCheckBox(focus);
        }
    }
    [[nodiscard]] bool KnowsEnter() const {
        return !HasKeys() || focus == IDC_FILE_LIST || checked.contains(focus) || KnowsCharacter();
    }
    // Presses the button that is the dialog's default, if that is enabled.
    void EnterKey() {
        if (HasKeys() && enabled[IDOK]) Start();
    }
    [[nodiscard]] bool KnowsCharacter() const {
        return !HasKeys() || focus == IDC_PAGES || focus == IDC_RESOLUTION || focus == IDC_EXTRA_OPTIONS ||
               focus == IDC_OUTPUT_FOLDER;
    }
    void Character(wchar_t character) {
        if (!HasKeys()) return;
        if (focus == IDC_PAGES) {
            TypePages({character});
        } else {
            Replace(focus, text[focus] + character);
        }
    }

    // The converter ends; `success` by its exit code.
    void ConverterEnds(bool success) {
        workerWaits = false;
        if (!success) running = false;
        SetDurationOfSelected(running ? kNoTime : kCancelled);
        if (success && running && workerRow + 1 < rows.size()) {
            GoToRow(workerRow + 1);
        } else {
            EndBatch();
        }
    }

private:
    [[nodiscard]] bool HasKeys() const { return enabled.at(focus); }
    [[nodiscard]] bool OutputFolderExists() const { return m_folders.contains(text.at(IDC_OUTPUT_FOLDER)); }

    // What leaving an edit does comes before anything that the new focus brings.
    void MoveFocus(int id) {
        if (focus == id) return;
        const int left = focus;
        focus = id;
        // This check box also reports the focus, and its edit follows it whatever it reports: also while a
        // batch runs.
        if (left == IDC_PAGES_CHECK || id == IDC_PAGES_CHECK) enabled[IDC_PAGES] = checked[IDC_PAGES_CHECK];
        if (left == IDC_RESOLUTION && !text[IDC_RESOLUTION].empty()) {
            const long value = std::stol(text[IDC_RESOLUTION]);
            if (value < 72) text[IDC_RESOLUTION] = L"72";
            if (value > 6000) text[IDC_RESOLUTION] = L"6000";
        }
        if (left == IDC_OUTPUT_FOLDER && id != IDC_OUTPUT_FOLDER_CHECK && id != IDC_BROWSE &&
            text[IDC_OUTPUT_FOLDER].empty()) {
            checked[IDC_OUTPUT_FOLDER_CHECK] = false;
            enabled[IDC_OUTPUT_FOLDER] = enabled[IDC_BROWSE] = false;
        }
    }
    void Append(const std::wstring& path) {
        if (std::ranges::any_of(rows, [&](const ModelRow& row) { return row.path == path; })) {
            ++beeps;
        } else {
            rows.push_back({path, L""});
        }
    }
    void RowChanged(int row) {
        text[IDC_STATUS] = rows[static_cast<std::size_t>(row)].path;
        if (!checked[IDC_OUTPUT_FOLDER_CHECK]) enabled[IDC_OPEN_DESTINATION] = true;
    }
    void SetDurationOfSelected(const std::wstring& duration) {
        if (selected != -1) rows[static_cast<std::size_t>(selected)].duration = duration;
    }
    // The focus stays where it is, also on a control that is disabled now.
    void Start() {
        if (checked[IDC_OUTPUT_FOLDER_CHECK] && !OutputFolderExists()) {
            messages.push_back(L"Le dossier de destination est incorrect !");
            return;
        }
        running = true;
        SetRunningState(true);
        if (rows.empty()) return;
        enabled[IDC_OPEN_LOG] = logButtonShown = false;
        durationsShown = true;
        GoToRow(0);
    }
    void SetRunningState(bool toRunning) {
        for (const int id : kTabOrder) {
            const bool hasOwnState = id == IDCANCEL || id == IDC_ABOUT || id == IDC_PAGES ||
                                     id == IDC_RESOLUTION || id == IDC_OPEN_DESTINATION || id == IDC_OPEN_LOG;
            if (!hasOwnState) enabled[id] = !toRunning;
        }
        if (checked[IDC_PAGES_CHECK]) enabled[IDC_PAGES] = !toRunning;
        if (checked[IDC_RESOLUTION_CHECK]) enabled[IDC_RESOLUTION] = !toRunning;
        text[IDCANCEL] = toRunning ? L"Arrêter " : L"Quitter";
        if (running) {
            for (ModelRow& row : rows) row.duration.clear();
        }
    }
    void GoToRow(std::size_t row) {
        workerRow = row;
        workerWaits = true;
        SelectRow(static_cast<int>(row));
        text[IDC_STATUS] = L"Conversion en cours : " + rows[row].path;
    }
    void EndBatch() {
        if (checked[IDC_SHUT_DOWN]) ++countdowns;
        if (selected != -1) RowChanged(selected);  // losing the selection is a change too
        selected = -1;
        if (running) messages.push_back(L"Conversion terminée !");
        text[IDC_STATUS] = L"";
        if (checked[IDC_HIDE_OUTPUT]) enabled[IDC_OPEN_LOG] = logButtonShown = true;
        running = false;
        SetRunningState(false);
    }

    static constexpr wchar_t kCancelled[] = L"*** Annulé !";
    static constexpr wchar_t kNoTime[] = L"00:00:00";  // the clock does not advance in these tests
    // All controls that can be used, in the order of the template.
    static constexpr auto kTabOrder = std::to_array({IDOK,
                                                     IDCANCEL,
                                                     IDC_ABOUT,
                                                     IDC_ADD,
                                                     IDC_CLEAR,
                                                     IDC_PAGES_CHECK,
                                                     IDC_PAGES,
                                                     IDC_RESOLUTION_CHECK,
                                                     IDC_RESOLUTION,
                                                     IDC_NO_METADATA,
                                                     IDC_NO_OUTLINE,
                                                     IDC_NO_HYPERLINKS,
                                                     IDC_NO_TEXT,
                                                     IDC_LINES,
                                                     IDC_MONOCHROME,
                                                     IDC_EXTRA_OPTIONS,
                                                     IDC_HIDE_OUTPUT,
                                                     IDC_OPEN_DESTINATION,
                                                     IDC_OPEN_LOG,
                                                     IDC_OUTPUT_FOLDER,
                                                     IDC_BROWSE,
                                                     IDC_OUTPUT_FOLDER_CHECK,
                                                     IDC_SHUT_DOWN,
                                                     IDC_FILE_LIST});
    static constexpr auto kCheckBoxes = std::to_array(
        {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_NO_METADATA, IDC_NO_OUTLINE, IDC_NO_HYPERLINKS,
         IDC_NO_TEXT, IDC_LINES, IDC_MONOCHROME, IDC_HIDE_OUTPUT, IDC_OUTPUT_FOLDER_CHECK, IDC_SHUT_DOWN});

    std::set<std::wstring> m_folders;
};
