// Talvenor.exe as a person has it: in a folder of its own with a converter beside it, and a second folder
// with PDF files. Both live in the system's temporary folder for the life of this object.
#pragma once
#include <string>
#include <string_view>

enum class Converter { None, StandIn, Real };

// A file that the build made. The test program finds it by its own place in the build folder.
std::wstring Equipment(const wchar_t* name);

// The document that a PDF is converted to unless another folder is chosen.
std::wstring DjvuBeside(const std::wstring& pdf);

class InstalledProgram {
public:
    // `folderName` is the program folder's own name, so that a test may choose an odd one.
    explicit InstalledProgram(Converter converter, const wchar_t* folderName = L"Programme");
    // Removes everything. A file that stays behind fails the test: then something of it still runs.
    ~InstalledProgram();
    InstalledProgram(const InstalledProgram&) = delete;
    InstalledProgram& operator=(const InstalledProgram&) = delete;

    [[nodiscard]] std::wstring Folder() const { return m_root + L"\\" + m_folderName; }
    [[nodiscard]] std::wstring Program() const { return Folder() + L"\\Talvenor.exe"; }
    [[nodiscard]] std::wstring ConverterPath() const { return Folder() + L"\\pdf2djvu.exe"; }
    [[nodiscard]] std::wstring Log() const { return Folder() + L"\\TalvenorLog.txt"; }
    [[nodiscard]] std::wstring PdfFolder() const { return m_root + L"\\PDF"; }

    // What the stand-ins write down goes here (see RecordedRun).
    [[nodiscard]] std::wstring Record() const { return m_root + L"\\runs.txt"; }

    // Makes a folder below the common one and returns its path.
    [[nodiscard]] std::wstring MakeFolder(const std::wstring& name) const;
    // Makes a file among the PDFs and returns its path. The stand-ins do not look into it.
    [[nodiscard]] std::wstring MakePdf(const std::wstring& name, std::string_view bytes = "%PDF-1.4") const;
    // The same for one whose whole path has this length, at least 250.
    [[nodiscard]] std::wstring MakePdfOfLength(std::size_t length, std::string_view bytes = "%PDF-1.4") const;

private:
    std::wstring m_root;
    std::wstring m_folderName;
};
