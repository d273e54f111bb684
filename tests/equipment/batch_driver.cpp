// Converts PDF files through Talvenor's real window, as a person would, and says what became of each:
//
//   batch_driver Talvenor.exe LIST [--hide] [--no-text] [--pages PAGES]...
//
// LIST is a UTF-8 file with the path of a PDF in each line. An option checks its check box, and fills in
// the edit of it. With --picture-ready FILE that file is made when a picture may be taken, and its end is
// waited for.
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

std::vector<std::wstring> ReadList(const std::wstring& path) {
    std::vector<std::wstring> lines;
    std::istringstream text(driver::ReadFileBytes(path));
    for (std::string line; std::getline(text, line);) lines.push_back(driver::FromUtf8(line));
    return lines;
}

void Require(bool condition, const char* promise) {
    if (!condition) throw driver::Failure(std::string("not so: ") + promise);
}

// Tells the script beside us that the window may be photographed, where, and waits until that is done. The
// file's line: the moment's name, then left, top, width and height on the screen.
void LetPictureBeTaken(const std::wstring& pictureFile, const driver::MainWindow& window,
                       const char* moment) {
    if (pictureFile.empty()) return;
    driver::RepaintNow(window.Window());
    RECT place = {};
    ::GetWindowRect(window.Window(), &place);
    char line[128];
    std::snprintf(line, sizeof line, "%s %ld %ld %ld %ld\n", moment, place.left, place.top,
                  place.right - place.left, place.bottom - place.top);
    // Under its final name only when it is whole: the script reads it as soon as it sees it.
    const std::wstring unfinished = pictureFile + L".new";
    driver::WriteFileBytes(unfinished, line);
    if (!::MoveFileExW(unfinished.c_str(), pictureFile.c_str(), 0))
        driver::FailCall("MoveFileExW", ::GetLastError());
    driver::Await(
        "the picture is taken", [&] { return !driver::FileExists(pictureFile); }, kPictureLimit);
}

// What the words from the third on say. Returns the file that tells of pictures; empty for none.
std::wstring ChooseOptions(const std::vector<std::wstring>& words, const driver::MainWindow& window) {
    std::wstring pictureFile;
    for (std::size_t i = 2; i < words.size(); ++i) {
        if (words[i] == L"--picture-ready") {
            pictureFile = words.at(++i);
            continue;
        }
        const auto* const option = std::ranges::find(kOptions, words[i], &Option::name);
        if (option == std::end(kOptions)) throw driver::Failure(L"unknown option " + words[i]);
        window.Check(option->checkBox);
        if (option->edit) window.Type(option->edit, words.at(++i));
    }
    return pictureFile;
}

// Returns how many rows ended without a duration.
int PrintRows(const driver::MainWindow& window) {
    const std::wregex duration(L"[0-9]{2,}:[0-9]{2}:[0-9]{2}");
    const HWND list = window.Control(IDC_FILE_LIST);
    const auto paths = driver::ColumnTexts(list, 0);
    const auto durations = driver::ColumnTexts(list, 1);
    int without = 0;
    for (std::size_t row = 0; row < paths.size(); ++row) {
        std::printf("%s  %s\n", driver::ToUtf8(durations[row]).c_str(), driver::ToUtf8(paths[row]).c_str());
        if (!std::regex_match(durations[row], duration)) ++without;
    }
    return without;
}

void RunBatch(const std::vector<std::wstring>& words) {
    if (words.size() < 2) throw driver::Failure("batch_driver Talvenor.exe LIST [OPTION]...");
    const driver::Program program(words[0]);
    const driver::MainWindow window(program);
    window.DropPdfs(ReadList(words[1]));
    window.OpenAndCancelAddDialog();
    const std::wstring pictureFile = ChooseOptions(words, window);
    const bool hidden = driver::IsChecked(window.Control(IDC_HIDE_OUTPUT));

    window.StartBatch();
    HWND message = nullptr;
    try {
        message = window.WaitForCompletion(kBatchLimit);
    } catch (const driver::Failure&) {
        if (!program.HasEnded()) PrintRows(window);  // shows which file it was
        throw;
    }
    const int withoutDuration = PrintRows(window);
    LetPictureBeTaken(pictureFile, window, "message");
    window.CloseCompletion(message);
    Require(withoutDuration == 0, "every row has its duration");
    Require(driver::Text(window.Control(IDC_STATUS)).empty(), "the status line is empty at the end");
    Require(driver::IsVisible(window.Control(IDC_OPEN_LOG)) == hidden,
            "the log button is there exactly after a hidden batch");
    LetPictureBeTaken(pictureFile, window, "window");
    Require(window.Quit() == driver::kExitCodeOfQuit, "Quitter ends the program with code 2");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdout), _O_BINARY);
    try {
        RunBatch(std::vector<std::wstring>(argv + 1, argv + argc));
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "batch_driver: %s\n", failure.what());
        return 1;
    }
    return 0;
}
