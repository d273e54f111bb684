// Keys and clicks while a batch runs: the control that had the focus is disabled then, and keys must reach
// the window all the same.
#include "tests/app/input_fixture.h"

#include "tests/equipment/shipped_version.h"

namespace {

// How a person begins a batch; what had the focus at that moment is disabled by it.
struct Beginning {
    const char* name;
    int control;
    WORD key;  // 0: a click
};

class BatchInput : public InputTest, public testing::WithParamInterface<Beginning> {
protected:
    void Begin() {
        Start();
        AddForConversion({installed.MakePdf(L"a wait4000.pdf"), installed.MakePdf(L"b.pdf")});
        Window().Tick(id::kHideOutput);
        input::BringToFront(Window().Window());
        if (GetParam().key != 0) {
            driver::Ask(Window().Window(), WM_NEXTDLGCTL,
                        reinterpret_cast<WPARAM>(Control(GetParam().control)), TRUE);
            ASSERT_TRUE(GetsFocus(GetParam().control));
            input::Press(GetParam().key);
        } else {
            input::ClickOn(Control(GetParam().control));
        }
        ASSERT_TRUE(Comes([&] { return Runs().size() == 1; })) << "no batch begins";
        ASSERT_FALSE(IsEnabled(GetParam().control));
    }
    // The question, or null when it does not come while the first file is converted.
    [[nodiscard]] HWND Question() const {
        HWND box = nullptr;
        const bool came =
            Comes([&] { return (box = Window().OpenBox()) != nullptr; }, driver::Milliseconds(2000));
        return came ? box : nullptr;
    }
    void ExpectQuestionAndAnswerNo() {
        const HWND question = Question();
        ASSERT_NE(question, nullptr) << "the key does not reach the window; focus: " << FocusedId();
        EXPECT_THAT(driver::AllText(question), testing::HasSubstr(L"Un traitement est en cours."));
        driver::PressDialogButton(question, IDNO);
        EXPECT_TRUE(Comes([&] { return !::IsWindow(question); }));
        EXPECT_TRUE(Window().IsRunning());
    }
};

TEST_P(BatchInput, EscapeAsks) {
    Begin();
    input::Press(VK_ESCAPE);
    ExpectQuestionAndAnswerNo();
}

TEST_P(BatchInput, AltF4Asks) {
    Begin();
    input::Press(VK_F4, {VK_MENU});
    ExpectQuestionAndAnswerNo();
}

TEST_P(BatchInput, TabLeadsToTheStopButton) {
    Begin();
    // Three controls can be enabled during a batch; whichever comes first, the button is not far.
    for (int presses = 0; presses < 3 && FocusedId() != id::kQuit; ++presses) {
        const int before = FocusedId();
        input::Press(VK_TAB);
        ASSERT_TRUE(Comes([&] { return FocusedId() != before; }, driver::Milliseconds(1000))) << before;
        EXPECT_TRUE(IsEnabled(FocusedId())) << FocusedId();
    }
    EXPECT_EQ(FocusedId(), id::kQuit);
    input::Press(VK_SPACE);
    ExpectQuestionAndAnswerNo();
}

INSTANTIATE_TEST_SUITE_P(Begun, BatchInput,
                         testing::Values(Beginning{"ByAClick", id::kConvert, 0},
                                         Beginning{"BySpace", id::kConvert, VK_SPACE},
                                         Beginning{"ByEnterInAnEdit", id::kExtraOptions, VK_RETURN},
                                         Beginning{"ByEnterInTheList", id::kFileList, VK_RETURN}),
                         [](const auto& beginning) { return std::string(beginning.param.name); });

class RunningBatchInput : public InputTest {
protected:
    void SetUp() override {
        Start();
        AddForConversion({installed.MakePdf(L"a wait1500.pdf"), installed.MakePdf(L"b.pdf")});
        Window().Tick(id::kHideOutput);
        input::BringToFront(Window().Window());
        input::ClickOn(Control(id::kConvert));
        ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    }
};

TEST_F(RunningBatchInput, ClickOnArreterAsks) {
    input::ClickOn(Control(id::kQuit));
    const HWND question = WaitForBox();
    EXPECT_THAT(driver::AllText(question), testing::HasSubstr(L"Un traitement est en cours."));
    AnswerBox(IDNO);
    CompleteBatch();
    EXPECT_EQ(Runs().size(), 2u);
}

TEST_F(RunningBatchInput, ClickOnADisabledEditStillEnablesItAndTicksItsBox) {
    input::ClickOn(Control(id::kPages));
    EXPECT_TRUE(GetsFocus(id::kPages));
    EXPECT_TRUE(IsChecked(id::kPagesBox));
    EXPECT_FALSE(IsEnabled(id::kPagesBox));
    CompleteBatch();
}

TEST_F(RunningBatchInput, ClicksOnTheDisabledListAndButtonsDoNothing) {
    input::ClickOn(List());
    input::ClickOn(Control(id::kClear));
    input::ClickOn(Control(id::kAdd));
    CompleteBatch();
    EXPECT_EQ(driver::RowCount(List()), 2);
    EXPECT_EQ(Runs().size(), 2u);
}

TEST_F(RunningBatchInput, AboutBoxOpensAndTheBatchGoesOn) {
    input::ClickOn(Control(id::kAbout));
    const HWND about = WaitForBox();
    EXPECT_EQ(driver::Text(about), L"À propos...");
    EXPECT_THAT(driver::AllText(about), testing::HasSubstr(std::wstring(L"\n") + shipped::kAboutLine));
    EXPECT_TRUE(Comes([&] { return Runs().size() == 2; })) << "the batch waits for the box";
    AnswerBox(IDOK);
    CompleteBatch();
}

}  // namespace
