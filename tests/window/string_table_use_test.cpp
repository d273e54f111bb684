// Every text that a person reads is loaded from the string table when it is needed. Here each string is its
// own number, "<139>", so that a text from anywhere else shows.
#include "tests/window/control_calls.h"
#include "tests/window/held_batch_fixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

std::wstring Mark(UINT id) {
    return L'<' + std::to_wstring(id) + L'>';
}

// The system's string tables: block after block of sixteen texts, each after its length.
struct MarkedStrings {
    static HRSRC WINAPI Find(HMODULE, LPCWSTR type, LPCWSTR name, WORD) {
        EXPECT_EQ(type, RT_STRING);
        return reinterpret_cast<HRSRC>(reinterpret_cast<ULONG_PTR>(name));
    }
    static HGLOBAL WINAPI Load(HMODULE, HRSRC block) { return block; }
    static LPVOID WINAPI Lock(HGLOBAL block) {
        constexpr UINT kInBlock = 16;
        static std::map<HGLOBAL, std::wstring> blocks;
        std::wstring& texts = blocks[block];
        if (texts.empty()) {
            const auto first = static_cast<UINT>(reinterpret_cast<ULONG_PTR>(block) - 1) * kInBlock;
            for (UINT id = first; id < first + kInBlock; ++id) {
                const std::wstring text = Mark(id);
                texts.append(1, static_cast<wchar_t>(text.size())).append(text);
            }
        }
        return texts.data();
    }
    static int WINAPI LoadString(HINSTANCE, UINT id, LPWSTR text, int size) {
        ::lstrcpynW(text, Mark(id).c_str(), size);
        return ::lstrlenW(text);
    }

    ReplacedImport find{"FindResourceExW", &Find};
    ReplacedImport load{"LoadResource", &Load};
    ReplacedImport lock{"LockResource", &Lock};
    ReplacedImport loadString{"LoadStringW", &LoadString};
};

class StringTableUseTest : public HeldBatchFixture {
protected:
    StringTableUseTest() { Drop({L"C:\\in\\a.pdf"}); }

    // What the log holds after a batch whose converter ends with this code.
    std::string LogOfHiddenBatch(DWORD exitCode) {
        Click(IDC_HIDE_OUTPUT);
        StartBatch();
        FinishBatch(exitCode);
        std::ifstream log(std::filesystem::path(folder.File(L"TalvenorLog.txt")));
        return {std::istreambuf_iterator<char>(log), {}};
    }

    MarkedStrings strings;
};

TEST_F(StringTableUseTest, ButtonStatusLineAndBoxesOfABatch) {
    StartBatch();
    EXPECT_EQ(Text(IDCANCEL), L"<139>");
    EXPECT_EQ(Text(IDC_STATUS), L"<132>C:\\in\\a.pdf");
    boxAnswer = IDNO;
    Click(IDCANCEL);
    EXPECT_THAT(calls.Calls(), Contains("MessageBoxW owner=main text=<144> caption=<128> type=0x24"));
    FinishBatch();
    EXPECT_EQ(Text(IDCANCEL), L"<141>");
    EXPECT_THAT(calls.Calls(), Contains("MessageBoxW owner=main text=<131> caption=<128> type=0x40"));
}

TEST_F(StringTableUseTest, RecordOfABatchThatFails) {
    const std::string record = LogOfHiddenBatch(1);
    EXPECT_THAT(record, HasSubstr("<145>"));
    EXPECT_EQ(Cell(0, 1), L"<145>");
}

TEST_F(StringTableUseTest, RecordOfABatchThatGoesWell) {
    const std::string record = LogOfHiddenBatch(0);
    EXPECT_THAT(record, HasSubstr("<146>"));
    EXPECT_THAT(record, HasSubstr("<140>"));
}

TEST_F(StringTableUseTest, RefusalOfAnOutputFolder) {
    ::CheckDlgButton(Dialog(), IDC_OUTPUT_FOLDER_CHECK, BST_CHECKED);
    SetText(IDC_OUTPUT_FOLDER, L"Q:\\absent");
    Command(IDOK, BN_CLICKED);
    EXPECT_THAT(calls.Calls(), ElementsAre("MessageBoxW owner=main text=<142> caption=<128> type=0x10"));
}

class StringTableUseAtStartTest : public MainWindowFixture {
protected:
    MarkedStrings strings;
};

TEST_F(StringTableUseAtStartTest, ToolTips) {
    std::vector<std::string> tips;
    {
        const ControlCalls recorded(
            calls, [&](HWND, UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
                if (message == TTM_ADDTOOLW)
                    tips.push_back(Utf8(reinterpret_cast<const TTTOOLINFOW*>(lParam)->lpszText));
                return std::nullopt;
            });
        Create();
    }
    std::sort(tips.begin(), tips.end());
    EXPECT_THAT(tips, ElementsAre("<133>", "<136>", "<138>", "<147>", "<204>", "<205>"));
}

TEST_F(StringTableUseAtStartTest, MissingConverter) {
    std::filesystem::remove(folder.Path() / "pdf2djvu.exe");
    dialog = std::make_unique<CMainDlg>();
    EXPECT_EQ(dialog->Create(nullptr), nullptr);
    EXPECT_THAT(calls.Calls(), ElementsAre("MessageBoxW owner=none text=<130> caption=<128> type=0x10"));
}

}  // namespace
