// Talvenor.exe as a person has it, in a temporary folder with a converter beside it, for the life of this
// object.
#pragma once

#include <string>
#include <vector>

// A program that the build made for the benchmarks.
[[nodiscard]] std::wstring BuiltProgram(const wchar_t* name);

// The programs that are built elsewhere.
[[nodiscard]] std::wstring Talvenor();
[[nodiscard]] std::wstring StandInConverter();

class Installation {
public:
    // Throws driver::Failure. `converter` becomes pdf2djvu.exe.
    explicit Installation(const std::wstring& converter = BuiltProgram(L"pdf2djvu.exe"));
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    [[nodiscard]] const std::wstring& Folder() const noexcept { return m_folder; }
    [[nodiscard]] std::wstring Program() const { return File(L"Talvenor.exe"); }
    [[nodiscard]] std::wstring File(const wchar_t* name) const { return m_folder + L'\\' + name; }

    // Adds a program of the benchmarks and gives its path.
    [[nodiscard]] std::wstring Add(const wchar_t* builtProgram) const;

private:
    const std::wstring m_folder;
};

// Paths such as a shelf of documents has. The files need not be there: nothing looks before the converter
// does.
[[nodiscard]] std::vector<std::wstring> PdfPaths(int count);
