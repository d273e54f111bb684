#include "benchmarks/support/installation.h"

#include "tests/equipment/failure.h"

#include <windows.h>

#include <filesystem>

namespace {

std::wstring OwnFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path().wstring();
}

// Absolute and without dots: the kernel lists a process by the path that it was started with.
std::wstring Built(const std::wstring& relativePath) {
    return std::filesystem::path(OwnFolder() + L'\\' + relativePath).lexically_normal().wstring();
}

// Over what a benchmark that was killed left in a folder of the same process number.
void Copy(const std::wstring& from, const std::wstring& to) {
    if (!::CopyFileW(from.c_str(), to.c_str(), FALSE)) driver::FailCall("CopyFileW", ::GetLastError());
}

std::wstring MakeFolder() {
    static int count = 0;
    const auto folder =
        std::filesystem::temp_directory_path() /
        (L"talvenor-bench-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++count));
    std::filesystem::create_directories(folder);
    return folder.wstring();
}

}  // namespace

std::wstring BuiltProgram(const wchar_t* name) {
    return Built(name);
}

std::wstring Talvenor() {
    return Built(L"" TALVENOR_PROGRAM);
}

std::wstring StandInConverter() {
    return Built(L"" TALVENOR_EQUIPMENT "\\stand_in_converter.exe");
}

Installation::Installation(const std::wstring& converter) : m_folder(MakeFolder()) {
    Copy(Talvenor(), Program());
    Copy(converter, File(L"pdf2djvu.exe"));
}

Installation::~Installation() {
    std::error_code ignored;  // a process that was just ended may keep its file for a moment
    std::filesystem::remove_all(m_folder, ignored);
}

std::wstring Installation::Add(const wchar_t* builtProgram) const {
    Copy(BuiltProgram(builtProgram), File(builtProgram));
    return File(builtProgram);
}

std::vector<std::wstring> PdfPaths(int count) {
    std::vector<std::wstring> paths;
    for (int i = 0; i < count; ++i) {
        const std::wstring number = std::to_wstring(100'000 + i).substr(1);
        paths.push_back(L"C:\\Users\\Marie\\Documents\\Rayon " + number.substr(0, 2) + L"\\Document " +
                        number + L".pdf");
    }
    return paths;
}
