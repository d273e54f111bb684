// For tests with real keys and clicks: the window is in front, and nothing else takes them.
#pragma once
#include "tests/app/app_fixture.h"
#include "tests/app/real_input.h"

class InputTest : public AppTest {
protected:
    // Starts the program and brings it to the front.
    void StartInFront() {
        Start();
        BringToFront();
    }
    void BringToFront() const { input::BringToFront(Window().Window()); }

    // The number of the control that has the focus; 0 for none.
    [[nodiscard]] int FocusedId() const {
        const HWND focus = input::Focus(Window().Window());
        return focus ? ::GetDlgCtrlID(focus) : 0;
    }
    [[nodiscard]] bool GetsFocus(int controlId) const {
        return Comes([&] { return FocusedId() == controlId; });
    }
    // Gives a control the focus, by a click or as the dialog does.
    void ClickInto(int controlId) const {
        input::ClickOn(Control(controlId));
        ASSERT_TRUE(GetsFocus(controlId)) << controlId;
    }
    void FocusOn(int controlId) const {
        driver::Ask(Window().Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(controlId)), TRUE);
        ASSERT_TRUE(GetsFocus(controlId)) << controlId;
    }
    [[nodiscard]] bool Reads(int controlId, const wchar_t* text) const {
        return Comes([&] { return Text(controlId) == text; });
    }
};
