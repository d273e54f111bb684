// The file list: what a drop and the open dialog add, and how rows are told apart, selected and removed.
#include "tests/window/main_window_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FileListTest : public MainWindowFixture {
protected:
    FileListTest() { Create(); }
};

TEST_F(FileListTest, DropAddsPdfsInTheirOrderAndNothingElse) {
    Drop({L"C:\\in\\A.PDF", L"C:\\in\\b.pdf", L"C:\\in\\c.txt", L"C:\\in\\d"});
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\A.PDF", L"C:\\in\\b.pdf"));
    EXPECT_THAT(Column(1), ElementsAre(L"", L""));
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListTest, DropLeavesTheConvertButtonDisabledInAFreshWindow) {
    Drop({L"C:\\in\\a.pdf"});
    EXPECT_FALSE(IsEnabled(IDOK));
}

}  // namespace
