// The list's columns: how they are made, and how wide they are with durations from a batch's start and
// without them after clearing.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;

constexpr wchar_t kDurationTitle[] = L"Durée de conversion";

class FileListColumnsTest : public BatchFixture {
protected:
    FileListColumnsTest() { Drop({L"C:\\in\\a.pdf"}); }

    [[nodiscard]] HWND Header() const { return reinterpret_cast<HWND>(SendList(LVM_GETHEADER)); }
    [[nodiscard]] int TitleWidth() const {
        return static_cast<int>(SendList(LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(kDurationTitle)));
    }
    // What a picture before the title takes, with the header's margins.
    [[nodiscard]] int PictureWidth() const {
        return 16 + 4 * static_cast<int>(::SendMessageW(Header(), HDM_GETBITMAPMARGIN, 0, 0));
    }
    // What a batch's start does to a duration column that became `width` wide and that the header draws in
    // `format`.
    [[nodiscard]] std::vector<std::string> StartBatchWith(int width, int format) {
        return Recorded([&] { StartBatch(); }, {"LVM_SETCOLUMNWIDTH", "LVM_GETCOLUMNWIDTH", "UpdateWindow"},
                        [=](HWND, UINT message, WPARAM column, LPARAM lParam) -> std::optional<LRESULT> {
                            if (message == LVM_GETCOLUMNWIDTH && column == 1) return width;
                            if (message == HDM_GETITEMW && column == 1) {
                                auto& item = *reinterpret_cast<HDITEMW*>(lParam);
                                if (item.mask == HDI_FORMAT) item.fmt = format;
                                return TRUE;
                            }
                            if (message == LVM_GETSTRINGWIDTHW) {
                                EXPECT_EQ(column, 0u);
                            }
                            return std::nullopt;
                        });
    }
};

TEST_F(FileListColumnsTest, AreInsertedWithTheirTitlesWidthsAndFormats) {
    Destroy();
    std::vector<LVCOLUMNW> columns;
    std::vector<std::wstring> titles;
    Recorded([&] { Create(); }, {},
             [&](HWND, UINT message, WPARAM, LPARAM column) -> std::optional<LRESULT> {
                 if (message == LVM_INSERTCOLUMNW) {
                     columns.push_back(*reinterpret_cast<const LVCOLUMNW*>(column));
                     titles.emplace_back(columns.back().pszText);
                 }
                 return std::nullopt;
             });
    EXPECT_THAT(titles, ElementsAre(L"Fichiers PDF", kDurationTitle));
    constexpr UINT kStated = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    for (const LVCOLUMNW& column : columns) {
        EXPECT_EQ(column.mask & kStated, kStated);
        EXPECT_EQ(column.cchTextMax, 260);
    }
    EXPECT_EQ(columns[0].cx, ListWidth());
    EXPECT_EQ(columns[0].fmt, LVCFMT_LEFT | LVCFMT_COL_HAS_IMAGES);
    EXPECT_EQ(columns[1].cx, 0) << "the durations are hidden until a batch";
    EXPECT_EQ(columns[1].fmt, LVCFMT_CENTER | LVCFMT_COL_HAS_IMAGES);
    EXPECT_EQ(::SendMessageW(Header(), HDM_GETITEMCOUNT, 0, 0), 2);
}

// Wine's header draws the list's picture before the title; that of Windows draws the title alone.
TEST_F(FileListColumnsTest, DurationsAreFittedToTheirContentsButNeverNarrowerThanWhatTheHeaderDraws) {
    const int title = TitleWidth();
    const int both = title + PictureWidth();
    const struct {
        const char* name;
        int fitted;
        int format;
        int expected;
    } cases[] = {
        {"wider than the title", title + 40, HDF_STRING, title + 40},
        {"as wide as the title", title, HDF_STRING, title},
        {"narrower than the title", title - 1, HDF_STRING, title},
        {"as wide as picture and title", both, HDF_IMAGE, both},
        {"narrower than picture and title", both - 1, HDF_IMAGE | HDF_STRING, both},
        {"as wide as the title beside a picture", title, HDF_IMAGE | HDF_STRING, both},
        {"nothing", 0, HDF_IMAGE | HDF_STRING, both},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        std::vector<std::string> expected = {"LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0"};
        if (row.fitted != row.expected) {
            expected.push_back("LVM_SETCOLUMNWIDTH 1040 1 " + std::to_string(row.expected));
        }
        expected.push_back("LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ListWidth() - row.expected));
        expected.push_back("UpdateWindow 1040");  // it is drawn at once
        EXPECT_EQ(StartBatchWith(row.fitted, row.format), expected);
        Finish(converters.Started());
    }
}

// The second batch finds less room than the first: the list has a vertical scroll bar now.
TEST_F(FileListColumnsTest, EveryBatchShowsTheDurationsWholeAndLeavesThePathsTheRest) {
    StartBatch();
    Finish(1);
    const int firstWidth = ColumnWidth(1);
    EXPECT_GE(firstWidth, TitleWidth());
    EXPECT_EQ(ColumnWidth(0), ListWidth() - firstWidth);
    const int firstListWidth = ListWidth();
    AddFiles(60);
    ASSERT_LT(ListWidth(), firstListWidth) << "no scroll bar came";
    StartBatch();
    EXPECT_EQ(ColumnWidth(1), firstWidth);
    EXPECT_EQ(ColumnWidth(0), ListWidth() - ColumnWidth(1));
}

// Both columns are too wide for a moment: the list shows its bars, and the paths get what is beside one.
TEST_F(FileListColumnsTest, PathsOfRowsThatJustFitLeaveRoomForTheBarThatTheDurationsBring) {
    AddFiles(static_cast<int>(SendList(LVM_GETCOUNTPERPAGE)));
    const int width = ListWidth();
    StartBatch();
    EXPECT_EQ(ColumnWidth(0), width - ::GetSystemMetrics(SM_CXVSCROLL) - ColumnWidth(1));
    EXPECT_EQ(ListWidth(), width) << "the bar is still there";
}

}  // namespace
