#include "tests/app/pe_file.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"

namespace {

const IMAGE_DOS_HEADER& DosHeader(const std::string& bytes) {
    return *reinterpret_cast<const IMAGE_DOS_HEADER*>(bytes.data());
}

bool IsProgram(const std::string& bytes) {
    if (bytes.size() < sizeof(IMAGE_DOS_HEADER) || DosHeader(bytes).e_magic != IMAGE_DOS_SIGNATURE)
        return false;
    const auto offset = static_cast<std::size_t>(DosHeader(bytes).e_lfanew);
    if (offset + sizeof(IMAGE_NT_HEADERS64) > bytes.size()) return false;
    const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS64*>(bytes.data() + offset);
    return headers.Signature == IMAGE_NT_SIGNATURE &&
           headers.OptionalHeader.Magic == IMAGE_NT_OPTIONAL_HDR64_MAGIC;
}

}  // namespace

PeFile::PeFile(const std::wstring& path) : m_bytes(driver::ReadFileBytes(path)) {
    if (!IsProgram(m_bytes)) throw driver::Failure(L"not a 64-bit program: " + path);
}

const IMAGE_NT_HEADERS64& PeFile::Headers() const noexcept {
    return *reinterpret_cast<const IMAGE_NT_HEADERS64*>(m_bytes.data() + DosHeader(m_bytes).e_lfanew);
}

std::vector<IMAGE_SECTION_HEADER> PeFile::Sections() const {
    const IMAGE_SECTION_HEADER* const first = IMAGE_FIRST_SECTION(&Headers());
    return {first, first + FileHeader().NumberOfSections};
}

const char* PeFile::At(DWORD relativeAddress) const {
    for (const IMAGE_SECTION_HEADER& section : Sections()) {
        if (relativeAddress < section.VirtualAddress) continue;
        const DWORD offset = relativeAddress - section.VirtualAddress;
        if (offset < section.SizeOfRawData) return m_bytes.data() + section.PointerToRawData + offset;
    }
    throw driver::Failure("no section holds address " + std::to_string(relativeAddress));
}

std::vector<std::string> PeFile::ImportedLibraries() const {
    std::vector<std::string> names;
    auto* entry = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
        At(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress));
    for (; entry->Name != 0; ++entry) names.emplace_back(At(entry->Name));
    return names;
}
