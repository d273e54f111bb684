// The options on the batch driver's command line.
#pragma once
#include <string>
#include <vector>

#include "tests/equipment/wait_until.h"

struct BatchOptions {
    std::wstring program;  // Talvenor.exe
    std::vector<std::wstring> pdfs;
    std::vector<int> checkBoxes;          // to check, by control id
    std::wstring outputFolder;            // empty: beside the PDFs
    std::wstring pages;                   // empty: all
    std::wstring resolution;              // empty: the converter's own
    std::wstring pictureFile;             // made when a picture may be taken; empty: no picture is taken
    driver::Milliseconds limit{600'000};  // for the whole batch
};

extern const char kBatchUsage[];

// Throws driver::Failure when the arguments make no sense.
BatchOptions ParseBatchOptions(const std::vector<std::wstring>& arguments);
