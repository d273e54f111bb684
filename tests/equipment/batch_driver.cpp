// Converts PDF files through Talvenor's real window, as a person would, and says what became of each:
//
//   batch_driver Talvenor.exe LIST [--hide] [--no-text] [--pages PAGES]...
//
// LIST is a UTF-8 file with the path of a PDF in each line. An option checks its box, and fills in the edit
// of that box. With --picture-ready FILE that file is made when a picture may be taken, and its end is waited
// for.
//
// Ends with 0 only when every step went as promised; otherwise a line on the error output says what did not.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <regex>
#include <sstream>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/text.h"
#include "tests/equipment/window_driver.h"

namespace {

constexpr driver::Milliseconds kBatchLimit{900'000};
constexpr driver::Milliseconds kPictureLimit{120'000};

struct Option {
    const wchar_t* name;
    int checkBox;
    int edit = 0;  // 0: none, and no text follows
};
constexpr Option kOptions[] = {
    {L"--hide", IDC_HIDE_OUTPUT},
    {L"--no-metadata", IDC_NO_METADATA},
    {L"--no-outline", IDC_NO_OUTLINE},
    {L"--no-hyperlinks", IDC_NO_HYPERLINKS},
    {L"--no-text", IDC_NO_TEXT},
    {L"--lines", IDC_LINES},
    {L"--monochrome", IDC_MONOCHROME},
    {L"--output", IDC_OUTPUT_FOLDER_CHECK, IDC_OUTPUT_FOLDER},
    {L"--pages", IDC_PAGES_CHECK, IDC_PAGES},
    {L"--resolution", IDC_RESOLUTION_CHECK, IDC_RESOLUTION},
};

struct Choice {
    const Option* option;
    std::wstring text;
};

struct Batch {
    std::wstring program;
    std::vector<std::wstring> pdfs;
    std::vector<Choice> choices;
    std::wstring pictureFile;  // empty: no picture is taken
};

std::vector<std::wstring> ReadList(const std::wstring& path) {
    std::vector<std::wstring> lines;
    std::istringstream text(driver::ReadFileBytes(path));
    for (std::string line; std::getline(text, line);) lines.push_back(driver::FromUtf8(line));
    return lines;
}

Batch ParseArguments(const std::vector<std::wstring>& arguments) {
    if (arguments.size() < 2) throw driver::Failure("batch_driver Talvenor.exe LIST [OPTION]...");
    Batch batch{arguments[0], ReadList(arguments[1]), {}, {}};
    for (std::size_t i = 2; i < arguments.size(); ++i) {
        const std::wstring& name = arguments[i];
        const auto text = [&] {
            if (++i == arguments.size()) throw driver::Failure(L"a text must follow " + name);
            return arguments[i];
        };
        const auto* const option = std::ranges::find(kOptions, name, &Option::name);
        if (option != std::end(kOptions)) {
            batch.choices.push_back({option, option->edit ? text() : L""});
        } else if (name == L"--picture-ready") {
            batch.pictureFile = text();
        } else {
            throw driver::Failure(L"unknown option " + name);
        }
    }
    return batch;
}

void Require(bool condition, const char* promise) {
    if (!condition) throw driver::Failure(std::string("not so: ") + promise);
}

// Tells the script beside us that the window may be photographed, where, and waits until that is done. The
// file's line: the moment's name, then left, top, width and height on the screen.
void LetPictureBeTaken(const Batch& batch, const driver::MainWindow& window, const char* moment) {
    if (batch.pictureFile.empty()) return;
    driver::RepaintNow(window.Window());
    RECT place = {};
    ::GetWindowRect(window.Window(), &place);
    char line[128];
    std::snprintf(line, sizeof line, "%s %ld %ld %ld %ld\n", moment, place.left, place.top,
                  place.right - place.left, place.bottom - place.top);
    // Under its final name only when it is whole: the script reads it as soon as it sees it.
    const std::wstring unfinished = batch.pictureFile + L".new";
    driver::WriteFileBytes(unfinished, line);
    if (!::MoveFileExW(unfinished.c_str(), batch.pictureFile.c_str(), 0))
        driver::FailCall("MoveFileExW", ::GetLastError());
    driver::Await(
        "the picture is taken", [&] { return !driver::FileExists(batch.pictureFile); }, kPictureLimit);
}

void AddPdfs(const Batch& batch, const driver::MainWindow& window) {
    const HWND convert = window.Control(IDOK);
    Require(!driver::IsEnabled(convert), "Convertir is disabled in a fresh window");
    window.DropPdfs(batch.pdfs);
    Require(driver::ColumnTexts(window.Control(IDC_FILE_LIST), 0) == batch.pdfs,
            "the list holds the dropped paths in their order");
    Require(!driver::IsEnabled(convert), "dropping files leaves Convertir disabled");
    window.OpenAndCancelAddDialog();
    Require(driver::IsEnabled(convert), "Convertir is enabled once the add dialog was cancelled");
}

void ChooseOptions(const Batch& batch, const driver::MainWindow& window) {
    for (const auto& [option, text] : batch.choices) {
        window.Check(option->checkBox);
        if (option->edit) window.Type(option->edit, text);
    }
}

bool IsDuration(const std::wstring& text) {
    static const std::wregex kDuration(L"[0-9]{2,}:[0-9]{2}:[0-9]{2}");
    return std::regex_match(text, kDuration);
}

// Returns how many rows ended without a duration.
int PrintRows(const driver::MainWindow& window) {
    const HWND list = window.Control(IDC_FILE_LIST);
    const auto paths = driver::ColumnTexts(list, 0);
    const auto durations = driver::ColumnTexts(list, 1);
    int without = 0;
    for (std::size_t row = 0; row < paths.size(); ++row) {
        std::printf("%s  %s\n", driver::ToUtf8(durations[row]).c_str(), driver::ToUtf8(paths[row]).c_str());
        if (!IsDuration(durations[row])) ++without;
    }
    return without;
}

void RunBatch(const Batch& batch) {
    const driver::Program program(batch.program);
    const driver::MainWindow window(program);
    AddPdfs(batch, window);
    ChooseOptions(batch, window);
    const bool hidden = driver::IsChecked(window.Control(IDC_HIDE_OUTPUT));

    window.StartBatch();
    HWND box = nullptr;
    try {
        box = window.WaitForCompletion(kBatchLimit);
    } catch (const driver::Failure&) {
        if (!program.HasEnded()) PrintRows(window);  // shows which file it was
        throw;
    }
    const int withoutDuration = PrintRows(window);
    LetPictureBeTaken(batch, window, "message");
    window.CloseCompletion(box);
    Require(withoutDuration == 0, "every row has its duration");
    Require(driver::Text(window.Control(IDC_STATUS)).empty(), "the status line is empty at the end");
    Require(driver::IsVisible(window.Control(IDC_OPEN_LOG)) == hidden,
            "the log button is there exactly after a hidden batch");
    LetPictureBeTaken(batch, window, "window");
    Require(window.Quit() == driver::kExitCodeOfQuit, "Quitter ends the program with code 2");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdout), _O_BINARY);
    try {
        RunBatch(ParseArguments(std::vector<std::wstring>(argv + 1, argv + argc)));
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "batch_driver: %s\n", failure.what());
        return 1;
    }
    return 0;
}
