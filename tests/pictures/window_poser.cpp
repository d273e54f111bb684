// Puts Talvenor's windows into the states that the pictures of the documents show, and has each one taken by
// the script that started us:
//
//   window_poser Talvenor.exe PDF-FOLDER OUTPUT-FOLDER LONE-Talvenor.exe
//
// A line on the output asks for a picture: its name, "window" or "box" for the kind of its frame, the
// window's number on the X display and that of a box before it, if there is one. A line on the input says
// that it is taken. Ends with 0 when all were.
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <exception>

#include "tests/pictures/scenes.h"

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
