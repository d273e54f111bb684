// The headers of a 64-bit Windows program, read from its file as a loader sees them.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

class PeFile {
public:
    // Throws driver::Failure when the file is no 64-bit Windows program.
    explicit PeFile(const std::wstring& path);

    [[nodiscard]] const IMAGE_FILE_HEADER& FileHeader() const noexcept { return Headers().FileHeader; }
    [[nodiscard]] const IMAGE_OPTIONAL_HEADER64& OptionalHeader() const noexcept {
        return Headers().OptionalHeader;
    }
    [[nodiscard]] const IMAGE_DATA_DIRECTORY& Directory(int index) const noexcept {
        return OptionalHeader().DataDirectory[index];
    }
    [[nodiscard]] std::vector<IMAGE_SECTION_HEADER> Sections() const;
    // The libraries whose functions the loader must find before the program starts.
    [[nodiscard]] std::vector<std::string> ImportedLibraries() const;
    [[nodiscard]] std::size_t Size() const noexcept { return m_bytes.size(); }

private:
    [[nodiscard]] const IMAGE_NT_HEADERS64& Headers() const noexcept;
    // What lies at an address relative to the loaded image.
    [[nodiscard]] const char* At(DWORD relativeAddress) const;

    std::string m_bytes;
};
