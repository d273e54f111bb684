// Converts PDF files through Talvenor's real window, as a person would, and says what became of each:
//
//   batch_driver Talvenor.exe --hide --output D:\Out C:\a.pdf C:\b.pdf
//
// Ends with 0 only when every step went as promised; otherwise a line on the error output says what did not.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "tests/equipment/batch_options.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/text.h"
#include "tests/equipment/window_driver.h"

namespace {

constexpr driver::Milliseconds kPictureLimit{120'000};

void Require(bool condition, const char* promise) {
    if (!condition) throw driver::Failure(std::string("not so: ") + promise);
}

// Tells the script beside us that the window may be photographed, where, and waits until that is done. The
// file's line: the moment's name, then left, top, width and height on the screen.
void LetPictureBeTaken(const BatchOptions& options, const driver::MainWindow& window, const char* moment) {
    if (options.pictureFile.empty()) return;
    driver::RepaintNow(window.Window());
    RECT place = {};
    ::GetWindowRect(window.Window(), &place);
    char line[128];
    std::snprintf(line, sizeof line, "%s %ld %ld %ld %ld\n", moment, place.left, place.top,
                  place.right - place.left, place.bottom - place.top);
    // Under its final name only when it is whole: the script reads it as soon as it sees it.
    const std::wstring unfinished = options.pictureFile + L".new";
    driver::WriteFileBytes(unfinished, line);
    if (!::MoveFileExW(unfinished.c_str(), options.pictureFile.c_str(), 0))
        driver::FailCall("MoveFileExW", ::GetLastError());
    const auto taken = [&] { return !driver::FileExists(options.pictureFile); };
    if (!driver::WaitUntil(taken, kPictureLimit)) throw driver::Failure("nobody took the picture");
}

void AddPdfs(const BatchOptions& options, const driver::MainWindow& window) {
    const HWND convert = window.Control(IDOK);
    Require(!driver::IsEnabled(convert), "Convertir is disabled in a fresh window");
    window.DropPdfs(options.pdfs);
    Require(driver::ColumnTexts(window.Control(IDC_FILE_LIST), 0) == options.pdfs,
            "the list holds the dropped paths in their order");
    Require(!driver::IsEnabled(convert), "dropping files leaves Convertir disabled");
    window.OpenAndCancelAddDialog();
    Require(driver::IsEnabled(convert), "Convertir is enabled once the add dialog was cancelled");
}

void ChooseOptions(const BatchOptions& options, const driver::MainWindow& window) {
    for (const int checkBox : options.checkBoxes) window.Check(checkBox);
    const auto choose = [&](int checkBox, int edit, const std::wstring& text) {
        if (text.empty()) return;
        window.Check(checkBox);
        window.Type(edit, text);
    };
    choose(IDC_PAGES_CHECK, IDC_PAGES, options.pages);
    choose(IDC_RESOLUTION_CHECK, IDC_RESOLUTION, options.resolution);
    choose(IDC_OUTPUT_FOLDER_CHECK, IDC_OUTPUT_FOLDER, options.outputFolder);
}

bool IsDuration(const std::wstring& text) {
    if (text.size() < 8) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool colon = i + 3 == text.size() || i + 6 == text.size();
        if (colon ? text[i] != L':' : text[i] < L'0' || text[i] > L'9') return false;
    }
    return true;
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

void RunBatch(const BatchOptions& options) {
    const driver::Program program(options.program);
    const driver::MainWindow window(program);
    AddPdfs(options, window);
    ChooseOptions(options, window);
    const bool hidden = driver::IsChecked(window.Control(IDC_HIDE_OUTPUT));

    window.StartBatch();
    HWND box = nullptr;
    try {
        box = window.WaitForCompletion(options.limit);
    } catch (const driver::Failure&) {
        if (!program.HasEnded()) PrintRows(window);  // shows which file it was
        throw;
    }
    const int withoutDuration = PrintRows(window);
    LetPictureBeTaken(options, window, "message");
    window.CloseCompletion(box);
    Require(withoutDuration == 0, "every row has its duration");
    Require(driver::Text(window.Control(IDC_STATUS)).empty(), "the status line is empty at the end");
    Require(driver::IsVisible(window.Control(IDC_OPEN_LOG)) == hidden,
            "the log button is there exactly after a hidden batch");
    LetPictureBeTaken(options, window, "window");
    Require(window.Quit() == driver::kExitCodeOfQuit, "Quitter ends the program with code 2");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdout), _O_BINARY);
    try {
        RunBatch(ParseBatchOptions(std::vector<std::wstring>(argv + 1, argv + argc)));
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "batch_driver: %s\n", failure.what());
        if (argc < 3) std::fputs(kBatchUsage, stderr);
        return 1;
    }
    return 0;
}
