#include "ui/taskbar_progress.h"

#include <windows.h>
#include <shobjidl.h>

namespace {

// wParam: the batch's number; lParam: the rows in its low half, those that are done in the high one.
constexpr UINT kReportMessage = WM_APP;

constexpr GUID kTaskbarListClass = {
    0x56FDF344, 0xFD6D, 0x11D0, {0x95, 0x8A, 0x00, 0x60, 0x97, 0xC9, 0xA0, 0x90}};
constexpr GUID kTaskbarList3 = {0xEA1AFB91, 0x9E28, 0x4B86, {0x90, 0xE9, 0x9E, 0x9F, 0x8A, 0x5E, 0xEF, 0xAF}};

}  // namespace

TaskbarProgress::TaskbarProgress() = default;

TaskbarProgress::~TaskbarProgress() {
    m_receiver.Destroy();
}

void TaskbarProgress::Prepare(HWND window) {
    m_button = window;
    m_receiver.CreateMessageOnly();
}

void TaskbarProgress::Stop() {
    m_lastStoppedBatch = m_newestBatch;
    Hide();
}

void TaskbarProgress::Report(unsigned batch, int done, int rows) const noexcept {
    if (const HWND receiver = m_receiver.Handle()) {
        ::PostMessageW(receiver, kReportMessage, batch,
                       static_cast<LPARAM>(static_cast<ULONGLONG>(done) << 32 | static_cast<DWORD>(rows)));
    }
}

bool TaskbarProgress::ProcessWindowMessage(HWND /*window*/, UINT message, WPARAM wParam, LPARAM lParam,
                                           LRESULT& /*result*/, DWORD /*section*/) {
    if (message != kReportMessage) return false;
    OnReport(static_cast<unsigned>(wParam), static_cast<DWORD>(static_cast<ULONGLONG>(lParam) >> 32),
             static_cast<DWORD>(lParam));
    return true;
}

void TaskbarProgress::OnReport(unsigned batch, DWORD done, DWORD rows) {
    if (batch <= m_lastStoppedBatch || batch < m_shownBatch) return;
    m_shownBatch = batch;
    if (rows == 0) {
        Hide();
        return;
    }
    Connect();
    if (m_taskbar) m_taskbar.Get()->SetProgressValue(m_button, done, rows);
}

// With the first report, not with the program: the library behind it is a large one.
void TaskbarProgress::Connect() {
    if (m_connected) return;
    m_connected = true;
    m_taskbar = CreateComObject<ITaskbarList3>(kTaskbarListClass, kTaskbarList3);
    if (m_taskbar && FAILED(m_taskbar.Get()->HrInit())) m_taskbar.Reset();
}

void TaskbarProgress::Hide() {
    if (m_taskbar) m_taskbar.Get()->SetProgressState(m_button, TBPF_NOPROGRESS);
}
