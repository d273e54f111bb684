// Puts Talvenor's windows into the states that the pictures of the documents show, and has each one taken by
// the script that started us:
//
//   window_poser Talvenor.exe PDF-FOLDER OUTPUT-FOLDER LONE-Talvenor.exe
//
// A line on the output asks for a picture: its name, "window" or "box" for the kind of its frame, the
// window's number on the X display and that of a box before it, if there is one. A line on the input says
// that it is taken. Ends with 0 when all were.
#include <windows.h>
#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>

#include "tests/equipment/failure.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/window_driver.h"
#include "tests/equipment/wine.h"
#include "tests/pictures/photographer.h"

namespace {

struct Stage {
    std::wstring program;    // Talvenor.exe, with the paced converter beside it
    std::wstring pdfFolder;  // whose PDF files are converted
    std::wstring outputFolder;
    std::wstring loneProgram;  // Talvenor.exe without a converter
};

constexpr driver::Milliseconds kBatchLimit{120'000};

// In the order of their names.
std::vector<std::wstring> PdfsIn(const std::wstring& folder) {
    std::vector<std::wstring> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == L".pdf") paths.push_back(entry.path().wstring());
    std::sort(paths.begin(), paths.end());
    return paths;
}

void Quit(const driver::MainWindow& window) {
    if (window.Quit() != driver::kExitCodeOfQuit) throw driver::Failure("Quitter ended with another code");
}

// The box that has just been opened: has it taken and closes it by one of its buttons.
void ShowBox(const std::string& name, int closeBy, const driver::MainWindow& window) {
    const HWND box = window.WaitForDialog();
    TakePicture(name, box);
    driver::AnswerDialog(box, closeBy);
}

void SelectRowByKeys(const driver::MainWindow& window) {
    const HWND list = window.Control(IDC_FILE_LIST);
    driver::PressKey(list, VK_END);
    driver::PressKey(list, VK_HOME);
    driver::PressKey(list, VK_DOWN);
    driver::Await("the second row is selected", [&] { return driver::SelectedRow(list) == 1; });
}

void ShowMainWindowAndBoxes(const Stage& stage) {
    const driver::Program program(stage.program, {.directory = stage.pdfFolder});
    const driver::MainWindow window(program);
    TakePicture("main", window.Window());
    driver::Click(window.Control(IDC_ABOUT));
    ShowBox("about", IDOK, window);

    window.DropPdfs(PdfsIn(stage.pdfFolder));
    SelectRowByKeys(window);
    window.Check(IDC_PAGES_CHECK);
    window.Type(IDC_PAGES, L"1-12,15");
    window.Check(IDC_RESOLUTION_CHECK);
    window.Check(IDC_OUTPUT_FOLDER_CHECK);
    window.Type(IDC_OUTPUT_FOLDER, stage.outputFolder);
    window.Check(IDC_NO_TEXT);
    window.OpenAndCancelAddDialog();
    window.Check(IDC_HIDE_OUTPUT);
    TakePicture("options", window.Window());
    driver::PressKey(window.Control(IDC_FILE_LIST), VK_F7);
    ShowBox("command-line", IDOK, window);
    Quit(window);
}

void ShowBatch(const Stage& stage) {
    // The countdown would end in a request to shut down: it is not even shown on a real Windows.
    if (!UnderWine()) throw driver::Failure("pictures are only taken under Wine");
    const driver::Program program(stage.program, {.directory = stage.pdfFolder});
    const driver::MainWindow window(program);
    const HWND list = window.Control(IDC_FILE_LIST);
    window.DropPdfs(PdfsIn(stage.pdfFolder));
    window.Check(IDC_OUTPUT_FOLDER_CHECK);
    window.Type(IDC_OUTPUT_FOLDER, stage.outputFolder);
    window.OpenAndCancelAddDialog();
    window.Check(IDC_HIDE_OUTPUT);

    window.StartBatch();
    driver::Await("the second file converts", [&] { return driver::ColumnTexts(list, 1)[1] == L"00:00:04"; });
    TakePicture("running", window.Window(), nullptr, &program);
    driver::Click(window.Control(IDCANCEL));
    ShowBox("stop", IDNO, window);
    const HWND completion = window.WaitForCompletion(kBatchLimit);
    TakePicture("finished", window.Window(), completion);
    window.CloseCompletion(completion);

    window.Check(IDC_SHUT_DOWN);
    window.StartBatch();
    const HWND countdown = window.WaitForDialog(kBatchLimit);
    // The picture does not depend on when we look: it shows this second.
    driver::Await("the countdown is at 28",
                  [&] { return driver::Text(driver::Control(countdown, IDC_SECONDS)) == L"28"; });
    TakePicture("countdown", countdown, nullptr, &program);
    driver::AnswerDialog(countdown, IDCANCEL);
    window.CloseCompletion(window.WaitForCompletion(kBatchLimit));
    Quit(window);
}

void ShowMissingConverter(const Stage& stage) {
    const driver::Program program(stage.loneProgram);
    std::vector<HWND> boxes;
    driver::Await("the message is there", [&] { return !(boxes = driver::Dialogs(program)).empty(); });
    TakePicture("no-converter", boxes[0]);
    driver::PressDialogButton(boxes[0], IDOK);
    if (!program.WaitForExit()) throw driver::Failure("the program does not end without its converter");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdout), _O_BINARY);
    if (argc != 5) {
        std::fputs("window_poser Talvenor.exe PDF-FOLDER OUTPUT-FOLDER LONE-Talvenor.exe\n", stderr);
        return 2;
    }
    try {
        const Stage stage{argv[1], argv[2], argv[3], argv[4]};
        ShowMainWindowAndBoxes(stage);
        ShowBatch(stage);
        ShowMissingConverter(stage);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "window_poser: %s\n", failure.what());
        return 1;
    }
    return 0;
}
