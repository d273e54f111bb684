// Whole small files, for tests and tools. What reads or writes throws driver::Failure when it cannot.
#pragma once
#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "base/unique_resource.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"
#include "tests/equipment/wait_until.h"

namespace driver {

// Others may do with the file what they like.
inline UniqueHandle OpenShared(const std::wstring& path, DWORD access, DWORD disposition, DWORD flags = 0) {
    constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = ::CreateFileW(path.c_str(), access, kShare, nullptr, disposition, flags, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        FailCall("CreateFileW(" + ToUtf8(path) + ")", error);
    }
    return UniqueHandle(file);
}

inline void WriteBytes(const std::wstring& path, DWORD access, DWORD disposition, std::string_view bytes) {
    const UniqueHandle file = OpenShared(path, access, disposition);
    DWORD written = 0;
    const BOOL done =
        ::WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    if (!done || written != bytes.size()) FailCall("WriteFile(" + ToUtf8(path) + ")", ::GetLastError());
}

// In place of what was there.
inline void WriteFileBytes(const std::wstring& path, std::string_view bytes) {
    WriteBytes(path, GENERIC_WRITE, CREATE_ALWAYS, bytes);
}

// In one write: others may append too.
inline void AppendFileBytes(const std::wstring& path, std::string_view bytes) {
    WriteBytes(path, FILE_APPEND_DATA, OPEN_ALWAYS, bytes);
}

inline std::string ReadFileBytes(const std::wstring& path) {
    const UniqueHandle file = OpenShared(path, GENERIC_READ, OPEN_EXISTING);
    std::string bytes(::GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    if (!::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        FailCall("ReadFile(" + ToUtf8(path) + ")", ::GetLastError());
    bytes.resize(read);
    return bytes;
}

inline bool FileExists(const std::wstring& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// The program that runs this.
inline std::filesystem::path OwnPath() {
    std::wstring path(32'768, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

// A file or a folder with all that is in it. False when it is still there after a while: a process that was
// ended keeps its files for a moment.
inline bool RemoveAll(const std::filesystem::path& path) {
    return WaitUntil([&] {
        std::error_code error;
        std::filesystem::remove_all(path, error);
        return !error;
    });
}

}  // namespace driver
