// Talvenor.exe as a person has it: in a folder of its own with a converter beside it, and a second folder
// with PDF files. Both live in the system's temporary folder for the life of this object. The program's has a
// name that a command line or a code page could trip over.
#pragma once
#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/support/temporary_folder.h"

enum class Converter { None, StandIn, Real };

// By its place in the build folder, relative to the test program.
inline std::wstring Built(const std::wstring& place) {
    return (driver::OwnPath().parent_path() / place).lexically_normal().make_preferred().wstring();
}

// A file that the build made for tests.
inline std::wstring Equipment(const std::wstring& name) {
    return Built(L"" TALVENOR_EQUIPMENT "/" + name);
}

// The document that a PDF is converted to unless another folder is chosen.
inline std::wstring DjvuBeside(const std::wstring& pdf) {
    return pdf.substr(0, pdf.size() - 4) + L".djvu";
}

class InstalledProgram {
public:
    explicit InstalledProgram(Converter converter) {
        std::filesystem::create_directories(Folder());
        std::filesystem::create_directories(PdfFolder());
        std::filesystem::copy_file(Built(L"" TALVENOR_PROGRAM), Program());
        if (converter == Converter::StandIn)
            std::filesystem::copy_file(Equipment(L"stand_in_converter.exe"), ConverterPath());
        if (converter == Converter::Real)
            std::filesystem::copy_file(Equipment(L"pdf2djvu.exe"), ConverterPath());
    }
    // Removes everything. A file that stays behind fails the test: then something of it still runs.
    ~InstalledProgram() {
        EXPECT_TRUE(driver::RemoveAll(m_root)) << "the test left files behind, and they cannot be removed";
    }
    InstalledProgram(const InstalledProgram&) = delete;
    InstalledProgram& operator=(const InstalledProgram&) = delete;

    [[nodiscard]] std::wstring Folder() const { return m_root + L"\\Outils & Cie (été) v1.2, №5 😀"; }
    [[nodiscard]] std::wstring Program() const { return Folder() + L"\\Talvenor.exe"; }
    [[nodiscard]] std::wstring ConverterPath() const { return Folder() + L"\\pdf2djvu.exe"; }
    [[nodiscard]] std::wstring Log() const { return Folder() + L"\\TalvenorLog.txt"; }
    [[nodiscard]] std::wstring PdfFolder() const { return m_root + L"\\PDF"; }

    // What the stand-ins write down goes here (see RecordedRun).
    [[nodiscard]] std::wstring Record() const { return m_root + L"\\runs.txt"; }

    // Makes a folder below the common one and returns its path.
    std::wstring MakeFolder(const std::wstring& name) const {
        const std::wstring path = m_root + L"\\" + name;
        std::filesystem::create_directories(path);
        return path;
    }
    // Makes a file among the PDFs and returns its path. The stand-ins do not look into it.
    std::wstring MakePdf(const std::wstring& name, std::string_view bytes = "%PDF-1.4") const {
        const std::wstring path = PdfFolder() + L"\\" + name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        driver::WriteFileBytes(path, bytes);
        return path;
    }
    // The same for one whose whole path has this length, at least 250.
    std::wstring MakePdfOfLength(std::size_t length, std::string_view bytes = "%PDF-1.4") const {
        // Two parts, for no single name may be that long.
        const std::wstring folder(100, L'd');
        const std::size_t others = PdfFolder().size() + 1 + folder.size() + 1 + 4;
        const auto path = MakePdf(folder + L"\\" + std::wstring(length - others, L'n') + L".pdf", bytes);
        EXPECT_EQ(path.size(), length);
        return path;
    }

private:
    // Windows may name the temporary folder by a short form ("JEAN-P~1"), which the tests would not recognise
    // in what the program and its converter write.
    static std::wstring LongPath(const std::filesystem::path& folder) {
        wchar_t path[MAX_PATH] = {};
        if (!::GetLongPathNameW(folder.c_str(), path, MAX_PATH))
            driver::FailCall("GetLongPathNameW", ::GetLastError());
        return path;
    }

    const TemporaryFolder m_place;
    const std::wstring m_root = LongPath(m_place.Path());
};
