#include "tests/equipment/stand_in_settings.h"

#include <cwchar>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace stand_in {

std::wstring Setting(const wchar_t* name) {
    const DWORD size = ::GetEnvironmentVariableW(name, nullptr, 0);
    if (size == 0) return std::wstring();
    std::wstring value(size, L'\0');
    value.resize(::GetEnvironmentVariableW(name, value.data(), size));
    return value;
}

DWORD NumberSetting(const wchar_t* name, DWORD whenNotSet) {
    const std::wstring value = Setting(name);
    return value.empty() ? whenNotSet : static_cast<DWORD>(std::wcstoul(value.c_str(), nullptr, 10));
}

DWORD NumberInName(const std::wstring& name, const std::wstring& word, DWORD whenNotNamed) {
    for (std::size_t at = name.find(word); at != std::wstring::npos; at = name.find(word, at + 1)) {
        const wchar_t* const digits = name.c_str() + at + word.size();
        if (*digits >= L'0' && *digits <= L'9') return static_cast<DWORD>(std::wcstoul(digits, nullptr, 10));
    }
    return whenNotNamed;
}

bool AppendRecord(const wchar_t* variable, const std::wstring& record) {
    const std::wstring path = Setting(variable);
    if (path.empty()) return true;
    try {
        driver::AppendFileBytes(path, driver::ToUtf8(record));
    } catch (const driver::Failure&) {
        return false;
    }
    return true;
}

std::wstring DescribeStart() {
    std::wstring directory(::GetCurrentDirectoryW(0, nullptr), L'\0');
    directory.resize(::GetCurrentDirectoryW(static_cast<DWORD>(directory.size()), directory.data()));
    return std::wstring(L"command=") + ::GetCommandLineW() + L"\ndirectory=" + directory + L'\n';
}

}  // namespace stand_in
