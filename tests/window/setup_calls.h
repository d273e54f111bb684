// Writes down what the dialog asks of the system while it is set up, in the order in which it does so. While
// a SetUpCalls lives, these calls go to its record and on to the system, together with those of a
// ControlCalls:
//
//   PathFileExistsW <program's folder>\pdf2djvu.exe     written with "~" for the folder
//   LoadImageW 128 48x48    LoadIconW 128    DestroyIcon 128    (only what LoadIconW gave)
//   SetWindowLongPtrW 1014 procedure         (only window procedures)
//   ImageList_Create 16 16 33 1 0            ImageList_ReplaceIcon -1
//   DragAcceptFiles 1040 1                   CreateWindowExW tooltips_class32
//   PostQuitMessage 2
#pragma once

#include "tests/window/control_calls.h"

#include <memory>
#include <string>
#include <vector>

class SetUpCalls {
public:
    // `folder` is the program's.
    SetUpCalls(CallRecord& record, std::wstring folder, ControlCalls::Answer answer = nullptr);
    SetUpCalls(const SetUpCalls&) = delete;
    SetUpCalls& operator=(const SetUpCalls&) = delete;
    ~SetUpCalls();

    // While set, no icon can be loaded.
    static inline bool iconsFail = false;

private:
    ControlCalls m_controlCalls;
    std::vector<std::unique_ptr<ReplacedImport>> m_replaced;
};
