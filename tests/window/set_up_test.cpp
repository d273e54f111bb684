// The main window's set-up: its steps in their order, where the converter is looked for and what happens
// without it, the pictures, and the dialog's part in the message loop.
#include "tests/window/main_window_fixture.h"
#include "tests/window/path_steps.h"

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
// the program's folder, icons by their resource, no other destroyed icon than those of LoadIconW, and of
// SetWindowLongPtrW the window procedures.
class SetUpStepsTest : public SetUpTest {
protected:
    // What `create` makes the dialog do.
    std::vector<std::string> StepsOf(const std::function<void()>& create) {
        const auto exists =
            Replace<decltype(::PathFileExistsW)>("PathFileExistsW", [&](auto original, LPCWSTR path) {
                std::wstring shown = path;
                const std::wstring program = folder.Path().wstring();
                if (shown.starts_with(program)) shown.replace(0, program.size(), L"~");
                calls.Add("PathFileExistsW " + Utf8(shown));
                return original(path);
            });
        const auto metrics =
            Replace<decltype(::GetSystemMetrics)>("GetSystemMetrics", [](auto original, int index) {
                switch (index) {
                case SM_CXICON: return 48;
                case SM_CYICON: return 44;
                case SM_CXSMICON: return 20;
                case SM_CYSMICON: return 18;
                default: return original(index);
                }
            });
        const auto loadImage = Replace<decltype(::LoadImageW)>(
            "LoadImageW",
            [&](auto original, HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags) {
                calls.Add("LoadImageW " + ResourceName(name) + ' ' + std::to_string(width) + 'x' +
                          std::to_string(height));
                return iconsFail ? nullptr : original(module, name, type, width, height, flags);
            });
        const auto loadIcon =
            Replace<decltype(::LoadIconW)>("LoadIconW", [&](auto original, HINSTANCE module, LPCWSTR name) {
                EXPECT_EQ(module, ::GetModuleHandleW(nullptr));
                calls.Add("LoadIconW " + ResourceName(name));
                const HICON icon = iconsFail ? nullptr : original(module, name);
                loaded[icon] = ResourceName(name);
                return icon;
            });
        const auto destroyIcon =
            Replace<decltype(::DestroyIcon)>("DestroyIcon", [&](auto original, HICON icon) {
                if (icon && loaded.contains(icon)) calls.Add("DestroyIcon " + loaded[icon]);
                return original(icon);
            });
        const auto setLong = Replace<decltype(::SetWindowLongPtrW)>(
            "SetWindowLongPtrW", [&](auto original, HWND window, int index, LONG_PTR value) {
                if (index == GWLP_WNDPROC)
                    calls.Add("SetWindowLongPtrW " + WindowName(window) + " procedure");
                return original(window, index, value);
            });
        const auto createImages = Replace<decltype(::ImageList_Create)>(
            "ImageList_Create", [&](auto original, int width, int height, UINT flags, int count, int growth) {
                calls.Add("ImageList_Create " + std::to_string(width) + 'x' + std::to_string(height) + ' ' +
                          std::to_string(flags) + ' ' + std::to_string(count) + ' ' + std::to_string(growth));
                return original(width, height, flags, count, growth);
            });
        const auto addImage = Replace<decltype(::ImageList_ReplaceIcon)>(
            "ImageList_ReplaceIcon", [&](auto original, HIMAGELIST list, int index, HICON icon) {
                calls.Add("ImageList_ReplaceIcon " + std::to_string(index));
                return original(list, index, icon);
            });
        const auto accept = Replace<decltype(::DragAcceptFiles)>(
            "DragAcceptFiles", [&](auto original, HWND window, BOOL accepts) {
                calls.Add("DragAcceptFiles " + WindowName(window) + ' ' + std::to_string(accepts));
                original(window, accepts);
            });
        const auto createWindow = Replace<decltype(::CreateWindowExW)>(
            "CreateWindowExW", [&](auto original, DWORD exStyle, LPCWSTR className, auto... others) {
                calls.Add("CreateWindowExW " + Utf8(className));
                return original(exStyle, className, others...);
            });
        const auto quit =
            Replace<decltype(::PostQuitMessage)>("PostQuitMessage", [&](auto original, int code) {
                calls.Add("PostQuitMessage " + std::to_string(code));
                original(code);
            });
        return Recorded(create, {}, [&](HWND, UINT message, WPARAM, LPARAM image) -> std::optional<LRESULT> {
            if (message == BM_SETIMAGE) images.push_back(reinterpret_cast<HICON>(image));
            return std::nullopt;
        });
    }

    bool iconsFail = false;
    std::map<HICON, std::string> loaded;  // by LoadIconW
    std::vector<HICON> images;            // of buttons
};

TEST_F(SetUpStepsTest, AreTakenInTheirOrder) {
    EXPECT_THAT(
        StepsOf([&] { Create(); }),
        ElementsAre("PathFileExistsW ~\\pdf2djvu.exe", "SetWindowPos main", "LoadImageW 128 48x44",
                    "WM_SETICON main 1", "LoadImageW 128 20x18", "WM_SETICON main 0",
                    "SetWindowLongPtrW 1014 procedure", "SetWindowLongPtrW 1040 procedure",
                    "LVM_SETEXTENDEDLISTVIEWSTYLE 1040 1057 1057", "ImageList_Create 16x16 33 1 0",
                    "LoadImageW 213 16x16", "ImageList_ReplaceIcon -1", "LVM_SETIMAGELIST 1040 1",
                    "LVM_INSERTCOLUMNW 1040 0", "LVM_INSERTCOLUMNW 1040 1", "DragAcceptFiles 1040 1",
                    "CreateWindowExW tooltips_class32", StartsWith("TTM_SETMAXTIPWIDTH tooltips_class32 0 "),
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
    EXPECT_THAT(StepsOf([&] { TryToCreate(); }),
                ElementsAre("PathFileExistsW ~\\pdf2djvu.exe", kMissingMessage, "WM_COMMAND main 2 0",
                            "DestroyWindow main", "PostQuitMessage 2"));
    EXPECT_EQ(dialog->Handle(), nullptr);
}

TEST_F(SetUpTest, SetsNoTimer) {
    std::vector<UINT_PTR> timers;
    const auto set = Replace<decltype(::SetTimer)>("SetTimer", [&](HWND, UINT_PTR id, UINT, TIMERPROC) {
        timers.push_back(id);
        return id;
    });
    Create();
    EXPECT_THAT(timers, IsEmpty());
}

TEST_F(SetUpTest, TheFocusIsLeftToTheFirstControlThatCanHaveIt) {
    Create();
    EXPECT_EQ(::GetFocus(), Control(IDCANCEL));
}

TEST_F(SetUpTest, TheWindowsIconsLastAsLongAsTheDialogAndNoLonger) {
    std::vector<HANDLE> icons;
    const auto load = Replace<decltype(::LoadImageW)>(
        "LoadImageW", [&](auto original, HINSTANCE module, LPCWSTR name, auto... others) {
            const HANDLE loaded = original(module, name, others...);
            if (name == MAKEINTRESOURCEW(IDI_APPLICATION_ICON)) icons.push_back(loaded);
            return loaded;
        });
    const auto destroy = Replace<decltype(::DestroyIcon)>("DestroyIcon", [&](auto original, HICON icon) {
        std::erase(icons, icon);
        return original(icon);
    });
    Create();
    EXPECT_THAT(icons, ElementsAre(WindowIcon(ICON_BIG), WindowIcon(ICON_SMALL)));
    EXPECT_NE(icons[0], nullptr);
    Destroy();
    EXPECT_THAT(icons, IsEmpty());
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

TEST_F(SetUpTest, AFolderOfTheConvertersNameWillDo) {
    // The file is tested for by name only; the interpreter reports the rest.
    RemoveConverter();
    std::filesystem::create_directory(folder.Path() / "pdf2djvu.exe");
    EXPECT_NE(TryToCreate(), nullptr);
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(SetUpTest, ARenamedProgramLooksForTheConverterBesideItself) {
    const std::filesystem::path other = folder.Path() / "other.folder";
    std::filesystem::create_directory(other);
    for (const wchar_t* const name : {L"renamed.exe", L"re.na.med.exe", L"without-extension"}) {
        SCOPED_TRACE(Utf8(name));
        programPath = (other / name).wstring();
        calls.Clear();
        TryToCreate();
        EXPECT_THAT(calls.Calls(), ElementsAre(kMissingMessage));
        std::ofstream(other / "pdf2djvu.exe") << "stand-in";
        calls.Clear();
        EXPECT_NE(TryToCreate(), nullptr);
        EXPECT_THAT(calls.Calls(), IsEmpty());
        std::filesystem::remove(other / "pdf2djvu.exe");
        Destroy();
    }
}

TEST_F(SetUpTest, AConverterInTheCurrentFolderDoesNotCount) {
    const TemporaryFolder elsewhere;
    std::ofstream(elsewhere.Path() / "pdf2djvu.exe") << "stand-in";
    RemoveConverter();
    const CurrentFolder current(elsewhere.Path());
    TryToCreate();
    EXPECT_THAT(calls.Calls(), ElementsAre(kMissingMessage));
}

TEST_F(SetUpTest, TheConvertersPathIsMadeByRemovingTheExtensionThenTheNameAndAppending) {
    PathSteps path;
    const auto moduleFileName = Replace<decltype(::GetModuleFileNameW)>(
        "GetModuleFileNameW", [&](HMODULE module, LPWSTR text, DWORD size) {
            EXPECT_EQ(module, ::GetModuleHandleW(nullptr));
            path.steps.push_back("GetModuleFileNameW " + std::to_string(size));
            ::lstrcpyW(text, L"C:\\a.b\\c.d.exe");
            return 14u;
        });
    const auto append = Replace<decltype(::PathAppendW)>("PathAppendW", [&](LPWSTR text, LPCWSTR name) {
        path.steps.push_back("PathAppendW " + Utf8(text) + " + " + Utf8(name));
        ::lstrcpyW(text, L"C:\\joined");
        return TRUE;
    });
    const auto exists = Replace<decltype(::PathFileExistsW)>("PathFileExistsW", [&](LPCWSTR text) {
        path.steps.push_back("PathFileExistsW " + Utf8(text));
        return FALSE;
    });
    TryToCreate();
    EXPECT_THAT(path.steps,
                ElementsAre("GetModuleFileNameW 260", "PathRemoveExtensionW C:\\a.b\\c.d.exe",
                            "PathRemoveFileSpecW C:\\without\\extension",
                            "PathAppendW C:\\folder + pdf2djvu.exe", "PathFileExistsW C:\\joined"));
}

class SetUpLoopTest : public SetUpTest {
protected:
    std::unique_ptr<ReplacedImport> AnswerIsDialogMessage(BOOL answer) {
        return Replace<decltype(::IsDialogMessageW)>("IsDialogMessageW",
                                                     [this, answer](HWND window, LPMSG asked) {
                                                         EXPECT_EQ(asked, &message);
                                                         askedFor.push_back(window);
                                                         return answer;
                                                     });
    }

    MSG message = {nullptr, WM_APP, 0, 0, 0, {}};
    std::vector<HWND> askedFor;
};

TEST_F(SetUpLoopTest, TheDialogFiltersMessagesByIsDialogMessage) {
    Create();
    for (const BOOL answer : {TRUE, FALSE}) {
        const auto isDialogMessage = AnswerIsDialogMessage(answer);
        EXPECT_EQ(loop.FilterMessage(message), answer != FALSE);
    }
    EXPECT_THAT(askedFor, ElementsAre(Dialog(), Dialog()));
}

TEST_F(SetUpLoopTest, ADestroyedDialogHasLeftTheFilters) {
    Create();
    ::DestroyWindow(Dialog());
    const auto isDialogMessage = AnswerIsDialogMessage(TRUE);
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
