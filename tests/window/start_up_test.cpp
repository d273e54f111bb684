// The process entry: the instance mutex, what a second copy does, and the frame around the dialog.
#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"
#include "tests/window/forwarding_import.h"
#include "tests/window/scripted_mutex.h"

#include "ui/application.h"
#include "framework/app_module.h"
#include "ui/instance_mutex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

std::vector<std::string> g_calls;

// Set before all other objects of this file, among them those of the program's entry.
[[gnu::init_priority(101)]] std::optional<ReplacedImport> g_createMutex(std::in_place, "CreateMutexW",
                                                                        &ScriptedMutex::Create);

bool AnswerMutex(ScriptedMutex::Answer answer) {
    ScriptedMutex::answer = answer;
    return true;
}

bool StopAnsweringMutex() {
    g_createMutex.reset();
    return true;
}

}  // namespace

// The program's entry three times, its mutex answered in another way each time. What it includes is included
// above already, so that nothing but its own code lands in the namespaces.
// NOLINTBEGIN(bugprone-suspicious-include)
static const bool g_firstCopyComes = AnswerMutex({true, ERROR_SUCCESS});
namespace first_copy {
#include "ui/main.cpp"
}
static const bool g_secondCopyComes = AnswerMutex({true, ERROR_ALREADY_EXISTS});
namespace second_copy {
#include "ui/main.cpp"
}
static const bool g_copyWithoutMutexComes = AnswerMutex({false, ERROR_ACCESS_DENIED});
namespace without_mutex {
#include "ui/main.cpp"
}
static const bool g_allHaveCome = StopAnsweringMutex();
// NOLINTEND(bugprone-suspicious-include)

namespace {

const HINSTANCE kInstance = reinterpret_cast<HINSTANCE>(0x50000);
const HWND kFirstCopysWindow = reinterpret_cast<HWND>(0x60000);

// The system around an entry.
struct System {
    static inline HRESULT comResult = S_OK;
    static inline bool canRestrictLibraries = true;
    static inline std::optional<int> quitCode;  // what the dialog leaves, which itself is never created
    static inline HWND found = nullptr;
    static inline BOOL iconic = FALSE;

    // The module comes after COM and the controls.
    static std::string ModuleBegun() {
        return CAppModule::Instance().ResourceInstance() ? " after the module's beginning" : "";
    }

    static BOOL WINAPI Restrict(DWORD directories) {
        g_calls.push_back("SetDefaultDllDirectories " + std::to_string(directories));
        return TRUE;
    }
    static FARPROC WINAPI Procedure(HMODULE module, LPCSTR name) {
        if (std::string(name) != "SetDefaultDllDirectories") return original<&Procedure>(module, name);
        return canRestrictLibraries ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Restrict)) : nullptr;
    }
    static HRESULT WINAPI InitializeCom(LPVOID reserved) {
        g_calls.push_back(reserved ? "CoInitialize with something" : "CoInitialize" + ModuleBegun());
        return comResult;
    }
    static BOOL WINAPI InitializeControls(const INITCOMMONCONTROLSEX* controls) {
        g_calls.push_back("InitCommonControlsEx " + std::to_string(controls->dwSize) + ' ' +
                          std::to_string(controls->dwICC) + ModuleBegun());
        return TRUE;
    }
    static HWND WINAPI CreateDialogOf(HINSTANCE module, LPCWSTR name, HWND, DLGPROC, LPARAM) {
        const CAppModule& application = CAppModule::Instance();
        const bool ready = application.MainThreadId() == ::GetCurrentThreadId() &&
                           application.ResourceInstance() == kInstance;
        g_calls.push_back("dialog " + std::to_string(reinterpret_cast<ULONG_PTR>(name)) +
                          (module == kInstance && ready ? " of the module" : " of something else"));
        if (quitCode) ::PostQuitMessage(*quitCode);
        return nullptr;
    }
    static void WINAPI UninitializeCom() {
        const bool ended = CAppModule::Instance().ResourceInstance() == nullptr;
        g_calls.push_back(ended ? "CoUninitialize" : "CoUninitialize before the module's end");
    }
    static HWND WINAPI Find(LPCWSTR className, LPCWSTR title) {
        g_calls.push_back("FindWindowW class " + Utf8(className) + (title ? " and a title" : ""));
        return found;
    }
    static BOOL WINAPI ToFront(HWND window) {
        g_calls.push_back(window == found ? "SetForegroundWindow" : "SetForegroundWindow of another");
        return TRUE;
    }
    static BOOL WINAPI IsMinimised(HWND window) {
        g_calls.push_back(window == found ? "IsIconic" : "IsIconic of another");
        return iconic;
    }
    static BOOL WINAPI Show(HWND window, int command) {
        g_calls.push_back((window == found ? "ShowWindow " : "ShowWindow of another ") +
                          std::to_string(command));
        return TRUE;
    }
};

using Entry = int WINAPI(HINSTANCE, HINSTANCE, LPWSTR, int);

class StartUpTest : public testing::Test {
protected:
    StartUpTest() {
        g_calls.clear();
        System::comResult = S_OK;
        System::canRestrictLibraries = true;
        System::quitCode.reset();
        System::found = kFirstCopysWindow;
        System::iconic = FALSE;
    }

    int Run(Entry& entry) {
        wchar_t line[] = L"ignored";
        const auto procedure = ReplaceAndForward<&System::Procedure>("GetProcAddress");
        const ReplacedImport initializeCom("CoInitialize", &System::InitializeCom);
        const ReplacedImport uninitializeCom("CoUninitialize", &System::UninitializeCom);
        const ReplacedImport controls("InitCommonControlsEx", &System::InitializeControls);
        const ReplacedImport create("CreateDialogParamW", &System::CreateDialogOf);
        const ReplacedImport find("FindWindowW", &System::Find);
        const ReplacedImport toFront("SetForegroundWindow", &System::ToFront);
        const ReplacedImport isMinimised("IsIconic", &System::IsMinimised);
        const ReplacedImport show("ShowWindow", &System::Show);
        return entry(kInstance, nullptr, line, SW_SHOWDEFAULT);
    }
};

TEST_F(StartUpTest, TheFirstCopyTakesItsStepsInOrder) {
    EXPECT_EQ(Run(first_copy::wWinMain), 0) << "the dialog was not created";
    EXPECT_THAT(g_calls,
                ElementsAre("SetDefaultDllDirectories 2048", "CoInitialize", "InitCommonControlsEx 8 4",
                            "dialog 102 of the module", "CoUninitialize"));
}

TEST_F(StartUpTest, TheDialogsResultIsTheExitCode) {
    System::quitCode = 2;
    EXPECT_EQ(Run(first_copy::wWinMain), 2);
}

TEST_F(StartUpTest, ComMayFail) {
    System::comResult = E_OUTOFMEMORY;
    Run(first_copy::wWinMain);
    EXPECT_THAT(g_calls,
                ElementsAre("SetDefaultDllDirectories 2048", "CoInitialize", "InitCommonControlsEx 8 4",
                            "dialog 102 of the module", "CoUninitialize"));
}

TEST_F(StartUpTest, SystemsThatCannotRestrictLibrariesStartTheSame) {
    System::canRestrictLibraries = false;
    Run(first_copy::wWinMain);
    EXPECT_THAT(g_calls, ElementsAre("CoInitialize", "InitCommonControlsEx 8 4", "dialog 102 of the module",
                                     "CoUninitialize"));
}

TEST_F(StartUpTest, ACopyWhoseMutexCouldNotBeMadeRunsNormally) {
    System::quitCode = 2;
    EXPECT_EQ(Run(without_mutex::wWinMain), 2);
    EXPECT_THAT(g_calls,
                ElementsAre("SetDefaultDllDirectories 2048", "CoInitialize", "InitCommonControlsEx 8 4",
                            "dialog 102 of the module", "CoUninitialize"));
}

TEST_F(StartUpTest, ASecondCopyLooksForAWindowOfTheMutexsClassAndEndsWithZero) {
    System::quitCode = 2;  // would be the code of a copy that ran
    EXPECT_EQ(Run(second_copy::wWinMain), 0);
    EXPECT_THAT(g_calls, ElementsAre("FindWindowW class {6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}",
                                     "SetForegroundWindow", "IsIconic"));
}

TEST_F(StartUpTest, ASecondCopyRestoresAMinimisedWindow) {
    System::iconic = TRUE;
    EXPECT_EQ(Run(second_copy::wWinMain), 0);
    EXPECT_THAT(g_calls, ElementsAre("FindWindowW class {6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}",
                                     "SetForegroundWindow", "IsIconic", "ShowWindow 1"));
}

TEST_F(StartUpTest, ASecondCopyThatFindsNoWindowEndsTheSame) {
    System::found = nullptr;
    EXPECT_EQ(Run(second_copy::wWinMain), 0);
    EXPECT_THAT(g_calls, ElementsAre("FindWindowW class {6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}",
                                     "SetForegroundWindow", "IsIconic"));
}

}  // namespace
