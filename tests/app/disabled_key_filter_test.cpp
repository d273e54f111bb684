// Keys while a batch runs and the control with the focus is disabled: what would change the batch, or begin
// another beside it, has no effect.
#include "tests/app/input_fixture.h"

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
        StartWith({first, installed.MakePdf(L"b.pdf")});
        Window().Check(IDC_HIDE_OUTPUT);
        BringToFront();
    }
    // Begins the batch by a key, or by a click when there is none, on a control, which is disabled by it and
    // keeps the focus.
    void BeginBy(int controlId, WORD key = VK_RETURN) {
        StartWithFiles();
        if (key) FocusOn(controlId);
        PressToBegin(controlId, key);
    }
    void PressToBegin(int controlId, WORD key = VK_RETURN) const {
        if (key) {
            input::Press(key);
        } else {
            input::ClickOn(Control(controlId));
        }
        ASSERT_TRUE(Comes([&] { return Runs().size() == 1; })) << "no batch begins";
        ASSERT_FALSE(IsEnabled(controlId));
        ASSERT_EQ(FocusedId(), controlId);
    }
    [[nodiscard]] HWND Question() const {
        const HWND question = WaitForDialog();
        EXPECT_THAT(driver::AllText(question), testing::HasSubstr(L"Un traitement est en cours."));
        EXPECT_EQ(Runs().size(), 1u) << "the keys came too late: the second file is being converted";
        return question;
    }
    // Keys are served in order: when Esc has brought the question, those before it have had their effect.
    [[nodiscard]] HWND QuestionAfterEscape() const {
        input::Press(VK_ESCAPE);
        return Question();
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
    BeginBy(IDC_FILE_LIST);
    input::PressAll({VK_DOWN, VK_END, VK_NEXT});
    input::Type(installed.PdfFolder().substr(0, 1));
    input::PressAll({VK_DOWN, VK_SPACE, VK_DELETE, VK_F7});
    EXPECT_TRUE(TimeGoesOnTwice()) << "the time goes to another row";
    EXPECT_EQ(driver::SelectedRow(List()), 0);
    EXPECT_THAT(Durations(), ElementsAre(StartsWith(L"00:00:0"), L""));
    EXPECT_EQ(Text(IDC_STATUS), L"Conversion en cours : " + first);
    EXPECT_EQ(Window().OpenDialog(), nullptr);
    CompleteBatch();
    EXPECT_EQ(Runs().size(), 2u);
    EXPECT_THAT(Durations(), AllOf(Each(StartsWith(L"00:00:0")), testing::SizeIs(2)));
    EXPECT_GE(Durations()[0], L"00:00:04");
}

TEST_F(DisabledKeys, EditKeepsItsText) {
    StartWithFiles();
    Window().Type(IDC_EXTRA_OPTIONS, L"--exemple");
    FocusOn(IDC_EXTRA_OPTIONS);
    PressToBegin(IDC_EXTRA_OPTIONS);
    input::CopyToClipboard(L" --colle");
    input::Press(VK_END);
    input::Type(L" --autre");
    input::PressWithControl('V');
    input::PressWithShift(VK_INSERT);
    input::PressAll({VK_BACK, VK_HOME, VK_DELETE});
    const HWND question = QuestionAfterEscape();
    EXPECT_EQ(Text(IDC_EXTRA_OPTIONS), L"--exemple");
    AnswerNoAndComplete(question);
    ASSERT_EQ(Runs().size(), 2u);
    for (const RecordedRun& run : Runs()) {
        EXPECT_THAT(run.Arguments(), Contains(L"--exemple"));
        EXPECT_THAT(run.Arguments(), Not(Contains(L"--autre")));
    }
}

TEST_F(DisabledKeys, CheckBoxStaysAsItIs) {
    BeginBy(IDC_MONOCHROME);
    input::Press(VK_SPACE);
    input::Type(L"+");
    const HWND question = QuestionAfterEscape();
    EXPECT_FALSE(IsChecked(IDC_MONOCHROME));
    AnswerNoAndComplete(question);
    ASSERT_EQ(Runs().size(), 2u);
    EXPECT_THAT(Runs()[1].Arguments(), Not(Contains(L"--monochrome")));
}

TEST_F(DisabledKeys, ConvertButtonBeginsNoSecondBatch) {
    BeginBy(IDOK, 0);
    input::PressAll({VK_SPACE, VK_RETURN, VK_SPACE});
    AnswerNoAndComplete(QuestionAfterEscape());
    EXPECT_EQ(Runs().size(), 2u);
}

// The focus stays where it is: an edit that loses it would change its text.
TEST_F(DisabledKeys, ResolutionStaysAsTypedWhileTheBatchRuns) {
    StartWithFiles();
    ClickInto(IDC_RESOLUTION);
    input::Type(L"50");
    ASSERT_TRUE(Reads(IDC_RESOLUTION, L"50"));
    PressToBegin(IDC_RESOLUTION);
    input::Type(L"1");
    input::Press(VK_RETURN);
    EXPECT_TRUE(TimeGoesOnTwice());
    EXPECT_EQ(Text(IDC_RESOLUTION), L"50");
    EXPECT_EQ(FocusedId(), IDC_RESOLUTION);
    CompleteBatch();
    ASSERT_EQ(Runs().size(), 2u);
    for (const RecordedRun& run : Runs()) EXPECT_EQ(run.Arguments().at(5), L"50");
}

TEST_F(DisabledKeys, EnterInAnEditEnabledByAClickBeginsNothing) {
    BeginBy(IDOK, 0);
    // This edit is enabled and its keys are its own. Enter goes to the default button, which the system does
    // not press while it is disabled.
    ClickInto(IDC_PAGES);
    input::Type(L"12");
    input::Press(VK_RETURN);
    input::Type(L"3");
    EXPECT_TRUE(Reads(IDC_PAGES, L"123"));
    AnswerNoAndComplete(QuestionAfterEscape());
    EXPECT_EQ(Runs().size(), 2u);
}

// How a person begins a batch; what had the focus at that moment is disabled by it.
struct Beginning {
    const char* name;
    int control;
    WORD key;  // 0: a click
};

class KeysOfTheWindow : public DisabledKeys, public testing::WithParamInterface<Beginning> {
protected:
    void Begin() { BeginBy(GetParam().control, GetParam().key); }
};

TEST_P(KeysOfTheWindow, TabLeadsToTheStopButtonByWayOfEnabledControls) {
    Begin();
    // Three controls can be enabled during a batch; whichever comes first, the button is not far.
    for (int presses = 0; presses < 3 && FocusedId() != IDCANCEL; ++presses) {
        const int before = FocusedId();
        input::Press(VK_TAB);
        ASSERT_TRUE(Comes([&] { return FocusedId() != before; }, driver::Milliseconds(1000))) << before;
        EXPECT_TRUE(IsEnabled(FocusedId())) << FocusedId();
    }
    EXPECT_EQ(FocusedId(), IDCANCEL);
    input::Press(VK_SPACE);
    driver::PressDialogButton(Question(), IDNO);
}

TEST_P(KeysOfTheWindow, ShiftTabLeadsBackwardsToAnEnabledControlAndEscapeAsks) {
    Begin();
    input::PressWithShift(VK_TAB);
    ASSERT_TRUE(Comes([&] { return FocusedId() != GetParam().control; }, kInputLimit));
    EXPECT_TRUE(IsEnabled(FocusedId())) << FocusedId();
    driver::PressDialogButton(QuestionAfterEscape(), IDNO);
}

TEST_P(KeysOfTheWindow, EscapeAndAltF4Ask) {
    Begin();
    const HWND question = QuestionAfterEscape();
    driver::PressDialogButton(question, IDNO);
    ASSERT_TRUE(Comes([&] { return !::IsWindow(question) && Window().OpenDialog() == nullptr; }));
    EXPECT_TRUE(Window().IsRunning());
    input::Press(VK_F4, {VK_MENU});
    driver::PressDialogButton(Question(), IDNO);
}

TEST_P(KeysOfTheWindow, AltAndSpaceShowTheWindowsMenu) {
    Begin();
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
    EXPECT_EQ(Window().OpenDialog(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Begun, KeysOfTheWindow,
                         testing::Values(Beginning{"ByAClick", IDOK, 0}, Beginning{"BySpace", IDOK, VK_SPACE},
                                         Beginning{"ByEnterInAnEdit", IDC_EXTRA_OPTIONS, VK_RETURN},
                                         Beginning{"ByEnterInTheList", IDC_FILE_LIST, VK_RETURN},
                                         Beginning{"ByEnterOnACheckBox", IDC_MONOCHROME, VK_RETURN}),
                         [](const auto& beginning) { return std::string(beginning.param.name); });

}  // namespace
