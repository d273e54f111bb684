#include "tests/equipment/file_bytes.h"

#include <windows.h>

#include "tests/equipment/failure.h"
#include "tests/equipment/handle.h"
#include "tests/equipment/text.h"

namespace driver {
namespace {

UniqueHandle Open(const std::wstring& path, DWORD access, DWORD disposition) {
    constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = ::CreateFileW(path.c_str(), access, kShare, nullptr, disposition, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        FailCall("CreateFileW(" + ToUtf8(path) + ")", error);
    }
    return UniqueHandle(file);
}

void Write(const std::wstring& path, DWORD access, DWORD disposition, std::string_view bytes) {
    const UniqueHandle file = Open(path, access, disposition);
    DWORD written = 0;
    const BOOL done =
        ::WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    if (!done || written != bytes.size()) FailCall("WriteFile(" + ToUtf8(path) + ")", ::GetLastError());
}

}  // namespace

bool FileExists(const std::wstring& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string ReadFileBytes(const std::wstring& path) {
    const UniqueHandle file = Open(path, GENERIC_READ, OPEN_EXISTING);
    std::string bytes(::GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    if (!::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        FailCall("ReadFile(" + ToUtf8(path) + ")", ::GetLastError());
    bytes.resize(read);
    return bytes;
}

void WriteFileBytes(const std::wstring& path, std::string_view bytes) {
    Write(path, GENERIC_WRITE, CREATE_ALWAYS, bytes);
}

void AppendFileBytes(const std::wstring& path, std::string_view bytes) {
    Write(path, FILE_APPEND_DATA, OPEN_ALWAYS, bytes);
}

}  // namespace driver
