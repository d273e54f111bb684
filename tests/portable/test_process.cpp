#include "tests/portable/test_process.h"

#include <filesystem>

#include "tests/equipment/failure.h"
#include "tests/equipment/process_start.h"
#include "tests/equipment/text.h"
#include "tests/portable/interruption.h"

namespace {

// What has been ended takes a moment to be gone.
constexpr driver::Milliseconds kGoneLimit{10'000};

// For a process of ours to read or write.
driver::UniqueHandle OpenInherited(const std::wstring& path, DWORD access, DWORD disposition, DWORD flags) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = ::CreateFileW(path.c_str(), access, kShare, &inherited, disposition, flags, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        driver::FailCall("CreateFileW(" + driver::ToUtf8(path) + ")", error);
    }
    return driver::UniqueHandle(file);
}

// A file of the temporary folder, which is gone when it is closed.
driver::UniqueHandle CreateOutput() {
    return OpenInherited(std::filesystem::temp_directory_path() / "output", GENERIC_READ | GENERIC_WRITE,
                         CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE);
}

std::string ReadAll(HANDLE file) {
    std::string bytes(::GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    ::SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    if (!::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        driver::FailCall("ReadFile", ::GetLastError());
    bytes.resize(read);
    return bytes;
}

driver::ProcessTree Start(const std::wstring& program, const std::vector<std::string>& arguments,
                          HANDLE output) {
    const driver::UniqueHandle input = OpenInherited(L"NUL", GENERIC_READ, OPEN_EXISTING, 0);
    // The arguments are names and options of ours: none has a quotation mark in it or ends in a backslash.
    std::wstring line = L'"' + program + L'"';
    for (const std::string& argument : arguments) line += L" \"" + driver::FromUtf8(argument) + L'"';
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.Get();
    startup.hStdOutput = output;
    startup.hStdError = output;
    return driver::StartProcessTree(driver::ToUtf8(program), [&](PROCESS_INFORMATION* started) {
        return ::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED,
                                nullptr, nullptr, &startup, started);
    });
}

}  // namespace

ProcessEnd RunProcess(const std::wstring& program, const std::vector<std::string>& arguments,
                      driver::Milliseconds limit) {
    const driver::UniqueHandle output = CreateOutput();
    const driver::ProcessTree tree = Start(program, arguments, output.Get());
    const auto isOver = [&] { return ::WaitForSingleObject(tree.process.Get(), 0) == WAIT_OBJECT_0; };
    const auto allGone = [&] { return tree.Running() == 0; };
    ProcessEnd end;
    if (driver::WaitUntil([&] { return isOver() || Interruption::HasCome(); }, limit) && isOver()) {
        DWORD code = 0;
        if (!::GetExitCodeProcess(tree.process.Get(), &code))
            driver::FailCall("GetExitCodeProcess", ::GetLastError());
        end.code = code;
        if (!driver::WaitUntil(allGone, kGoneLimit)) end.leftRunning = tree.Running();
    }
    tree.End();
    if (!driver::WaitUntil(allGone, kGoneLimit))
        throw driver::Failure("a process of the tests cannot be ended");
    end.output = ReadAll(output.Get());
    return end;
}
