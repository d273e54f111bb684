#include "tests/app/installed_program.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/wait_until.h"

namespace {

// A process that was ended keeps its files for a moment.
constexpr driver::Milliseconds kReleaseLimit{20'000};

std::wstring OwnFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program(path);
    return program.substr(0, program.find_last_of(L'\\'));
}

std::wstring FullPath(const std::wstring& path) {
    wchar_t full[MAX_PATH] = {};
    if (!::GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr))
        driver::FailCall("GetFullPathNameW", ::GetLastError());
    return full;
}

void Copy(const std::wstring& from, const std::wstring& to) {
    if (!::CopyFileW(from.c_str(), to.c_str(), TRUE)) driver::FailCall("CopyFileW", ::GetLastError());
}

// With a prefix, paths of any length can be worked with.
std::filesystem::path OfAnyLength(const std::wstring& path) {
    return L"\\\\?\\" + path;
}

// A read-only file cannot be removed.
void MakeWritable(const std::filesystem::path& folder) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, ignored)) {
        if (entry.is_regular_file(ignored)) ::SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

std::wstring MakeRoot() {
    static int count = 0;
    const auto root =
        std::filesystem::temp_directory_path() /
        (L"talvenor-app-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++count));
    std::filesystem::create_directories(root);
    return root.wstring();
}

}  // namespace

std::wstring BuiltProgram() {
    return FullPath(OwnFolder() + L"\\" TALVENOR_PROGRAM);
}

std::wstring Equipment(const wchar_t* name) {
    return FullPath(OwnFolder() + L"\\" TALVENOR_EQUIPMENT "\\" + name);
}

InstalledProgram::InstalledProgram(Converter converter, const wchar_t* folderName)
    : m_root(MakeRoot()), m_folderName(folderName) {
    std::filesystem::create_directories(Folder());
    std::filesystem::create_directories(PdfFolder());
    Copy(BuiltProgram(), Program());
    if (converter == Converter::StandIn) Copy(Equipment(L"stand_in_converter.exe"), ConverterPath());
    if (converter == Converter::Real) Copy(Equipment(L"pdf2djvu.exe"), ConverterPath());
}

InstalledProgram::~InstalledProgram() {
    const auto root = OfAnyLength(m_root);
    std::error_code error;
    const auto removed = [&] {
        MakeWritable(root);
        std::filesystem::remove_all(root, error);
        return !error;
    };
    EXPECT_TRUE(driver::WaitUntil(removed, kReleaseLimit))
        << "the test left files behind: " << error.message();
}

std::wstring InstalledProgram::MakeFolder(const std::wstring& name) const {
    const std::wstring path = m_root + L"\\" + name;
    std::filesystem::create_directories(OfAnyLength(path));
    return path;
}

std::wstring InstalledProgram::MakePdf(const std::wstring& name, std::string_view bytes) const {
    const std::wstring path = PdfFolder() + L"\\" + name;
    std::filesystem::create_directories(OfAnyLength(path).parent_path());
    driver::WriteFileBytes(OfAnyLength(path).wstring(), bytes);
    return path;
}
