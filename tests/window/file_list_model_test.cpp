// Adding many files: the list must end up as if each path had been compared with every row, one by one.
#include "tests/window/main_window_fixture.h"

#include <random>

namespace {

// The plain way: every path against every row.
class PlainList {
public:
    void Add(const std::wstring& path) {
        for (const std::wstring& row : m_rows) {
            if (row == path) {
                m_rowsAtBeeps.push_back(static_cast<int>(m_rows.size()));
                return;
            }
        }
        m_rows.push_back(path);
    }
    [[nodiscard]] const std::vector<std::wstring>& Rows() const { return m_rows; }
    // How many rows there were at each beep.
    [[nodiscard]] const std::vector<int>& RowsAtBeeps() const { return m_rowsAtBeeps; }

private:
    std::vector<std::wstring> m_rows;
    std::vector<int> m_rowsAtBeeps;
};

HWND g_list = nullptr;
std::vector<int> g_rowsAtBeeps;
BOOL WINAPI NoteRows(DWORD frequency, DWORD duration) {
    EXPECT_EQ(frequency, 440u);
    EXPECT_EQ(duration, 100u);
    g_rowsAtBeeps.push_back(static_cast<int>(::SendMessageW(g_list, LVM_GETITEMCOUNT, 0, 0)));
    return TRUE;
}

class FileListModelTest : public MainWindowFixture {
protected:
    FileListModelTest() {
        Create();
        g_list = Control(IDC_FILE_LIST);
        g_rowsAtBeeps.clear();
    }

    void DropBoth(const std::vector<std::wstring>& paths) {
        Drop(paths);
        for (const std::wstring& path : paths) plain.Add(path);
    }

    PlainList plain;

private:
    ReplacedImport m_beep{"Beep", &NoteRows};
};

TEST_F(FileListModelTest, RandomDropsGiveTheRowsAndBeepsOfThePlainWay) {
    std::mt19937 random(20'261'116);
    const auto number = [&](unsigned limit) { return random() % limit; };
    for (int drop = 0; drop < 40; ++drop) {
        std::vector<std::wstring> paths(1 + number(12));
        for (std::wstring& path : paths) {
            // Few different names, so that many come twice; letters of either case, so that they differ in
            // it.
            path = L"C:\\";
            path += static_cast<wchar_t>((number(2) ? L'a' : L'A') + static_cast<wchar_t>(number(12)));
            if (number(3) == 0) path.append(255 - path.size(), L'x');  // longer than a first reading
            path += L".pdf";
        }
        DropBoth(paths);
    }
    EXPECT_EQ(Column(0), plain.Rows());
    EXPECT_EQ(g_rowsAtBeeps, plain.RowsAtBeeps());
    EXPECT_GT(g_rowsAtBeeps.size(), 50u) << "hardly any path came twice";
}

TEST_F(FileListModelTest, TenThousandFilesKeepTheirOrderAndEveryTenthIsADuplicate) {
    const auto path = [](int number) {
        return L"C:\\some folder\\document " + std::to_wstring(number) + L".pdf";
    };
    std::vector<std::wstring> dropped, expected;
    std::vector<int> expectedBeeps;
    for (int index = 0; index < 10'000; ++index) {
        if (index % 10 == 9) {
            dropped.push_back(path(index - 9));
            expectedBeeps.push_back((index + 1) / 10 * 9);  // nine new rows before each
        } else {
            dropped.push_back(path(index));
            expected.push_back(path(index));
        }
    }
    Drop(dropped);
    EXPECT_EQ(Column(0), expected);
    EXPECT_EQ(g_rowsAtBeeps, expectedBeeps);
}

TEST_F(FileListModelTest, RowsThatWereDeletedMayComeAgain) {
    DropBoth({L"C:\\a.pdf", L"C:\\b.pdf"});
    SelectRow(0);
    PressListKey(VK_DELETE);
    Drop({L"C:\\b.pdf", L"C:\\a.pdf"});
    EXPECT_EQ(Column(0), (std::vector<std::wstring>{L"C:\\b.pdf", L"C:\\a.pdf"}));
    EXPECT_EQ(g_rowsAtBeeps, (std::vector<int>{1}));
}

}  // namespace
