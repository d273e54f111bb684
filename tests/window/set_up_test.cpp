// The main window's set-up: its steps in their order, what happens without the converter, the pictures, and
// the dialog's part in the message loop. Where the program's folder is has a test of its own.
#include "tests/window/main_window_fixture.h"

#include <shellapi.h>
#include <shlwapi.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <new>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kMissingMessage =
    "MessageBoxW owner=none text=pdf2djvu.exe est absent !\r\n\r\n(Talvenor.exe doit se trouver dans le\r\n"
    "même dossier que \"pdf2djvu.exe\") caption=Talvenor type=0x10";

std::string ResourceName(LPCWSTR name) {
    return std::to_string(reinterpret_cast<ULONG_PTR>(name));
}

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
};

// With the calls of a ControlCalls, `calls` has what else the set-up asks of the system: files with "~" for
// the program's folder, icons by their resource, and of SetWindowLongPtrW the window procedures.
class SetUpStepsTest : public SetUpTest {
protected:
    // Has the calls of an import written down with what `describe` makes of their arguments.
    template <class Function, class Describe>
    static Replaced Noted(const char* name, Describe describe) {
        return Replace<Function>(name, [name, describe](auto original, auto... arguments) {
            calls.Add(std::string(name) + ' ' + describe(arguments...));
            return original(arguments...);
        });
    }
    // What `create` makes the dialog do.
    std::vector<std::string> StepsOf(const std::function<void()>& create) {
        const auto withoutFolder = [&](std::wstring path) {
            const std::wstring program = folder.Path().wstring();
            if (path.starts_with(program)) path.replace(0, program.size(), L"~");
            return Utf8(path);
        };
        const auto extension = Noted<decltype(::PathRemoveExtensionW)>("PathRemoveExtensionW", withoutFolder);
        const auto exists = Noted<decltype(::PathFileExistsW)>("PathFileExistsW", withoutFolder);
        const auto metrics = REPLACE_IMPORT(GetSystemMetrics, [](auto original, int index) {
            switch (index) {
            case SM_CXICON: return 48;
            case SM_CYICON: return 44;
            case SM_CXSMICON: return 20;
            case SM_CYSMICON: return 18;
            default: return original(index);
            }
        });
        const auto loadImage = REPLACE_IMPORT(LoadImageW, [&](auto original, HINSTANCE module, LPCWSTR name,
                                                              UINT type, int width, int height, UINT flags) {
            calls.Add("LoadImageW " + ResourceName(name) + ' ' + std::to_string(width) + 'x' +
                      std::to_string(height));
            const HANDLE icon = iconsFail ? nullptr : original(module, name, type, width, height, flags);
            loaded[static_cast<HICON>(icon)] = ResourceName(name);
            return icon;
        });
        const auto loadIcon = REPLACE_IMPORT(LoadIconW, [&](auto original, HINSTANCE module, LPCWSTR name) {
            EXPECT_EQ(module, ::GetModuleHandleW(nullptr));
            calls.Add("LoadIconW " + ResourceName(name));
            const HICON icon = iconsFail ? nullptr : original(module, name);
            loaded[icon] = ResourceName(name);
            return icon;
        });
        const auto destroyIcon = REPLACE_IMPORT(DestroyIcon, [&](auto original, HICON icon) {
            if (icon && loaded.contains(icon)) calls.Add("DestroyIcon " + loaded[icon]);
            return original(icon);
        });
        const auto setLong =
            REPLACE_IMPORT(SetWindowLongPtrW, [&](auto original, HWND window, int index, LONG_PTR value) {
                if (index == GWLP_WNDPROC)
                    calls.Add("SetWindowLongPtrW " + WindowName(window) + " procedure");
                return original(window, index, value);
            });
        const auto createImages = Noted<decltype(::ImageList_Create)>(
            "ImageList_Create", [](int width, int height, UINT flags, int count, int growth) {
                return std::to_string(width) + 'x' + std::to_string(height) + ' ' + std::to_string(flags) +
                       ' ' + std::to_string(count) + ' ' + std::to_string(growth);
            });
        const auto addImage = Noted<decltype(::ImageList_ReplaceIcon)>(
            "ImageList_ReplaceIcon",
            [&](HIMAGELIST, int index, HICON icon) { return std::to_string(index) + ' ' + loaded[icon]; });
        const auto accept = Noted<decltype(::DragAcceptFiles)>(
            "DragAcceptFiles",
            [](HWND window, BOOL accepts) { return WindowName(window) + ' ' + std::to_string(accepts); });
        const auto createWindow = Noted<decltype(::CreateWindowExW)>(
            "CreateWindowExW", [](DWORD, LPCWSTR className, auto...) { return Utf8(className); });
        const auto timer = Noted<decltype(::SetTimer)>("SetTimer", [](auto...) { return "of any kind"; });
        const auto quit = Noted<decltype(::PostQuitMessage)>("PostQuitMessage",
                                                             [](int code) { return std::to_string(code); });
        return Recorded(create, {}, [&](HWND, UINT message, WPARAM, LPARAM image) -> std::optional<LRESULT> {
            if (message == BM_SETIMAGE) images.push_back(reinterpret_cast<HICON>(image));
            return std::nullopt;
        });
    }

    bool iconsFail = false;
    std::map<HICON, std::string> loaded;  // by LoadImageW and LoadIconW
    std::vector<HICON> images;            // of buttons
};

TEST_F(SetUpStepsTest, AreTakenInTheirOrder) {
    EXPECT_THAT(
        StepsOf([&] { Create(); }),
        ElementsAre("PathRemoveExtensionW ~\\Talvenor.exe", "PathFileExistsW ~\\pdf2djvu.exe",
                    "SetWindowPos main", "LoadImageW 128 48x44", "WM_SETICON main 1", "LoadImageW 128 20x18",
                    "WM_SETICON main 0", "SetWindowLongPtrW 1014 procedure",
                    "SetWindowLongPtrW 1040 procedure", "LVM_SETEXTENDEDLISTVIEWSTYLE 1040 1057 1057",
                    "ImageList_Create 16x16 33 1 0", "LoadImageW 213 16x16", "ImageList_ReplaceIcon -1 213",
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
        StepsOf([&] { TryToCreate(); }),
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

class SetUpLoopTest : public SetUpTest {
protected:
    MSG message = {nullptr, WM_APP, 0, 0, 0, {}};
    std::vector<HWND> askedFor;
    BOOL answer = TRUE;

private:
    Replaced m_isDialogMessage = REPLACE_IMPORT(IsDialogMessageW, [this](HWND window, LPMSG asked) {
        EXPECT_EQ(asked, &message);
        askedFor.push_back(window);
        return answer;
    });
};

TEST_F(SetUpLoopTest, TheDialogFiltersMessagesByIsDialogMessageUntilItIsDestroyed) {
    Create();
    EXPECT_TRUE(loop.FilterMessage(message));
    answer = FALSE;
    EXPECT_FALSE(loop.FilterMessage(message));
    EXPECT_THAT(askedFor, ElementsAre(Dialog(), Dialog()));
    ::DestroyWindow(Dialog());
    askedFor.clear();
    answer = TRUE;
    EXPECT_FALSE(loop.FilterMessage(message));
    EXPECT_THAT(askedFor, IsEmpty());
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
