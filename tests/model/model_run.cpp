#include "tests/model/model_run.h"

#include "res/resource.h"

#include <algorithm>
#include <array>
#include <cstring>

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

std::vector<std::wstring> PickPaths(std::uint32_t choice) {
    std::vector<std::wstring> paths;
    for (std::uint32_t count = choice % 3 + 1; count > 0; --count) {
        choice /= 7;
        paths.push_back(Pick(kPaths, choice));
    }
    return paths;
}

}  // namespace

ModelRun::ModelRun() : m_goodFolder(folder.Path().wstring()) {
    s_current = this;
}

std::optional<std::string> ModelRun::Play(const std::vector<Action>& actions) {
    calls.Clear();
    m_opened.clear();
    m_countdowns = 0;
    std::filesystem::remove(folder.File(L"TalvenorLog.txt"));  // of an earlier play
    WorkerCalls worker;
    ScriptedConverters converters(worker);
    converters.HoldAll();
    Create();
    ::ShowWindow(Dialog(), SW_SHOW);
    ::SetActiveWindow(Dialog());
    WindowModel model({m_goodFolder});
    std::optional<std::string> difference = Compare(model);
    for (std::size_t step = 0; step < actions.size() && !difference; ++step) {
        if (!Do(actions[step], model, converters)) continue;
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

std::vector<Action> ModelRun::Shrink(std::vector<Action> failing) {
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

bool ModelRun::WaitForWorker(int startedBefore, const ScriptedConverters& converters) {
    return WaitFor([&] { return !dialog->HasWorker() || converters.Started() > startedBefore; });
}

bool ModelRun::Do(const Action& action, WindowModel& model, ScriptedConverters& converters) {
    const std::uint32_t choice = action.choice;
    const int started = converters.Started();
    const bool isKey = action.kind >= ActionKind::Tab && action.kind <= ActionKind::TypeCharacter;
    if (isKey && model.focus == 0) return false;
    if (isKey && !model.enabled[model.focus]) ++keysOfDisabled;
    const auto type = [&](int edit, const std::wstring& text) {
        if (!model.enabled[edit]) return false;
        SetFocusTo(edit);
        SetText(edit, text.c_str());
        model.Replace(edit, text);
        return true;
    };
    switch (action.kind) {
    case ActionKind::Drop:
        if (!model.enabled[IDC_FILE_LIST]) return false;
        Drop(PickPaths(choice));
        model.Drop(PickPaths(choice));
        return true;
    case ActionKind::AddByDialog:
        if (!model.enabled[IDC_ADD]) return false;
        m_chosen = choice % 4 == 0 ? std::vector<std::wstring>() : PickPaths(choice / 4);
        m_chosen.resize(std::min<std::size_t>(m_chosen.size(), 1));
        Click(IDC_ADD);
        model.AddByDialog(m_chosen);
        return true;
    case ActionKind::Clear:
        if (!model.enabled[IDC_CLEAR]) return false;
        Click(IDC_CLEAR);
        model.Clear();
        return true;
    case ActionKind::SelectRow: {
        if (!model.enabled[IDC_FILE_LIST] || model.rows.empty()) return false;
        const int row = static_cast<int>(choice % model.rows.size());
        SelectRow(row);
        model.SelectRow(row);
        return true;
    }
    case ActionKind::DeleteKey: {
        // A row less under a waiting worker is allowed; the row it works on is then another.
        if (!model.enabled[IDC_FILE_LIST] || model.workerWaits) return false;
        PressListKey(VK_DELETE);
        const auto focused = static_cast<int>(
            ::SendMessageW(Control(IDC_FILE_LIST), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
        model.DeleteKey(focused);
        return true;
    }
    case ActionKind::ClickCheckBox: {
        const int id = Pick(kCheckBoxIds, choice);
        if (!model.enabled[id]) return false;
        Click(id);
        model.ClickCheckBox(id);
        return true;
    }
    case ActionKind::ClickDisabledEdit: {
        const int edit = Pick(kHintedEdits, choice);
        if (model.enabled[edit]) return false;
        RECT area = {};
        ::GetWindowRect(Control(edit), &area);
        POINT point = {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
        ::ScreenToClient(Dialog(), &point);
        ::SendMessageW(Dialog(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
        model.ClickDisabledEdit(edit);
        return true;
    }
    case ActionKind::TypePages:
        if (!model.enabled[IDC_PAGES]) return false;
        SetFocusTo(IDC_PAGES);
        ::SendMessageW(Control(IDC_PAGES), EM_SETSEL, 1000, 1000);
        for (const wchar_t character : Pick(kPageTexts, choice)) {
            ::SendMessageW(Control(IDC_PAGES), WM_CHAR, character, 1);
        }
        model.TypePages(Pick(kPageTexts, choice));
        return true;
    case ActionKind::TypeResolution: return type(IDC_RESOLUTION, Pick(kResolutions, choice));
    case ActionKind::TypeFolder:
        return type(IDC_OUTPUT_FOLDER, choice % 3 == 0   ? L""
                                       : choice % 3 == 1 ? m_goodFolder
                                                         : m_goodFolder + L"x");
    case ActionKind::TypeExtraOptions: return type(IDC_EXTRA_OPTIONS, choice % 2 ? L"--loss-level=20" : L"");
    case ActionKind::Browse:
        if (!model.enabled[IDC_BROWSE]) return false;
        m_browsed = choice % 2 ? m_goodFolder : L"";
        Click(IDC_BROWSE);
        model.Browse(m_browsed);
        return true;
    case ActionKind::OpenDestination:
        if (!model.enabled[IDC_OPEN_DESTINATION]) return false;
        Click(IDC_OPEN_DESTINATION);
        model.OpenDestination();
        return true;
    case ActionKind::Convert:
        if (!model.enabled[IDOK] || model.workerWaits) return false;
        Click(IDOK);
        if (!WaitForWorker(started, converters)) return true;
        model.Convert();
        return true;
    case ActionKind::StopNo:
    case ActionKind::StopYes: {
        if (!model.running) return false;
        const bool yes = action.kind == ActionKind::StopYes;
        messageAnswer = yes ? IDYES : IDNO;
        Click(IDCANCEL);
        model.Stop(yes);
        return true;
    }
    case ActionKind::TimerTick:
        ::SendMessageW(Dialog(), WM_TIMER, 2, 0);
        model.TimerTick();
        return true;
    case ActionKind::ConverterEndsWell:
    case ActionKind::ConverterEndsBadly: {
        if (!model.workerWaits) return false;
        const bool well = action.kind == ActionKind::ConverterEndsWell;
        converters.Release(started, well ? 0 : 1);
        ++conversions;
        if (!WaitForWorker(started, converters)) return true;
        model.ConverterEnds(well);
        return true;
    }
    case ActionKind::Tab:
    case ActionKind::BackTab: {
        const bool forward = action.kind == ActionKind::Tab;
        const ShiftHold shift(!forward);
        PressKey(VK_TAB);
        model.TabKey(forward);
        return true;
    }
    case ActionKind::PressDown:
        if (!model.KnowsDown()) return false;
        PressKey(VK_DOWN);
        model.DownKey();
        return true;
    case ActionKind::PressSpace:
    case ActionKind::PressEnter: {
        const bool isSpace = action.kind == ActionKind::PressSpace;
        if (!(isSpace ? model.KnowsSpace() : model.KnowsEnter())) return false;
        // One that begins a batch beside a stopped worker is left out, as with a click.
        if (model.enabled[model.focus] && model.enabled[IDOK] && model.workerWaits) return false;
        const bool wasRunning = model.running;
        PressKey(isSpace ? VK_SPACE : VK_RETURN);
        isSpace ? model.SpaceKey() : model.EnterKey();
        if (model.running && !wasRunning) WaitForWorker(started, converters);
        return true;
    }
    case ActionKind::TypeCharacter: {
        if (!model.KnowsCharacter()) return false;
        const wchar_t character = choice % 2 ? L'7' : L'0';
        TypeCharacter(character);
        model.Character(character);
        return true;
    }
    }
    return false;
}

void ModelRun::PressKey(WORD key) {
    ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, 1);
    ServeKeys();
    ::PostMessageW(::GetFocus(), WM_KEYUP, key, 1);
    ServeKeys();
}

void ModelRun::TypeCharacter(wchar_t character) {
    ::SendMessageW(::GetFocus(), EM_SETSEL, 1000, 1000);  // behind what is there
    ::PostMessageW(::GetFocus(), WM_CHAR, character, 1);
    ServeKeys();
}

void ModelRun::ServeKeys() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (loop.FilterMessage(message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

std::optional<std::string> ModelRun::Compare(const WindowModel& model) const {
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
    expect("opened folders", m_opened, model.openedFolders);
    return differences.empty() ? std::nullopt : std::optional(differences);
}
