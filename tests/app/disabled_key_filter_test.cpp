// Keys while a batch runs and the control with the focus is disabled: what would change the batch, or begin
// another beside it, has no effect.
#include "tests/app/input_fixture.h"

#include <initializer_list>

namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

class DisabledKeys : public InputTest {
protected:
    // Two files; the first takes a while.
    void StartWithFiles() {
        first = installed.MakePdf(L"a wait4000.pdf");
        Start();
        AddForConversion({first, installed.MakePdf(L"b.pdf")});
        Window().Tick(id::kHideOutput);
        input::BringToFront(Window().Window());
    }
    void GiveFocusTo(int controlId) const {
        driver::Ask(Window().Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(controlId)), TRUE);
        ASSERT_TRUE(GetsFocus(controlId));
    }
    // Begins the batch by Enter in a control, which is disabled by it and keeps the focus.
    void BeginByEnterIn(int controlId) {
        StartWithFiles();
        GiveFocusTo(controlId);
        PressEnterToBegin(controlId);
    }
    void PressEnterToBegin(int controlId) const {
        input::Press(VK_RETURN);
        ASSERT_TRUE(Comes([&] { return Runs().size() == 1; })) << "no batch begins";
        ASSERT_FALSE(IsEnabled(controlId));
        ASSERT_EQ(FocusedId(), controlId);
    }
    static void PressAll(std::initializer_list<WORD> keys) {
        for (const WORD key : keys) input::Press(key);
    }
    // Keys are served in order: when Esc has brought the question, those before it have had their effect.
    [[nodiscard]] HWND QuestionAfterEscape() const {
        input::Press(VK_ESCAPE);
        const HWND question = WaitForBox();
        EXPECT_THAT(driver::AllText(question), testing::HasSubstr(L"Un traitement est en cours."));
        EXPECT_EQ(Runs().size(), 1u) << "the keys came too late to be told from the second file's";
        return question;
    }
    void AnswerNoAndComplete(HWND question) const {
        driver::PressDialogButton(question, IDNO);
        ASSERT_TRUE(Comes([&] { return !::IsWindow(question); }));
        CompleteBatch();
    }
    // Timer messages come when no key is left to be served. The first change may have been on its way.
    [[nodiscard]] bool TimeGoesOnTwice() const {
        for (int change = 0; change < 2; ++change) {
            const std::wstring before = Durations()[0];
            if (!Comes([&] { return Durations()[0] != before; })) return false;
        }
        return true;
    }

    std::wstring first;
};

TEST_F(DisabledKeys, ListKeepsTheRowThatIsConverted) {
    BeginByEnterIn(id::kFileList);
    PressAll({VK_DOWN, VK_END, VK_NEXT});
    input::Type(installed.PdfFolder().substr(0, 1));
    PressAll({VK_DOWN, VK_SPACE, VK_DELETE, VK_F7});
    EXPECT_TRUE(TimeGoesOnTwice()) << "the time goes to another row";
    EXPECT_EQ(driver::SelectedRow(List()), 0);
    EXPECT_THAT(Durations(), ElementsAre(StartsWith(L"00:00:0"), L""));
    EXPECT_EQ(Text(id::kStatus), L"Conversion en cours : " + first);
    EXPECT_EQ(Window().OpenBox(), nullptr);
    CompleteBatch();
    EXPECT_EQ(Runs().size(), 2u);
    EXPECT_THAT(Durations(), AllOf(Each(StartsWith(L"00:00:0")), testing::SizeIs(2)));
    EXPECT_GE(Durations()[0], L"00:00:04");
}

TEST_F(DisabledKeys, EditKeepsItsText) {
    StartWithFiles();
    Window().Type(id::kExtraOptions, L"--exemple");
    GiveFocusTo(id::kExtraOptions);
    PressEnterToBegin(id::kExtraOptions);
    input::CopyToClipboard(L" --colle");
    input::Press(VK_END);
    input::Type(L" --autre");
    input::PressWithControl('V');
    input::PressWithShift(VK_INSERT);
    PressAll({VK_BACK, VK_HOME, VK_DELETE});
    const HWND question = QuestionAfterEscape();
    EXPECT_EQ(Text(id::kExtraOptions), L"--exemple");
    AnswerNoAndComplete(question);
    ASSERT_EQ(Runs().size(), 2u);
    for (const RecordedRun& run : Runs()) {
        EXPECT_THAT(run.Arguments(), Contains(L"--exemple"));
        EXPECT_THAT(run.Arguments(), Not(Contains(L"--autre")));
    }
}

TEST_F(DisabledKeys, BoxStaysAsItIs) {
    BeginByEnterIn(id::kMonochrome);
    input::Press(VK_SPACE);
    input::Type(L"+");
    const HWND question = QuestionAfterEscape();
    EXPECT_FALSE(IsChecked(id::kMonochrome));
    AnswerNoAndComplete(question);
    ASSERT_EQ(Runs().size(), 2u);
    EXPECT_THAT(Runs()[1].Arguments(), Not(Contains(L"--monochrome")));
}

TEST_F(DisabledKeys, ConvertButtonBeginsNoSecondBatch) {
    StartWithFiles();
    input::ClickOn(Control(id::kConvert));
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    ASSERT_FALSE(IsEnabled(id::kConvert));
    ASSERT_EQ(FocusedId(), id::kConvert);
    PressAll({VK_SPACE, VK_RETURN, VK_SPACE});
    AnswerNoAndComplete(QuestionAfterEscape());
    EXPECT_EQ(Runs().size(), 2u);
}

// As a program sends them that fills in forms for its user: to the control, wherever the focus is.
TEST_F(DisabledKeys, PostedToDisabledControlsHaveNoEffectEither) {
    BeginByEnterIn(id::kFileList);
    driver::PressKey(Control(id::kConvert), VK_SPACE);
    driver::PressKey(Control(id::kConvert), VK_RETURN);
    driver::PressKey(Control(id::kNoOutline), VK_SPACE);
    driver::PressKey(List(), VK_DOWN);
    driver::TypeText(Control(id::kExtraOptions), L"--autre");
    const HWND question = QuestionAfterEscape();
    EXPECT_FALSE(IsChecked(id::kNoOutline));
    EXPECT_EQ(driver::SelectedRow(List()), 0);
    EXPECT_EQ(Text(id::kExtraOptions), L"");
    AnswerNoAndComplete(question);
    EXPECT_EQ(Runs().size(), 2u);
}

// The focus stays where it is: an edit that loses it would change its text.
TEST_F(DisabledKeys, ResolutionStaysAsTypedWhileTheBatchRuns) {
    StartWithFiles();
    input::ClickOn(Control(id::kResolution));
    ASSERT_TRUE(GetsFocus(id::kResolution));
    input::Type(L"50");
    ASSERT_TRUE(Reads(id::kResolution, L"50"));
    PressEnterToBegin(id::kResolution);
    input::Type(L"1");
    input::Press(VK_RETURN);
    EXPECT_TRUE(TimeGoesOnTwice());
    EXPECT_EQ(Text(id::kResolution), L"50");
    EXPECT_EQ(FocusedId(), id::kResolution);
    CompleteBatch();
    ASSERT_EQ(Runs().size(), 2u);
    for (const RecordedRun& run : Runs()) EXPECT_EQ(run.Arguments().at(5), L"50");
}

TEST_F(DisabledKeys, EnterInAnEditEnabledByAClickBeginsNothing) {
    StartWithFiles();
    input::ClickOn(Control(id::kConvert));
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    // This edit is enabled and its keys are its own. Enter goes to the default button, which the system does
    // not press while it is disabled.
    input::ClickOn(Control(id::kPages));
    ASSERT_TRUE(GetsFocus(id::kPages));
    input::Type(L"12");
    input::Press(VK_RETURN);
    input::Type(L"3");
    EXPECT_TRUE(Reads(id::kPages, L"123"));
    AnswerNoAndComplete(QuestionAfterEscape());
    EXPECT_EQ(Runs().size(), 2u);
}

class KeysOfTheWindow : public DisabledKeys, public testing::WithParamInterface<int> {};

TEST_P(KeysOfTheWindow, TabLeadsToAControlThatIsEnabled) {
    BeginByEnterIn(GetParam());
    input::Press(VK_TAB);
    ASSERT_TRUE(Comes([&] { return FocusedId() != GetParam(); }, kInputLimit));
    EXPECT_TRUE(IsEnabled(FocusedId())) << FocusedId();
    EXPECT_NE(QuestionAfterEscape(), nullptr);
}

TEST_P(KeysOfTheWindow, ShiftTabLeadsBackwardsToOne) {
    BeginByEnterIn(GetParam());
    input::PressWithShift(VK_TAB);
    ASSERT_TRUE(Comes([&] { return FocusedId() != GetParam(); }, kInputLimit));
    EXPECT_TRUE(IsEnabled(FocusedId())) << FocusedId();
    EXPECT_NE(QuestionAfterEscape(), nullptr);
}

TEST_P(KeysOfTheWindow, AltAndSpaceShowTheWindowsMenu) {
    BeginByEnterIn(GetParam());
    const auto menuIsOpen = [&] {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        return ::GetGUIThreadInfo(::GetWindowThreadProcessId(Window().Window(), nullptr), &info) &&
               info.hwndMenuOwner == Window().Window();
    };
    input::Press(VK_SPACE, {VK_MENU});
    ASSERT_TRUE(Comes(menuIsOpen, kInputLimit));
    input::Press(VK_ESCAPE);
    ASSERT_TRUE(Comes([&] { return !menuIsOpen(); }, kInputLimit));
    EXPECT_TRUE(Window().IsRunning());
    EXPECT_EQ(Window().OpenBox(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(FocusOn, KeysOfTheWindow,
                         testing::Values(id::kFileList, id::kExtraOptions, id::kMonochrome),
                         [](const auto& control) { return "Control" + std::to_string(control.param); });

}  // namespace
