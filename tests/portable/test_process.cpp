#include "tests/portable/test_process.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/process_start.h"
#include "tests/equipment/text.h"
#include "tests/portable/interruption.h"

namespace {

// What has been ended takes a moment to be gone.
constexpr driver::Milliseconds kGoneLimit{10'000};

SECURITY_ATTRIBUTES Inherited() {
    return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
}

driver::UniqueHandle OpenNothing() {
    SECURITY_ATTRIBUTES inherited = Inherited();
    const HANDLE file = ::CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                      OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) driver::FailCall("CreateFileW(NUL)", ::GetLastError());
    return driver::UniqueHandle(file);
}

// What is written into it can be read when there is time.
struct Pipe {
    Pipe() {
        SECURITY_ATTRIBUTES inherited = Inherited();
        HANDLE readEnd = nullptr;
        HANDLE writeEnd = nullptr;
        if (!::CreatePipe(&readEnd, &writeEnd, &inherited, 0))
            driver::FailCall("CreatePipe", ::GetLastError());
        ours = driver::UniqueHandle(readEnd);
        theirs = driver::UniqueHandle(writeEnd);
        if (!::SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0))
            driver::FailCall("SetHandleInformation", ::GetLastError());
    }
    void ReadInto(std::string& text) const {
        DWORD waiting = 0;
        while (::PeekNamedPipe(ours.Get(), nullptr, 0, nullptr, &waiting, nullptr) && waiting != 0) {
            std::string bytes(waiting, '\0');
            DWORD read = 0;
            if (!::ReadFile(ours.Get(), bytes.data(), waiting, &read, nullptr)) return;
            text.append(bytes, 0, read);
        }
    }

    driver::UniqueHandle ours;
    driver::UniqueHandle theirs;
};

driver::ProcessTree Start(const std::wstring& program, const std::vector<std::string>& arguments,
                          HANDLE output) {
    const driver::UniqueHandle input = OpenNothing();
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
    const Pipe pipe;
    const driver::ProcessTree tree = Start(program, arguments, pipe.theirs.Get());
    ProcessEnd end;
    // The process decides when it is over and not the pipe, which something left behind may hold open.
    bool over = false;
    static_cast<void>(driver::WaitUntil(
        [&] {
            over = ::WaitForSingleObject(tree.process.Get(), 0) == WAIT_OBJECT_0;
            pipe.ReadInto(end.output);
            return over || IsInterrupted();
        },
        limit));
    const auto allGone = [&] { return tree.Running() == 0; };
    if (over) {
        DWORD code = 0;
        if (!::GetExitCodeProcess(tree.process.Get(), &code))
            driver::FailCall("GetExitCodeProcess", ::GetLastError());
        end.code = code;
        if (!driver::WaitUntil(allGone, kGoneLimit)) end.leftRunning = tree.Running();
    }
    tree.End();
    if (!driver::WaitUntil(allGone, kGoneLimit))
        throw driver::Failure("a process of the tests cannot be ended");
    return end;
}
