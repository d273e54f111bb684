#include "benchmarks/support/batch_window.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/window_driver.h"

namespace {

constexpr driver::Milliseconds kBatchLimit{180'000};
constexpr DWORD kProbeIntervalMs = 20;

}  // namespace

BatchWindow::BatchWindow(const std::wstring& program, const std::vector<std::wstring>& paths,
                         Consoles consoles)
    : m_program(program), m_window(m_program) {
    m_window.DropPdfs(paths);
    m_window.OpenAndCancelAddDialog();
    if (consoles == Consoles::Hidden) m_window.Check(IDC_HIDE_OUTPUT);
    // Nobody is as fast as we are: whoever presses "Convertir" has seen the list. Its first drawing, which
    // takes Wine 60 ms, would else be the batch's.
    driver::RepaintNow(m_window.Window());
}

void BatchWindow::Convert() const {
    driver::Click(m_window.Control(IDOK));
}

void BatchWindow::WaitUntilFinished() const {
    const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(kBatchLimit.count());
    while (!IsFinished()) {
        if (m_program.HasEnded()) throw driver::Failure("Talvenor has ended");
        if (::GetTickCount64() >= end) {
            const HWND box = m_window.OpenDialog();
            throw driver::Failure(L"the batch does not end: " + (box ? driver::AllText(box) : L"no message"));
        }
        ::Sleep(kProbeIntervalMs);
    }
}

void BatchWindow::Dismiss() const {
    m_window.CloseCompletion(m_window.WaitForCompletion(kBatchLimit));
    for (const std::wstring& duration : driver::ColumnTexts(m_window.Control(IDC_FILE_LIST), 1)) {
        if (duration.size() != std::size("hh:mm:ss") - 1)
            throw driver::Failure(L"not a duration: " + duration);
    }
}

void BatchWindow::Quit() const {
    if (m_window.Quit() != driver::kExitCodeOfQuit) throw driver::Failure("Talvenor did not end well");
}
