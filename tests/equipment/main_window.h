// Talvenor's main window as a person sees and uses it. Each operation waits until its effect can be seen and
// throws Failure when that does not come.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "tests/equipment/program.h"
#include "tests/equipment/wait_until.h"

namespace driver {

// The controls' numbers, written down a second time on purpose: they are part of what is promised, so a test
// must notice when the program's own list of them changes.
namespace id {
constexpr int kConvert = 1;
constexpr int kQuit = 2;  // reads "Arrêter " while a batch runs
constexpr int kAbout = 57664;
constexpr int kAdd = 1003;
constexpr int kStatus = 1004;
constexpr int kClear = 1005;
constexpr int kPages = 1014;
constexpr int kNoText = 1015;
constexpr int kLines = 1016;
constexpr int kNoMetadata = 1017;
constexpr int kExtraOptions = 1018;
constexpr int kHideOutput = 1019;
constexpr int kOpenDestination = 1022;
constexpr int kOpenLog = 1024;
constexpr int kOutputFolderBox = 1026;
constexpr int kOutputFolder = 1027;
constexpr int kBrowse = 1028;
constexpr int kMonochrome = 1030;
constexpr int kResolution = 1032;
constexpr int kResolutionBox = 1033;
constexpr int kPagesBox = 1034;
constexpr int kNoOutline = 1036;
constexpr int kNoHyperlinks = 1037;
constexpr int kShutdown = 1038;
constexpr int kFileList = 1040;
}  // namespace id

constexpr int kExitCodeOfQuit = 2;

class MainWindow {
public:
    // Waits for the window of a program just started, which must outlive this object.
    explicit MainWindow(const Program& program);

    [[nodiscard]] HWND Window() const noexcept { return m_window; }
    [[nodiscard]] HWND Control(int controlId) const;
    [[nodiscard]] bool IsRunning() const;  // by what button 2 reads

    void DropPdfs(const std::vector<std::wstring>& paths) const;  // none of them in the list yet
    void OpenAndCancelAddDialog() const;
    void Tick(int boxId) const;
    void Type(int editId, const std::wstring& text) const;  // in place of what the edit holds

    // Presses Convertir and comes back when the batch has begun (or is over already).
    void StartBatch() const;
    // The message box that ends a batch. A box of any other text, or a batch that ends without one, fails.
    [[nodiscard]] HWND WaitForCompletion(Milliseconds limit) const;
    // Presses OK and waits for the idle window.
    void CloseCompletion(HWND box) const;
    // Presses Quitter and gives the exit code.
    [[nodiscard]] DWORD Quit() const;

    // The box in front of the main window at this moment, or null.
    [[nodiscard]] HWND OpenBox() const;

private:
    const Program& m_program;
    HWND m_window;  // belongs to the program
};

}  // namespace driver
