// What a user may expect of the main window, as one small model that knows nothing of windows: which control
// is enabled when, what the list holds, what a batch does to both. It is written from the rules, not from the
// program, and is compared with the program after every action of a random user.
#pragma once

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
    explicit WindowModel(std::set<std::wstring> existingFolders);

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
    void Drop(const std::vector<std::wstring>& paths);
    void AddByDialog(const std::vector<std::wstring>& chosen);  // none: cancelled
    void Clear();
    void SelectRow(int row);
    // `focusedAfterwards` is the row that the list hands the focus to. It does so without a word, so that
    // this row is not selected.
    void DeleteKey(int focusedAfterwards);
    void ClickCheckBox(int id);
    void ClickDisabledEdit(int id);
    void TypePages(const std::wstring& characters);
    void Replace(int edit, const std::wstring& newText);  // focuses the edit and replaces its text
    void Browse(const std::wstring& folder);              // empty: cancelled
    void OpenDestination();
    void Convert();
    void Stop(bool confirmed);
    void TimerTick();

    // Keys, which go to the control with the focus. A disabled one gets none but Tab.
    void TabKey(bool forward);
    void DownKey();
    void SpaceKey();
    void EnterKey();
    void Character(wchar_t character);
    // Whether what a key does here is described by the above: else it is a click's or the system's.
    [[nodiscard]] bool KnowsSpace() const;
    [[nodiscard]] bool KnowsEnter() const;
    [[nodiscard]] bool KnowsCharacter() const;
    [[nodiscard]] bool KnowsDown() const;

    // The converter ends; `success` by its exit code.
    void ConverterEnds(bool success);

private:
    void MoveFocus(int id);
    void Start();
    [[nodiscard]] bool HasKeys() const { return enabled.at(focus); }
    void Append(const std::wstring& path);
    void SetRunningState(bool toRunning);
    void GoToRow(std::size_t row);
    void EndBatch();
    void RowChanged(int row);
    void SetDurationOfSelected(const std::wstring& duration);
    [[nodiscard]] bool OutputFolderExists() const;

    std::set<std::wstring> m_folders;
};
