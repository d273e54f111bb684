// How far a batch is, in the button that the main window has in the taskbar. No failure of it is reported, or
// keeps anybody waiting: the batch is worth more.
#pragma once

#include "base/com_object.h"
#include "framework/contained_window.h"
#include "framework/message_map.h"

#include <windows.h>

#include <atomic>

struct ITaskbarList3;

// The user-interface thread has the connection to the taskbar and is the only one to use it. Workers report
// by posting to a window of that thread which nobody sees. A worker may outlive its batch, when the batch was
// stopped: each batch has a number, which distinguishes such a worker from the one that followed.
class TaskbarProgress final : private CMessageMap {
public:
    TaskbarProgress();
    ~TaskbarProgress();

    // User-interface thread:
    // Called before each batch, with the window whose button it is. Makes what the first report will need.
    void Prepare(HWND window);
    // Takes the progress away. Reports of the batches that have begun have no effect any more.
    void Stop();

    // Any thread:
    // The number of a batch that begins now.
    [[nodiscard]] unsigned BeginBatch() noexcept { return ++m_newestBatch; }
    // `done` of `rows`, which is not 0, are converted. Shown a moment later, also when the user-interface
    // thread reports: COM calls no other process on behalf of a message that another thread has sent.
    void Report(unsigned batch, int done, int rows) const noexcept;
    // Takes the progress away.
    void EndBatch(unsigned batch) const noexcept { Report(batch, 0, 0); }

private:
    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD section) override;
    void OnReport(unsigned batch, DWORD done, DWORD rows);
    void Connect();
    void Hide();

    HWND m_button = nullptr;  // the main window; borrowed
    CContainedWindow m_receiver{*this, 0};
    UniqueCom<ITaskbarList3> m_taskbar;
    bool m_connected = false;  // or tried in vain
    unsigned m_shownBatch = 0;
    unsigned m_lastStoppedBatch = 0;
    // Counted up by workers, read by the user interface.
    std::atomic<unsigned> m_newestBatch{0};
};
