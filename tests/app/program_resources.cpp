#include "tests/app/program_resources.h"

#include <algorithm>
#include <cstring>

#include "tests/equipment/failure.h"

namespace {

BOOL CALLBACK CollectId(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR ids) {
    const int id = IS_INTRESOURCE(name) ? static_cast<int>(reinterpret_cast<ULONG_PTR>(name)) : -1;
    reinterpret_cast<std::vector<int>*>(ids)->push_back(id);
    return TRUE;
}

BOOL CALLBACK CollectLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR languages) {
    reinterpret_cast<std::vector<WORD>*>(languages)->push_back(language);
    return TRUE;
}

}  // namespace

ProgramResources::ProgramResources(const std::wstring& path)
    : m_module(::LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {
    if (!m_module) driver::FailCall("LoadLibraryExW", ::GetLastError());
}

ProgramResources::~ProgramResources() {
    ::FreeLibrary(m_module);
}

std::vector<int> ProgramResources::Ids(const wchar_t* type) const {
    std::vector<int> ids;
    ::EnumResourceNamesW(m_module, type, CollectId, reinterpret_cast<LONG_PTR>(&ids));
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::vector<WORD> ProgramResources::Languages(const wchar_t* type, int id) const {
    std::vector<WORD> languages;
    ::EnumResourceLanguagesW(m_module, type, MAKEINTRESOURCEW(id), CollectLanguage,
                             reinterpret_cast<LONG_PTR>(&languages));
    return languages;
}

std::string_view ProgramResources::Bytes(const wchar_t* type, int id) const {
    const HRSRC place = ::FindResourceW(m_module, MAKEINTRESOURCEW(id), type);
    if (!place) driver::FailCall("FindResourceW(" + std::to_string(id) + ")", ::GetLastError());
    const HGLOBAL handle = ::LoadResource(m_module, place);
    if (!handle) driver::FailCall("LoadResource", ::GetLastError());
    return {static_cast<const char*>(::LockResource(handle)), ::SizeofResource(m_module, place)};
}

void ByteReader::Copy(void* target, std::size_t bytes) {
    if (m_position + bytes > m_bytes.size()) throw driver::Failure("the resource ends too early");
    std::memcpy(target, m_bytes.data() + m_position, bytes);
    m_position += bytes;
}

std::wstring ByteReader::TakeText(std::size_t length) {
    std::wstring text(length, L'\0');
    Copy(text.data(), length * sizeof(wchar_t));
    return text;
}

std::wstring ByteReader::TakeTerminatedText() {
    std::wstring text;
    while (const auto unit = Take<wchar_t>()) text += unit;
    return text;
}
