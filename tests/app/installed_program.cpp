#include "tests/app/installed_program.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/file_tree.h"
#include "tests/equipment/wait_until.h"

namespace {

// A process that was ended keeps its files for a moment.
constexpr driver::Milliseconds kReleaseLimit{20'000};

// By its place in the build folder, relative to this program.
std::wstring Built(const std::wstring& place) {
    wchar_t self[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, self, MAX_PATH);
    return (std::filesystem::path(self).parent_path() / place).lexically_normal().make_preferred().wstring();
}

void Copy(const std::wstring& from, const std::wstring& to) {
    if (!::CopyFileW(from.c_str(), to.c_str(), TRUE)) driver::FailCall("CopyFileW", ::GetLastError());
}

// Windows may name the temporary folder by a short form ("JEAN-P~1"), which the tests would not recognise in
// what the program and its converter write.
std::wstring TemporaryFolder() {
    wchar_t path[MAX_PATH + 1] = {};
    if (!::GetTempPathW(MAX_PATH + 1, path)) driver::FailCall("GetTempPathW", ::GetLastError());
    wchar_t longPath[MAX_PATH + 1] = {};
    if (!::GetLongPathNameW(path, longPath, MAX_PATH + 1))
        driver::FailCall("GetLongPathNameW", ::GetLastError());
    return longPath;
}

std::wstring MakeRoot() {
    static int count = 0;
    const std::wstring root = TemporaryFolder() + L"talvenor-app-" +
                              std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
    driver::MakeFolders(root);
    return root;
}

}  // namespace

std::wstring Equipment(const wchar_t* name) {
    return Built(L"" TALVENOR_EQUIPMENT "/" + std::wstring(name));
}

InstalledProgram::InstalledProgram(Converter converter, const wchar_t* folderName)
    : m_root(MakeRoot()), m_folderName(folderName) {
    driver::MakeFolders(Folder());
    driver::MakeFolders(PdfFolder());
    Copy(Built(L"" TALVENOR_PROGRAM), Program());
    if (converter == Converter::StandIn) Copy(Equipment(L"stand_in_converter.exe"), ConverterPath());
    if (converter == Converter::Real) Copy(Equipment(L"pdf2djvu.exe"), ConverterPath());
}

InstalledProgram::~InstalledProgram() {
    EXPECT_TRUE(driver::WaitUntil([&] { return driver::RemoveTree(m_root); }, kReleaseLimit))
        << "the test left files behind, and they cannot be removed";
}

std::wstring InstalledProgram::MakeFolder(const std::wstring& name) const {
    const std::wstring path = m_root + L"\\" + name;
    driver::MakeFolders(path);
    return path;
}

std::wstring InstalledProgram::MakePdf(const std::wstring& name, std::string_view bytes) const {
    const std::wstring path = PdfFolder() + L"\\" + name;
    driver::MakeFolders(path.substr(0, path.find_last_of(L'\\')));
    driver::WriteFileBytes(driver::OfAnyLength(path), bytes);
    return path;
}

std::wstring InstalledProgram::MakePdfOfLength(std::size_t length, std::string_view bytes) const {
    // Two parts, for no single name may be that long.
    const std::wstring folder(100, L'd');
    const std::size_t others = PdfFolder().size() + 1 + folder.size() + 1 + 4;
    const auto path = MakePdf(folder + L"\\" + std::wstring(length - others, L'n') + L".pdf", bytes);
    EXPECT_EQ(path.size(), length);
    return path;
}

std::wstring DjvuBeside(const std::wstring& pdf) {
    return pdf.substr(0, pdf.size() - 4) + L".djvu";
}
