#include "tests/model/window_model.h"

#include <algorithm>
#include <cwctype>

namespace {

const std::wstring kCancelled = L"*** Annulé !";
const std::wstring kNoTime = L"00:00:00";  // the clock stands still in these tests

const std::vector<int> kBoxes = {IDC_PAGES_CHECK,   IDC_RESOLUTION_CHECK,
                                 IDC_NO_METADATA,   IDC_NO_OUTLINE,
                                 IDC_NO_HYPERLINKS, IDC_NO_TEXT,
                                 IDC_LINES,         IDC_MONOCHROME,
                                 IDC_HIDE_OUTPUT,   IDC_OUTPUT_FOLDER_CHECK,
                                 IDC_SHUT_DOWN};

// As the template has them.
const std::vector<int> kTabOrder = {1,    2,    57664, 1003, 1005, 1034, 1014, 1033, 1032, 1017, 1036, 1037,
                                    1015, 1016, 1030,  1018, 1019, 1022, 1024, 1027, 1028, 1026, 1038, 1040};

}  // namespace

WindowModel::WindowModel(std::set<std::wstring> existingFolders) : m_folders(std::move(existingFolders)) {
    for (const int box : kBoxes) {
        checked[box] = false;
        enabled[box] = true;
    }
    for (const int id : {1, 1014, 1032, 1027, 1028, 1022, 1024}) enabled[id] = false;
    for (const int id : {2, 57664, 1003, 1005, 1018, 1040}) enabled[id] = true;
    for (const int id : {1014, 1032, 1027, 1018, 1004}) text[id] = L"";
    text[2] = L"Quitter";
}

bool WindowModel::OutputFolderExists() const {
    return m_folders.contains(text.at(1027));
}

// What leaving an edit does comes before anything that the new focus brings.
void WindowModel::MoveFocus(int id) {
    if (focus == id) return;
    const int left = focus;
    focus = id;
    // This box tells of the focus too, and its edit follows it whatever it tells: also while a batch runs.
    if (left == 1034 || id == 1034) enabled[1014] = checked[1034];
    if (left == 1032 && !text[1032].empty()) {
        const long value = std::stol(text[1032]);
        if (value < 72) text[1032] = L"72";
        if (value > 6000) text[1032] = L"6000";
    }
    if (left == 1027 && id != 1026 && id != 1028 && text[1027].empty()) {
        checked[1026] = false;
        enabled[1027] = enabled[1028] = false;
    }
}

void WindowModel::Append(const std::wstring& path) {
    if (std::ranges::any_of(rows, [&](const ModelRow& row) { return row.path == path; })) {
        ++beeps;
    } else {
        rows.push_back({path, L""});
    }
}

void WindowModel::Drop(const std::vector<std::wstring>& paths) {
    for (const std::wstring& path : paths) {
        std::wstring end = path.size() < 4 ? L"" : path.substr(path.size() - 4);
        std::ranges::transform(
            end, end.begin(), [](wchar_t c) { return c < 128 ? static_cast<wchar_t>(std::towlower(c)) : c; });
        if (end == L".pdf") Append(path);
    }
}

void WindowModel::AddByDialog(const std::vector<std::wstring>& chosen) {
    MoveFocus(1003);
    for (const std::wstring& path : chosen) Append(path);
    enabled[1] = !rows.empty();
}

void WindowModel::Clear() {
    MoveFocus(1005);
    rows.clear();
    selected = focusedRow = -1;
    enabled[1] = false;
    durationsShown = false;
    text[1004] = L"";
}

void WindowModel::RowChanged(int row) {
    text[1004] = rows[static_cast<std::size_t>(row)].path;
    if (!checked[1026]) enabled[1022] = true;
}

void WindowModel::SelectRow(int row) {
    if (selected == row && focusedRow == row) return;
    selected = focusedRow = row;
    RowChanged(row);
}

void WindowModel::DeleteKey(int focusedAfterwards) {
    if (running) return;
    if (selected != -1) {
        RowChanged(selected);  // loses its selection before it goes
        rows.erase(rows.begin() + selected);
        selected = -1;
        focusedRow = focusedAfterwards;
    }
    if (selected == -1) text[1004] = L"";
}

void WindowModel::ClickBox(int id) {
    MoveFocus(id);
    checked[id] = !checked[id];
    const bool on = checked[id];
    switch (id) {
    case 1034: enabled[1014] = on; break;
    case 1033:
        enabled[1032] = on;
        if (on && text[1032].empty()) text[1032] = L"300";
        break;
    case 1015: enabled[1016] = !on; break;
    case 1026:
        enabled[1028] = enabled[1027] = on;
        if (on) {
            MoveFocus(1027);
            if (OutputFolderExists()) enabled[1022] = true;
        }
        break;
    default: break;
    }
}

void WindowModel::ClickDisabledEdit(int id) {
    enabled[id] = true;
    checked[id == 1014 ? 1034 : id == 1032 ? 1033 : 1026] = true;
    if (id == 1027) enabled[1028] = true;
    MoveFocus(id);
}

void WindowModel::TypePages(const std::wstring& characters) {
    MoveFocus(1014);
    for (const wchar_t c : characters) {
        const bool accepted = c == L',' || c == L'-' || (c >= L'0' && c <= L'9');
        if (accepted) {
            text[1014] += c;
        } else {
            ++beeps;
        }
    }
}

void WindowModel::Replace(int edit, const std::wstring& newText) {
    MoveFocus(edit);
    text[edit] = newText;
    if (edit == 1027) enabled[1022] = OutputFolderExists();
}

void WindowModel::Browse(const std::wstring& folder) {
    MoveFocus(1028);
    if (folder.empty()) return;
    text[1027] = folder;
    enabled[1022] = OutputFolderExists();
}

void WindowModel::OpenDestination() {
    MoveFocus(1022);
    std::wstring folder;
    if (checked[1026]) {
        folder = text[1027];
    } else if (selected != -1) {
        const std::wstring& path = rows[static_cast<std::size_t>(selected)].path;
        folder = path.substr(0, path.rfind(L'\\'));
    }
    if (!folder.empty()) openedFolders.push_back(folder);
}

void WindowModel::SetRunningState(bool toRunning) {
    const bool on = !toRunning;
    for (const int id : {1, 1003, 1005, 1040, 1034, 1033, 1017, 1036, 1037, 1015, 1016, 1030, 1018, 1019,
                         1026, 1027, 1028, 1038}) {
        enabled[id] = on;
    }
    if (checked[1034]) enabled[1014] = on;
    if (checked[1033]) enabled[1032] = on;
    text[2] = toRunning ? L"Arrêter " : L"Quitter";
    if (running) {
        for (ModelRow& row : rows) row.duration.clear();
    }
}

void WindowModel::Convert() {
    MoveFocus(1);
    Start();
}

// The focus stays where it is, also on a control that is disabled now.
void WindowModel::Start() {
    if (checked[1026] && !OutputFolderExists()) {
        boxes.push_back(L"Le dossier de destination est incorrect !");
        return;
    }
    running = true;
    SetRunningState(true);
    if (rows.empty()) return;
    enabled[1024] = logButtonShown = false;
    durationsShown = true;
    GoToRow(0);
}

void WindowModel::GoToRow(std::size_t row) {
    workerRow = row;
    workerWaits = true;
    SelectRow(static_cast<int>(row));
    text[1004] = L"Conversion en cours : " + rows[row].path;
}

void WindowModel::SetDurationOfSelected(const std::wstring& duration) {
    if (selected != -1) rows[static_cast<std::size_t>(selected)].duration = duration;
}

void WindowModel::ConverterEnds(bool success) {
    workerWaits = false;
    if (!success) running = false;
    SetDurationOfSelected(running ? kNoTime : kCancelled);
    if (success && running && workerRow + 1 < rows.size()) {
        GoToRow(workerRow + 1);
    } else {
        EndBatch();
    }
}

void WindowModel::EndBatch() {
    if (checked[1038]) ++countdowns;
    if (selected != -1) RowChanged(selected);  // losing the selection is a change too
    selected = -1;
    if (running) boxes.push_back(L"Conversion terminée !");
    text[1004] = L"";
    if (checked[1019]) enabled[1024] = logButtonShown = true;
    running = false;
    SetRunningState(false);
}

void WindowModel::Stop(bool confirmed) {
    MoveFocus(2);
    boxes.push_back(L"Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?");
    if (!confirmed) return;
    running = false;
    SetRunningState(false);
}

void WindowModel::TabKey(bool forward) {
    const auto size = kTabOrder.size();
    const auto start = static_cast<std::size_t>(std::ranges::find(kTabOrder, focus) - kTabOrder.begin());
    for (std::size_t step = 1; step <= size; ++step) {
        const int next = kTabOrder[(start + (forward ? step : size - step)) % size];
        if (!enabled[next] || (next == 1024 && !logButtonShown)) continue;
        MoveFocus(next);
        return;
    }
}

bool WindowModel::KnowsDown() const {
    return !HasKeys() || (focus == 1040 && focusedRow != -1);
}

void WindowModel::DownKey() {
    if (HasKeys() && focusedRow + 1 < static_cast<int>(rows.size())) SelectRow(focusedRow + 1);
}

bool WindowModel::KnowsSpace() const {
    return !HasKeys() || focus == 1 || checked.contains(focus);
}

void WindowModel::SpaceKey() {
    if (!HasKeys()) return;
    if (focus == 1) {
        Start();
    } else {
        ClickBox(focus);
    }
}

bool WindowModel::KnowsEnter() const {
    return !HasKeys() || focus == 1040 || checked.contains(focus) || KnowsCharacter();
}

// Presses the button that is the dialog's default, if that is enabled.
void WindowModel::EnterKey() {
    if (HasKeys() && enabled[1]) Start();
}

bool WindowModel::KnowsCharacter() const {
    return !HasKeys() || focus == 1014 || focus == 1032 || focus == 1018 || focus == 1027;
}

void WindowModel::Character(wchar_t character) {
    if (!HasKeys()) return;
    if (focus == 1014) {
        TypePages({character});
    } else {
        Replace(focus, text[focus] + character);
    }
}

void WindowModel::TimerTick() {
    SetDurationOfSelected(running ? kNoTime : kCancelled);
}
