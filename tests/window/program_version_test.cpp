// How the program reads its own version resource, and that a failure at any step is version 0.0.
#include "ui/about/program_version.h"

#include "tests/support/call_text.h"
#include "tests/support/replaced_imports.h"

#include "ui/about/version_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

constexpr wchar_t kVersionZero[] = L"Version 0.0 (64-bit)";

// The functions of version.dll are the test's. They answer with `fixed`, as the fixed part of a resource of
// 640 bytes. By whatever the product calls: a name in `failing` makes that call fail, or that function
// absent.
class ProgramVersionTest : public testing::Test {
protected:
    ProgramVersionTest() {
        calls.clear();
        failing.clear();
        s_block = nullptr;
        s_library = nullptr;
        fixed = {};
        fixed.dwFileVersionMS = fixed.dwFileVersionLS = 0x00090009;  // does not count
        fixed.dwProductVersionMS = 0xFFFE0005;
        fixed.dwProductVersionLS = 0x0003FFFC;
        fixed.dwFileFlags = VS_FF_PRERELEASE;
        fixedSize = sizeof fixed;
    }
    static std::wstring Version() { return FormatVersion(ReadProgramVersion()); }

    static inline std::vector<std::string> calls;
    static inline std::string failing;
    static inline VS_FIXEDFILEINFO fixed;
    static inline UINT fixedSize;

private:
    static constexpr DWORD kSize = 640;

    // Writes a call down. Whether it is to succeed.
    template <class... Arguments>
    static bool Succeeds(const std::string& name, const Arguments&... arguments) {
        calls.push_back(CallText(name, arguments...));
        return name != failing;
    }
    static DWORD WINAPI GetSize(LPCWSTR path, LPDWORD /*handle*/) {
        return Succeeds("GetFileVersionInfoSizeW", path) ? kSize : 0;
    }
    static BOOL WINAPI GetInfo(LPCWSTR path, DWORD handle, DWORD size, LPVOID block) {
        const bool succeeds = Succeeds("GetFileVersionInfoW", path, handle, size);
        if (!block) return FALSE;  // reading nothing into a block succeeds
        const auto* const bytes = static_cast<const char*>(block);
        EXPECT_TRUE(std::all_of(bytes, bytes + size, [](char byte) { return byte == 0; }));
        return succeeds;
    }
    static BOOL WINAPI QueryValue(LPCVOID block, LPCWSTR path, LPVOID* value, PUINT length) {
        EXPECT_EQ(block, s_block);
        if (!Succeeds("VerQueryValueW", path)) return FALSE;
        *value = &fixed;
        *length = fixedSize;
        return TRUE;
    }
    // By way of void*: the two function types have nothing in common.
    template <class Function>
    static FARPROC AsProcedure(Function* function) {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
    }

    static inline LPVOID s_block = nullptr;     // the product's
    static inline HMODULE s_library = nullptr;  // the product's
    Replaced m_load = REPLACE_IMPORT(LoadLibraryW, [](auto original, LPCWSTR path) {
        return s_library = Succeeds("LoadLibraryW", path) ? original(path) : nullptr;
    });
    Replaced m_unload = REPLACE_IMPORT(FreeLibrary, [](auto original, HMODULE library) {
        if (library == s_library) calls.emplace_back(library ? "FreeLibrary" : "FreeLibrary of none");
        return original(library);
    });
    Replaced m_find = REPLACE_IMPORT(GetProcAddress, [](auto original, HMODULE library, LPCSTR name) {
        const std::string wanted = name;
        if (failing == "GetProcAddress " + wanted) return FARPROC{nullptr};
        if (wanted == "GetFileVersionInfoSizeW") return AsProcedure(&GetSize);
        if (wanted == "GetFileVersionInfoW") return AsProcedure(&GetInfo);
        if (wanted == "VerQueryValueW") return AsProcedure(&QueryValue);
        return original(library, name);
    });
    Replaced m_allocate =
        REPLACE_IMPORT(HeapAlloc, [](auto original, HANDLE heap, DWORD flags, SIZE_T bytes) {
            if (bytes != kSize) return original(heap, flags, bytes);
            EXPECT_EQ(heap, ::GetProcessHeap());
            return s_block = Succeeds("HeapAlloc", flags) ? original(heap, flags, bytes) : nullptr;
        });
    Replaced m_free = REPLACE_IMPORT(HeapFree, [](auto original, HANDLE heap, DWORD flags, LPVOID block) {
        if (block && block == s_block) {
            calls.push_back(CallText("HeapFree", flags));
            s_block = nullptr;
        }
        return original(heap, flags, block);
    });
    Replaced m_moduleFileName =
        REPLACE_IMPORT(GetModuleFileNameW, [](HMODULE, LPWSTR path, DWORD length) -> DWORD {
            calls.push_back(CallText("GetModuleFileNameW", length));
            ::lstrcpynW(path, L"C:\\Outils\\Talvenor.exe", static_cast<int>(length));
            return 22;
        });
};

TEST_F(ProgramVersionTest, IsReadFromTheProgramsResourceIntoAZeroedBlockThatIsFreed) {
    wchar_t library[MAX_PATH] = {};
    ::GetSystemDirectoryW(library, MAX_PATH);
    ::lstrcatW(library, L"\\version.dll");
    EXPECT_EQ(Version(), L"Version ß 65534.5.3 (65532) (64-bit)");
    EXPECT_THAT(calls, ElementsAre("GetModuleFileNameW 259", CallText("LoadLibraryW", library),
                                   R"(GetFileVersionInfoSizeW "C:\Outils\Talvenor.exe")",
                                   CallText("HeapAlloc", HEAP_ZERO_MEMORY),
                                   R"(GetFileVersionInfoW "C:\Outils\Talvenor.exe" 0 640)",
                                   R"(VerQueryValueW "\")", "HeapFree 0", "FreeLibrary"));
}

TEST_F(ProgramVersionTest, IsAPreReleaseByThatFlagAlone) {
    fixed.dwFileFlags = VS_FF_DEBUG | VS_FF_PRERELEASE | VS_FF_PRIVATEBUILD;
    EXPECT_TRUE(ReadProgramVersion().preRelease);
    fixed.dwFileFlags = VS_FF_DEBUG | VS_FF_PATCHED;
    EXPECT_FALSE(ReadProgramVersion().preRelease);
}

TEST_F(ProgramVersionTest, IsZeroWhenAnyStepFailsAndWhatWasTakenIsFreed) {
    for (const char* const step :
         {"LoadLibraryW", "GetProcAddress GetFileVersionInfoSizeW", "GetProcAddress GetFileVersionInfoW",
          "GetProcAddress VerQueryValueW", "GetFileVersionInfoSizeW", "HeapAlloc", "GetFileVersionInfoW",
          "VerQueryValueW"}) {
        SCOPED_TRACE(step);
        failing = step;
        calls.clear();
        EXPECT_EQ(Version(), kVersionZero);
        const auto count = [](const std::string& call) {
            return std::count_if(calls.begin(), calls.end(),
                                 [&](const std::string& made) { return made.starts_with(call); });
        };
        EXPECT_EQ(count("FreeLibrary"), failing == "LoadLibraryW" ? 0 : 1);
        EXPECT_EQ(count("FreeLibrary of none"), 0);
        EXPECT_EQ(count("HeapFree"), failing == "HeapAlloc" ? 0 : count("HeapAlloc"));
    }
}

// A path that begins with a backslash would be looked for in the root of whatever drive is current.
TEST_F(ProgramVersionTest, LooksForNoLibraryWithoutTheSystemsFolder) {
    const auto systemFolder = REPLACE_IMPORT(GetSystemDirectoryW, [](LPWSTR, UINT) { return 0u; });
    EXPECT_EQ(Version(), kVersionZero);
    EXPECT_THAT(calls, ElementsAre("GetModuleFileNameW 259"));
}

TEST_F(ProgramVersionTest, IsZeroWhenTheFixedPartIsTooShort) {
    fixedSize -= 4;
    EXPECT_EQ(Version(), kVersionZero);
}

}  // namespace
