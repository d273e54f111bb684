#include "tests/portable/temporary_place.h"

#include <windows.h>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_tree.h"
#include "tests/equipment/wait_until.h"

namespace {

// A process that was ended keeps its files for a moment.
constexpr driver::Milliseconds kReleaseLimit{10'000};

std::wstring SystemsOwn() {
    wchar_t path[MAX_PATH + 1] = {};
    if (!::GetTempPathW(MAX_PATH + 1, path)) driver::FailCall("GetTempPathW", ::GetLastError());
    return path;
}

}  // namespace

TemporaryPlace::TemporaryPlace()
    : m_path(SystemsOwn() + L"talvenor-tests-" + std::to_wstring(::GetCurrentProcessId())) {
    driver::MakeFolders(m_path);
    // What we start has them from us.
    ::SetEnvironmentVariableW(L"TMP", m_path.c_str());
    ::SetEnvironmentVariableW(L"TEMP", m_path.c_str());
}

TemporaryPlace::~TemporaryPlace() {
    static_cast<void>(driver::WaitUntil([&] { return driver::RemoveTree(m_path); }, kReleaseLimit));
}

std::vector<std::wstring> TemporaryPlace::TakeLeftovers() const {
    std::vector<std::wstring> names = driver::NamesIn(m_path);
    for (const std::wstring& name : names) {
        const std::wstring path = m_path + L'\\' + name;
        static_cast<void>(driver::WaitUntil([&] { return driver::RemoveTree(path); }, kReleaseLimit));
    }
    return names;
}
