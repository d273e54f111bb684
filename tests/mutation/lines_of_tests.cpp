// Writes down which code each test runs, for scripts/mutate. Part of the test programs in a build of its own,
// in which every block of code begins with a call of __sanitizer_cov_trace_pc. Any thread calls it.
//
// The record is a file in memory, so that a test which ends the process in its middle leaves what it ran so
// far. Nothing is asked of the system after the start: tests replace the calls that this would make.

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace {

struct Block {
    std::uint32_t test;    // by its place among the names, from 1; 0 outside any
    std::uint32_t offset;  // in the program, of the code behind the call
};

constexpr std::uint32_t kMostBlocks = 0x2000000;

// tests/mutation/lines.py reads this.
struct Record {
    std::uint32_t blocks;
    std::uint32_t namesLength;
    char names[0xFFFF8];  // each ends with a line feed
    Block block[kMostBlocks];
};

constexpr std::uintptr_t kLongestProgram = 0x2000000;
std::uint16_t lastTest[kLongestProgram];  // that ran the code at this offset, plus 1

Record* CreateRecord() {
    wchar_t folder[MAX_PATH] = {};
    const DWORD length = ::GetEnvironmentVariableW(L"TALVENOR_LINES_FOLDER", folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return nullptr;
    // The system gives the id of a process that ended to another.
    const std::wstring path = std::wstring(folder) + L"\\" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                              std::to_wstring(::GetTickCount64()) + L".lines";
    const HANDLE file =
        ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    const HANDLE mapping =
        ::CreateFileMappingW(file, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(sizeof(Record)), nullptr);
    return static_cast<Record*>(
        ::MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0));  // as long as the process lives
}

// Written before main, and by the thread that runs the tests.
std::uintptr_t programStart;
Record* record;
std::uint32_t runningTest;

class TestNames : public testing::EmptyTestEventListener {
public:
    TestNames() {
        programStart = reinterpret_cast<std::uintptr_t>(::GetModuleHandleW(nullptr));
        __atomic_store_n(&record, CreateRecord(), __ATOMIC_RELEASE);
    }

    void OnTestStart(const testing::TestInfo& test) override {
        Record* const to = record;
        if (!to) return;
        const std::string line = std::string(test.test_suite_name()) + "." + test.name() + "\n";
        if (to->namesLength + line.size() > sizeof to->names) return;
        std::memcpy(to->names + to->namesLength, line.data(), line.size());
        to->namesLength += static_cast<std::uint32_t>(line.size());
        __atomic_store_n(&runningTest, ++m_tests, __ATOMIC_RELAXED);
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        __atomic_store_n(&runningTest, 0u, __ATOMIC_RELAXED);
    }

private:
    std::uint32_t m_tests = 0;
};

const bool listens = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new TestNames);
    return true;
}();

}  // namespace

// Calls no function: nearly every one would call this.
extern "C" void __sanitizer_cov_trace_pc() {
    Record* const to = __atomic_load_n(&record, __ATOMIC_ACQUIRE);
    if (!to) return;
    const std::uintptr_t offset =
        reinterpret_cast<std::uintptr_t>(__builtin_return_address(0)) - programStart;
    const std::uint32_t test = __atomic_load_n(&runningTest, __ATOMIC_RELAXED);
    // Two threads at a time write it down twice, which does no harm.
    if (offset >= kLongestProgram || lastTest[offset] == test + 1) return;
    lastTest[offset] = static_cast<std::uint16_t>(test + 1);
    const std::uint32_t place = __atomic_fetch_add(&to->blocks, 1, __ATOMIC_RELAXED);
    if (place < kMostBlocks) to->block[place] = {test, static_cast<std::uint32_t>(offset)};
}
