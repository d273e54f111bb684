// The main window's set-up: its steps in their order, what happens without the converter, the pictures, and
// the dialog's part in the message loop. Where the program's folder is has a test of its own.
#include "tests/window/main_window_fixture.h"
#include "tests/window/noted_calls.h"

#include <shellapi.h>
#include <shlwapi.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <new>
#include <utility>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

const std::string kMissingMessage =
    "MessageBoxW owner=none text=pdf2djvu.exe est absent !\r\n\r\n(Talvenor.exe doit se trouver dans le\r\n"
    "même dossier que \"pdf2djvu.exe\") caption=Talvenor type=0x10";

// With the calls of a ControlCalls, `calls` has what else the set-up asks of the system: files with "~" for
// the program's folder, icons by their resource, and of SetWindowLongPtrW the window procedures and styles.
// What is not among them leaves a control as its template makes it.
class SetUpTest : public MainWindowFixture {
protected:
    // Creates the dialog where it may well refuse.
    HWND TryToCreate() {
        dialog = std::make_unique<CMainDlg>();
        return dialog->Create(nullptr);
    }
    void RemoveConverter() const { std::filesystem::remove(folder.Path() / "pdf2djvu.exe"); }

    [[nodiscard]] HICON WindowIcon(WPARAM size) const {
        return reinterpret_cast<HICON>(::SendMessageW(Dialog(), WM_GETICON, size, 0));
    }
    [[nodiscard]] HICON ButtonImage(int id) const {
        return reinterpret_cast<HICON>(::SendMessageW(Control(id), BM_GETIMAGE, IMAGE_ICON, 0));
    }

    // What `create` makes the dialog do.
    std::vector<std::string> StepsOf(const std::function<void()>& create) {
        std::vector<Replaced> replaced;
        NotedCalls noted(replaced, [](std::string call) {
            calls.Add(std::move(call));
            return true;
        });
        const auto withoutFolder = [&](std::wstring path) {
            const std::wstring program = folder.Path().wstring();
            if (path.starts_with(program)) path.replace(0, program.size(), L"~");
            return Utf8(path);
        };
        noted.Add<"PathRemoveExtensionW", decltype(::PathRemoveExtensionW)>(withoutFolder);
        noted.Add<"PathFileExistsW", decltype(::PathFileExistsW)>(withoutFolder);
        noted.Add<"ImageList_Create", decltype(::ImageList_Create)>();
        noted.Add<"ImageList_ReplaceIcon", decltype(::ImageList_ReplaceIcon)>(
            [&](HIMAGELIST, int index, HICON icon) { return CallText(std::to_string(index), loaded[icon]); });
        noted.Add<"DragAcceptFiles", decltype(::DragAcceptFiles)>();
        noted.Add<"CreateWindowExW", decltype(::CreateWindowExW)>(
            [](DWORD, LPCWSTR className, auto...) { return Utf8(className); });
        noted.Add<"SetTimer", decltype(::SetTimer)>([](auto...) { return "of any kind"; });
        noted.Add<"PostQuitMessage", decltype(::PostQuitMessage)>();
        const auto metrics = REPLACE_IMPORT(GetSystemMetrics, [](auto original, int index) {
            switch (index) {
            case SM_CXICON: return 48;
            case SM_CYICON: return 44;
            case SM_CXSMICON: return 20;
            case SM_CYSMICON: return 18;
            default: return original(index);
            }
        });
        const auto load = [this](const char* call, LPCWSTR name, const std::string& size, auto icon) {
            const std::string resource = std::to_string(reinterpret_cast<ULONG_PTR>(name));
            calls.Add(call + (' ' + resource) + size);
            const auto result = iconsFail ? nullptr : static_cast<HICON>(icon());
            loaded[result] = resource;
            return result;
        };
        const auto loadImage = REPLACE_IMPORT(
            LoadImageW,
            [&](auto original, HINSTANCE module, LPCWSTR name, UINT type, int width, int height,
                UINT flags) -> HANDLE {
                return load("LoadImageW", name, CallText("", width, height),
                            [&] { return original(module, name, type, width, height, flags); });
            });
        const auto loadIcon = REPLACE_IMPORT(LoadIconW, [&](auto original, HINSTANCE module, LPCWSTR name) {
            EXPECT_EQ(module, ::GetModuleHandleW(nullptr));
            return load("LoadIconW", name, "", [&] { return original(module, name); });
        });
        const auto destroyIcon = REPLACE_IMPORT(DestroyIcon, [&](auto original, HICON icon) {
            if (icon && loaded.contains(icon)) calls.Add("DestroyIcon " + loaded[icon]);
            return original(icon);
        });
        const auto setLong =
            REPLACE_IMPORT(SetWindowLongPtrW, [&](auto original, HWND window, int index, LONG_PTR value) {
                if (index == GWLP_WNDPROC) calls.Add(CallText("SetWindowLongPtrW", window, "procedure"));
                if (index == GWL_STYLE || index == GWL_EXSTYLE) calls.Add("a style is changed");
                return original(window, index, value);
            });
        return Recorded(create, {}, [&](HWND, UINT message, WPARAM, LPARAM image) -> std::optional<LRESULT> {
            if (message == BM_SETIMAGE) images.push_back(reinterpret_cast<HICON>(image));
            return std::nullopt;
        });
    }

    bool iconsFail = false;
    std::map<HICON, std::string> loaded;  // by LoadImageW and LoadIconW
    std::vector<HICON> images;            // of buttons
};

using SetUpStepsTest = SetUpTest;

TEST_F(SetUpStepsTest, AreTakenInTheirOrder) {
    EXPECT_THAT(
        StepsOf([&] { Create(); }),
        ElementsAre("PathRemoveExtensionW ~\\Talvenor.exe", "PathFileExistsW ~\\pdf2djvu.exe",
                    "SetWindowPos main", "LoadImageW 128 48 44", "WM_SETICON main 1", "LoadImageW 128 20 18",
                    "WM_SETICON main 0", "SetWindowLongPtrW 1014 procedure",
                    "SetWindowLongPtrW 1040 procedure", "LVM_SETEXTENDEDLISTVIEWSTYLE 1040 1057 1057",
                    "ImageList_Create 16 16 33 1 0", "LoadImageW 213 16 16", "ImageList_ReplaceIcon -1 213",
                    "LVM_SETIMAGELIST 1040 1", "DestroyIcon 213", "LVM_INSERTCOLUMNW 1040 0",
                    "LVM_INSERTCOLUMNW 1040 1", "DragAcceptFiles 1040 1", "CreateWindowExW tooltips_class32",
                    StartsWith("TTM_SETMAXTIPWIDTH tooltips_class32 0 "),
                    "TTM_ADDTOOLW tooltips_class32 1014", "TTM_ADDTOOLW tooltips_class32 1018",
                    "TTM_ADDTOOLW tooltips_class32 1003", "TTM_ADDTOOLW tooltips_class32 1019",
                    "TTM_ADDTOOLW tooltips_class32 1026", "TTM_ADDTOOLW tooltips_class32 1038",
                    "TTM_ACTIVATE tooltips_class32 1 0", "PathFileExistsW ~\\TalvenorLog.txt",
                    "EnableWindow 1024 0", "ShowWindow 1024 0", "LoadIconW 128", "BM_SETIMAGE 1 1",
                    "DestroyIcon 128", "LoadIconW 207", "BM_SETIMAGE 1003 1", "DestroyIcon 207",
                    "LoadIconW 208", "BM_SETIMAGE 1005 1", "DestroyIcon 208", "LoadIconW 212",
                    "BM_SETIMAGE 1028 1", "DestroyIcon 212"));
    std::vector<std::string> pictures;
    for (const HICON image : images) pictures.push_back(loaded[image]);
    EXPECT_THAT(pictures, ElementsAre("128", "207", "208", "212"));
    // The system keeps what LoadIconW gave, so that the pictures stay.
    EXPECT_THAT(images, ElementsAre(ButtonImage(IDOK), ButtonImage(IDC_ADD), ButtonImage(IDC_CLEAR),
                                    ButtonImage(IDC_BROWSE)));
    for (const HICON image : images) {
        const HICON copy = ::CopyIcon(image);
        EXPECT_NE(copy, nullptr);
        ::DestroyIcon(copy);
    }
}

TEST_F(SetUpStepsTest, GoOnToTheLastWithoutAWordWhenNoIconCanBeLoaded) {
    iconsFail = true;
    const std::vector<std::string> steps = StepsOf([&] { Create(); });
    EXPECT_THAT(Only({"MessageBoxW", "Beep"}, steps), IsEmpty());
    EXPECT_EQ(steps.back(), "BM_SETIMAGE 1028 1");
    EXPECT_EQ(WindowIcon(ICON_BIG), nullptr);
    EXPECT_EQ(WindowIcon(ICON_SMALL), nullptr);
    EXPECT_EQ(ButtonImage(IDOK), nullptr);
}

TEST_F(SetUpStepsTest, EndWithAMessageWithoutTheConverter) {
    RemoveConverter();
    EXPECT_THAT(
        StepsOf([&] { EXPECT_EQ(TryToCreate(), nullptr); }),
        ElementsAre("PathRemoveExtensionW ~\\Talvenor.exe", "PathFileExistsW ~\\pdf2djvu.exe",
                    kMissingMessage, "WM_COMMAND main 2 0", "DestroyWindow main", "PostQuitMessage 2"));
    EXPECT_EQ(dialog->Handle(), nullptr);
}

TEST_F(SetUpStepsTest, GiveTheWindowTwoIconsThatLastAsLongAsTheDialogAndNoLonger) {
    StepsOf([&] { Create(); });
    EXPECT_EQ(loaded[WindowIcon(ICON_BIG)], "128");
    EXPECT_EQ(loaded[WindowIcon(ICON_SMALL)], "128");
    EXPECT_NE(WindowIcon(ICON_BIG), WindowIcon(ICON_SMALL));
    EXPECT_THAT(Only({"DestroyIcon"}, StepsOf([&] { Destroy(); })),
                ElementsAre("DestroyIcon 128", "DestroyIcon 128"));
}

TEST_F(SetUpTest, TheFocusIsLeftToTheFirstControlThatCanHaveIt) {
    Create();
    EXPECT_EQ(::GetFocus(), Control(IDCANCEL));
}

using SetUpDeathTest = SetUpTest;

TEST_F(SetUpDeathTest, AProgramWhosePathDoesNotFitEndsWithoutAWord) {
    programPath = folder.Path().wstring() + L'\\' + std::wstring(MAX_PATH, L'a') + L".exe";
    constexpr auto kNoMemory = static_cast<int>(0xC0000017);
    EXPECT_EXIT(TryToCreate(), testing::ExitedWithCode(kNoMemory), "");
    programPath.resize(MAX_PATH - 1);  // fits
    EXPECT_NE(TryToCreate(), nullptr);
}

TEST_F(SetUpTest, WmInitDialogReturnsFalseWithoutTheConverter) {
    RemoveConverter();
    CMainDlg without;
    LRESULT result = 77;
    EXPECT_TRUE(without.DispatchDialogMessage(nullptr, WM_INITDIALOG, 0, 0, result, 0));
    EXPECT_EQ(result, FALSE);
}

using SetUpLoopTest = SetUpTest;

TEST_F(SetUpLoopTest, TheDialogFiltersMessagesByIsDialogMessage) {
    Create();
    MSG message = {nullptr, WM_APP, 0, 0, 0, {}};
    std::vector<std::pair<HWND, MSG*>> asked;
    for (const BOOL answer : {TRUE, FALSE}) {
        const auto isDialogMessage = REPLACE_IMPORT(IsDialogMessageW, [&](HWND window, LPMSG filtered) {
            asked.emplace_back(window, filtered);
            return answer;
        });
        EXPECT_EQ(loop.FilterMessage(message), answer != FALSE);
    }
    EXPECT_THAT(asked, ElementsAre(Pair(Dialog(), &message), Pair(Dialog(), &message)));
}

// The dialog is in memory that cannot be read any more when the loop goes on: a dialog that is still among
// the filters or the idle handlers would end the test program.
TEST_F(SetUpLoopTest, TheLoopForgetsADestroyedDialog) {
    void* const page = ::VirtualAlloc(nullptr, sizeof(CMainDlg), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    ASSERT_NE(page, nullptr);
    auto* const destroyed = new (page) CMainDlg;
    const HWND window = destroyed->Create(nullptr);
    ASSERT_NE(window, nullptr);
    ::DestroyWindow(window);
    std::destroy_at(destroyed);
    ASSERT_TRUE(::VirtualFree(page, 0, MEM_RELEASE));
    MSG message = {nullptr, WM_APP, 0, 0, 0, {}};
    EXPECT_FALSE(loop.FilterMessage(message));
    EXPECT_FALSE(loop.RunIdleHandlers(0));
}

TEST_F(SetUpLoopTest, AnIdlePassChangesNoControl) {
    Create();
    EXPECT_THAT(Recorded([&] {
                    EXPECT_FALSE(loop.RunIdleHandlers(0));
                    EXPECT_FALSE(dialog->HandleIdle());
                }),
                IsEmpty());
}

TEST_F(SetUpLoopTest, AThreadWithoutALoopCanCreateTheDialogAllTheSame) {
    CAppModule::Instance().RemoveMessageLoop();
    Create();
    EXPECT_NE(Dialog(), nullptr);
    ::DestroyWindow(Dialog());
    EXPECT_EQ(Dialog(), nullptr);
}

}  // namespace
