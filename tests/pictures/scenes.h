// What is to be seen on the pictures: Talvenor's windows, each in the state that says most about it.
#pragma once
#include <string>

struct Stage {
    std::wstring program;    // Talvenor.exe, with the paced converter beside it
    std::wstring pdfFolder;  // whose PDF files are converted
    std::wstring outputFolder;
    std::wstring loneProgram;  // Talvenor.exe without a converter
};

void ShowMainWindowAndBoxes(const Stage& stage);
void ShowBatch(const Stage& stage);
void ShowMissingConverter(const Stage& stage);
