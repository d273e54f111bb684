// The file list as it is after set-up: columns, styles, pictures.
#include "tests/window/main_window_fixture.h"
#include "tests/window/control_calls.h"
#include "tests/window/forwarding_import.h"

namespace {

using testing::ElementsAre;

class SetUpListTest : public MainWindowFixture {
protected:
    [[nodiscard]] LRESULT Ask(UINT message, WPARAM wParam = 0) const {
        return ::SendMessageW(Control(IDC_FILE_LIST), message, wParam, 0);
    }
    [[nodiscard]] int ClientWidth() const {
        RECT client = {};
        ::GetClientRect(Control(IDC_FILE_LIST), &client);
        return client.right;
    }
    [[nodiscard]] std::wstring ColumnTitle(int column) const {
        wchar_t title[64] = {};
        LVCOLUMNW asked = {};
        asked.mask = LVCF_TEXT;
        asked.pszText = title;
        asked.cchTextMax = ARRAYSIZE(title);
        ::SendMessageW(Control(IDC_FILE_LIST), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                       reinterpret_cast<LPARAM>(&asked));
        return title;
    }
};

TEST_F(SetUpListTest, HasTwoColumnsOfWhichTheFirstTakesAllTheRoom) {
    Create();
    const auto header = reinterpret_cast<HWND>(Ask(LVM_GETHEADER));
    EXPECT_EQ(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0), 2);
    EXPECT_EQ(ColumnTitle(0), L"Fichiers PDF");
    EXPECT_EQ(ColumnTitle(1), L"Durée de conversion");
    EXPECT_EQ(ColumnWidth(0), ClientWidth());
    EXPECT_EQ(ColumnWidth(1), 0) << "the durations are hidden until a batch";
}

TEST_F(SetUpListTest, TheColumnsAreInsertedWithTheirTitlesWidthsAndFormats) {
    static std::vector<LVCOLUMNW> columns;
    static std::vector<std::wstring> titles;
    columns.clear();
    titles.clear();
    {
        const ControlCalls recorded(calls,
                                    [](HWND, UINT message, WPARAM, LPARAM column) -> std::optional<LRESULT> {
                                        if (message == LVM_INSERTCOLUMNW) {
                                            columns.push_back(*reinterpret_cast<const LVCOLUMNW*>(column));
                                            titles.push_back(columns.back().pszText);
                                        }
                                        return std::nullopt;
                                    });
        Create();
    }
    EXPECT_THAT(titles, ElementsAre(L"Fichiers PDF", L"Durée de conversion"));
    constexpr UINT kStated = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    for (const LVCOLUMNW& column : columns) {
        EXPECT_EQ(column.mask & kStated, kStated);
        EXPECT_EQ(column.cchTextMax, 260);
    }
    EXPECT_EQ(columns[0].cx, ClientWidth());
    EXPECT_EQ(columns[0].fmt, LVCFMT_LEFT | LVCFMT_COL_HAS_IMAGES);
    EXPECT_EQ(columns[1].cx, 0);
    EXPECT_EQ(columns[1].fmt, LVCFMT_CENTER | LVCFMT_COL_HAS_IMAGES);
}

TEST_F(SetUpListTest, HasGridLinesFullRowsAndInfoTips) {
    Create();
    EXPECT_EQ(Ask(LVM_GETEXTENDEDLISTVIEWSTYLE), 0x421);
}

// What is put into the list's images.
struct Images {
    static inline std::vector<HICON> pages, added;

    static HANDLE WINAPI Load(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags) {
        const HANDLE loaded = original<&Load>(module, name, type, width, height, flags);
        if (name == MAKEINTRESOURCEW(213)) pages.push_back(static_cast<HICON>(loaded));
        return loaded;
    }
    static int WINAPI Add(HIMAGELIST images, int index, HICON icon) {
        added.push_back(icon);
        return original<&Add>(images, index, icon);
    }
};

TEST_F(SetUpListTest, EveryRowHasThePagePicture) {
    Images::pages.clear();
    Images::added.clear();
    const auto load = ReplaceAndForward<&Images::Load>("LoadImageW");
    const auto add = ReplaceAndForward<&Images::Add>("ImageList_ReplaceIcon");
    Create();
    ASSERT_EQ(Images::pages.size(), 1u);
    EXPECT_NE(Images::pages.front(), nullptr);
    EXPECT_EQ(Images::added, Images::pages);

    const auto images = reinterpret_cast<HIMAGELIST>(Ask(LVM_GETIMAGELIST, LVSIL_SMALL));
    ASSERT_NE(images, nullptr);
    EXPECT_EQ(::ImageList_GetImageCount(images), 1);
    int width = 0, height = 0;
    ::ImageList_GetIconSize(images, &width, &height);
    EXPECT_EQ(width, 16);
    EXPECT_EQ(height, 16);
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    for (int row = 0; row < 2; ++row) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        item.iImage = -1;
        ::SendMessageW(Control(IDC_FILE_LIST), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        EXPECT_EQ(item.iImage, 0);
    }
}

TEST_F(SetUpListTest, WithoutAnImageListTheRowsDoWithoutPictures) {
    const ReplacedImport create(
        "ImageList_Create", +[](int, int, UINT, int, int) WINAPI -> HIMAGELIST { return nullptr; });
    Create();
    EXPECT_EQ(Ask(LVM_GETIMAGELIST, LVSIL_SMALL), 0);
    EXPECT_EQ(ColumnTitle(1), L"Durée de conversion") << "the set-up did not go on";
}

}  // namespace
