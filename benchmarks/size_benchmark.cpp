// How large the program is, with its icons and without, against what the C run-time alone takes.

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/result.h"

#include "tests/equipment/failure.h"

#include <windows.h>

#include <filesystem>

namespace {

constexpr double kWithIcons = 220 * 1024;
constexpr double kWithoutIcons = 64 * 1024;

BOOL CALLBACK AddSize(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR sum) {
    const HRSRC found = ::FindResourceW(module, name, type);
    *reinterpret_cast<double*>(sum) += ::SizeofResource(module, found);
    return TRUE;
}

// Bytes of all pictures and of their directories.
double IconBytes(const std::wstring& program) {
    const HMODULE module =
        ::LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    if (!module) driver::FailCall("LoadLibraryExW", ::GetLastError());
    double bytes = 0;
    for (const auto type : {RT_ICON, RT_GROUP_ICON}) {
        if (!::EnumResourceNamesW(module, type, &AddSize, reinterpret_cast<LONG_PTR>(&bytes)))
            driver::FailCall("EnumResourceNamesW", ::GetLastError());
    }
    ::FreeLibrary(module);
    return bytes;
}

void Tell(const char* what, double bytes, double runTime, double goal) {
    const auto kilobytes = [](double value) { return WithUnit(value / 1024, "KB"); };
    Print({.what = what,
           .limit = "a program that is the C run-time alone",
           .talvenor = kilobytes(bytes),
           .bare = kilobytes(runTime),
           .ratio = Times(bytes / runTime),
           .goal = "≤ " + WithUnit(goal / 1024, "KB", 0),
           .met = bytes <= goal});
}

void Benchmark(const Arguments&) {
    const auto size = [](const std::wstring& path) {
        return static_cast<double>(std::filesystem::file_size(path));
    };
    const double whole = size(Talvenor());
    const double runTime = size(BuiltProgram(L"bare_run_time.exe"));
    Tell("size of the exe without its icons", whole - IconBytes(Talvenor()), runTime, kWithoutIcons);
    Tell("size of the exe with its icons", whole, runTime, kWithIcons);
}

}  // namespace

int main(int argc, char** argv) {
    return RunBenchmark(argc, argv, &Benchmark);
}
