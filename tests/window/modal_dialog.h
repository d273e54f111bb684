// A modal dialog on a thread of its own, as a batch's worker runs one.
#pragma once

#include "tests/support/pump.h"

#include "framework/app_module.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
#include <future>
#include <map>
#include <optional>
#include <vector>

// A dialog of this process by its title; null while there is none.
inline HWND FindOwnDialog(const wchar_t* title) {
    HWND dialog = nullptr;
    while ((dialog = ::FindWindowExW(nullptr, dialog, L"#32770", title)) != nullptr) {
        DWORD process = 0;
        ::GetWindowThreadProcessId(dialog, &process);
        if (process == ::GetCurrentProcessId()) break;
    }
    return dialog;
}

// The tests of a dialog class whose window has this title.
template <class TDialog>
class ModalDialogTest : public testing::Test {
protected:
    explicit ModalDialogTest(const wchar_t* title) : m_title(title) {
        CAppModule::Instance().Init(::GetModuleHandleW(nullptr));
    }
    ~ModalDialogTest() override { CAppModule::Instance().Term(); }
    void TearDown() override {
        if (m_result.valid()) Leave(WM_COMMAND, IDCANCEL);
    }

    // Opens the dialog and waits until it is shown.
    void Open() {
        m_result = std::async(std::launch::async, [] { return TDialog().DoModal(nullptr); });
        const auto isShown = [this] {
            window = FindOwnDialog(m_title);
            return window && ::IsWindowVisible(window);
        };
        ASSERT_TRUE(PumpUntil(isShown, std::chrono::seconds(10))) << "the dialog does not come";
    }
    // Posts a message, a key to the control that has the focus and others to the dialog, which is to end by
    // it. Returns its result; -2 when it does not end.
    INT_PTR Leave(UINT message, WPARAM wParam) {
        const bool isKey = message == WM_KEYDOWN;
        ::PostMessageW(isKey ? Focused() : window, message, wParam, isKey ? 1 : 0);
        return PumpUntil([this] { return HasEnded(); }, std::chrono::seconds(10)) ? m_result.get() : -2;
    }
    [[nodiscard]] bool HasEnded() const {
        return m_result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }
    // The control that has the focus in the dialog's thread.
    [[nodiscard]] HWND Focused() const {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
        return info.hwndFocus;
    }

    // What a dialog without a window handles: messages, up to the private ones of controls and without
    // arguments, with their results, and commands.
    [[nodiscard]] static std::map<UINT, LRESULT> HandledMessages() {
        std::map<UINT, LRESULT> results;
        for (UINT message = 0; message <= WM_APP + 0x100; ++message) {
            if (const auto result = Dispatch(message, 0)) results[message] = *result;
        }
        return results;
    }
    [[nodiscard]] static std::vector<int> HandledCommands() {
        std::vector<int> handled;
        for (int id = 0; id <= 0xFFFF; ++id) {
            if (Dispatch(WM_COMMAND, static_cast<WPARAM>(id))) handled.push_back(id);
        }
        return handled;
    }

    HWND window = nullptr;

private:
    static std::optional<LRESULT> Dispatch(UINT message, WPARAM wParam) {
        TDialog dialog;
        LRESULT result = 0;
        const bool handled = dialog.ProcessWindowMessage(nullptr, message, wParam, 0, result, 0);
        return handled ? std::optional(result) : std::nullopt;
    }

    const wchar_t* const m_title;
    std::future<INT_PTR> m_result;
};
