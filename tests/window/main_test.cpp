// The process entry: the instance mutex, what a second copy does, and the frame around the dialog.
#include "tests/support/call_text.h"
#include "tests/support/replaced_imports.h"

#include "ui/application.h"
#include "framework/app_module.h"
#include "ui/instance_mutex.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

#include <optional>
#include <string>
#include <vector>

namespace {

DWORD g_errorOfMutex = ERROR_SUCCESS;  // what its creation leaves

HANDLE WINAPI CreateNoMutex(LPSECURITY_ATTRIBUTES, BOOL, LPCWSTR) {
    ::SetLastError(g_errorOfMutex);
    return nullptr;
}

// Set before all other objects of this file, among them those of the program's entry.
[[gnu::init_priority(101)]] std::optional<ReplacedImport> g_createMutex(std::in_place, "CreateMutexW",
                                                                        &CreateNoMutex);

bool AnswerMutex(DWORD error) {
    g_errorOfMutex = error;
    return true;
}

bool StopAnsweringMutex() {
    g_createMutex.reset();
    return true;
}

}  // namespace

// The program's entry twice, its mutex answered in another way each time. What it includes is included
// above already, so that nothing but its own code lands in the namespaces.
// NOLINTBEGIN(bugprone-suspicious-include)
static const bool g_firstCopyComes = AnswerMutex(ERROR_SUCCESS);
namespace first_copy {
#include "ui/main.cpp"
}
static const bool g_secondCopyComes = AnswerMutex(ERROR_ALREADY_EXISTS);
namespace second_copy {
#include "ui/main.cpp"
}
static const bool g_bothHaveCome = StopAnsweringMutex();
// NOLINTEND(bugprone-suspicious-include)

namespace {

const HINSTANCE kInstance = reinterpret_cast<HINSTANCE>(0x50000);

using Entry = int WINAPI(HINSTANCE, HINSTANCE, LPWSTR, int);
using SetDirectories = BOOL WINAPI(DWORD);

// The system around an entry, with what the program asks of it in `calls`. The dialog is never created.
class MainTest : public testing::Test {
protected:
    int Run(Entry& entry) {
        wchar_t line[] = L"ignored";
        return entry(kInstance, nullptr, line, SW_SHOWDEFAULT);
    }

    HRESULT comResult = S_OK;
    bool canRestrictLibraries = true;
    std::optional<int> quitCode;  // what the dialog leaves
    HWND firstCopysWindow = reinterpret_cast<HWND>(0x60000);
    BOOL iconic = FALSE;
    static inline std::vector<std::string> calls;

private:
    static void Note(const std::string& call) {
        calls.push_back(call +
                        (CAppModule::Instance().ResourceInstance() ? " within the module's life" : ""));
    }
    static BOOL WINAPI Restrict(DWORD directories) {
        Note(CallText("SetDefaultDllDirectories", directories));
        return TRUE;
    }

    void SetUp() override { calls.clear(); }

    Replaced m_procedure = REPLACE_IMPORT(GetProcAddress, [this](auto original, HMODULE module, LPCSTR name) {
        if (std::string(name) != "SetDefaultDllDirectories") return original(module, name);
        const bool isKernels = module == ::GetModuleHandleW(L"kernel32.dll");
        SetDirectories* const restrict = isKernels && canRestrictLibraries ? &Restrict : nullptr;
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(restrict));
    });
    Replaced m_initializeCom = REPLACE_IMPORT(CoInitialize, [this](LPVOID reserved) {
        EXPECT_EQ(reserved, nullptr);
        Note("CoInitialize");
        return comResult;
    });
    Replaced m_controls = REPLACE_IMPORT(InitCommonControlsEx, [](const INITCOMMONCONTROLSEX* controls) {
        Note(CallText("InitCommonControlsEx", controls->dwSize, controls->dwICC));
        return TRUE;
    });
    Replaced m_create = REPLACE_IMPORT(
        CreateDialogParamW, [this](HINSTANCE module, LPCWSTR name, HWND, DLGPROC, LPARAM) -> HWND {
            EXPECT_EQ(CAppModule::Instance().MainThreadId(), ::GetCurrentThreadId());
            EXPECT_EQ(CAppModule::Instance().ResourceInstance(), kInstance);
            EXPECT_EQ(module, kInstance);
            Note(CallText("CreateDialogParamW", reinterpret_cast<ULONG_PTR>(name)));
            if (quitCode) ::PostQuitMessage(*quitCode);
            return nullptr;
        });
    Replaced m_uninitializeCom = REPLACE_IMPORT(CoUninitialize, [] { Note("CoUninitialize"); });
    Replaced m_find = REPLACE_IMPORT(FindWindowW, [this](LPCWSTR className, LPCWSTR title) {
        Note(CallText("FindWindowW", className, title));
        return firstCopysWindow;
    });
    Replaced m_toFront = REPLACE_IMPORT(SetForegroundWindow, [this](HWND window) {
        EXPECT_EQ(window, firstCopysWindow);
        Note("SetForegroundWindow");
        return TRUE;
    });
    Replaced m_isIconic = REPLACE_IMPORT(IsIconic, [this](HWND window) {
        EXPECT_EQ(window, firstCopysWindow);
        Note("IsIconic");
        return iconic;
    });
    Replaced m_show = REPLACE_IMPORT(ShowWindow, [this](HWND window, int command) {
        EXPECT_EQ(window, firstCopysWindow);
        Note(CallText("ShowWindow", command));
        return TRUE;
    });
};

const std::vector<std::string> kSteps = {"SetDefaultDllDirectories 2048", "CoInitialize",
                                         "InitCommonControlsEx 8 4",
                                         "CreateDialogParamW 102 within the module's life", "CoUninitialize"};

TEST_F(MainTest, TheFirstCopyTakesItsStepsInOrderAlsoWithoutCom) {
    for (const HRESULT result : {S_OK, E_OUTOFMEMORY}) {
        comResult = result;
        calls.clear();
        EXPECT_EQ(Run(first_copy::wWinMain), 0) << "the dialog was not created";
        EXPECT_EQ(calls, kSteps);
    }
}

TEST_F(MainTest, TheDialogsResultIsTheExitCode) {
    quitCode = 2;
    EXPECT_EQ(Run(first_copy::wWinMain), 2);
}

TEST_F(MainTest, SystemsThatCannotRestrictLibrariesStartTheSame) {
    canRestrictLibraries = false;
    Run(first_copy::wWinMain);
    EXPECT_EQ(calls, std::vector(kSteps.begin() + 1, kSteps.end()));
}

TEST_F(MainTest, ASecondCopyLooksForAWindowOfTheMutexsClassRestoresAMinimisedOneAndEndsWithZero) {
    quitCode = 2;  // would be the code of a copy that ran
    std::vector<std::string> expected = {R"(FindWindowW "{6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}" (null))",
                                         "SetForegroundWindow", "IsIconic"};
    const HWND window = firstCopysWindow;
    for (const HWND found : {HWND{nullptr}, window}) {
        firstCopysWindow = found;
        calls.clear();
        EXPECT_EQ(Run(second_copy::wWinMain), 0);
        EXPECT_EQ(calls, expected);
    }
    iconic = TRUE;
    calls.clear();
    EXPECT_EQ(Run(second_copy::wWinMain), 0);
    expected.emplace_back("ShowWindow 1");
    EXPECT_EQ(calls, expected);
}

}  // namespace
