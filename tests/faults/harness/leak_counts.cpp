#include "tests/faults/harness/leak_counts.h"

#include "tests/equipment/window_driver.h"
#include "tests/equipment/wine.h"

#include <windows.h>
#include <winternl.h>

#include <algorithm>
#include <vector>

namespace {

// One handle in the system's table of all handles.
struct SystemHandle {
    ULONG processId;
    BYTE type;
    BYTE flags;
    USHORT value;
    PVOID object;
    ULONG access;
};
struct SystemHandleTable {
    ULONG count;
    SystemHandle handles[1];
};

constexpr auto kSystemHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
constexpr LONG kTooSmall = static_cast<LONG>(0xC0000004);  // STATUS_INFO_LENGTH_MISMATCH

// One object in the table of graphics objects, which under Wine is the process's own.
struct GdiEntry {
    BYTE unused[14];
    BYTE type;
    BYTE more[9];
};
constexpr BYTE kNotCounted[] = {0, 1, 4, 10};  // free; drawing contexts, regions, fonts
constexpr int kGdiEntries = 16384;
constexpr std::size_t kGdiTableInProcessBlock = 0xF8;

// With its children and theirs; none when it is another process's.
int CountOwn(HWND window) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner != ::GetCurrentProcessId()) return 0;
    int count = 1;
    const auto countChild = [](HWND, LPARAM counted) -> BOOL {
        ++*reinterpret_cast<int*>(counted);
        return TRUE;
    };
    ::EnumChildWindows(window, countChild, reinterpret_cast<LPARAM>(&count));
    return count;
}

int CountHandles() {
    if (!UnderWine()) {
        DWORD count = 0;
        ::GetProcessHandleCount(::GetCurrentProcess(), &count);
        return static_cast<int>(count);
    }
    std::vector<char> buffer(std::size_t{1} << 16);
    ULONG needed = 0;
    while (::NtQuerySystemInformation(kSystemHandleInformation, buffer.data(),
                                      static_cast<ULONG>(buffer.size()), &needed) == kTooSmall) {
        buffer.resize(buffer.size() * 2);
    }
    const auto* const table = reinterpret_cast<const SystemHandleTable*>(buffer.data());
    const auto isOwn = [](const SystemHandle& one) { return one.processId == ::GetCurrentProcessId(); };
    return static_cast<int>(std::count_if(table->handles, table->handles + table->count, isOwn));
}

int CountGdiObjects() {
    if (!UnderWine()) return static_cast<int>(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS));
    static_assert(sizeof(GdiEntry) == 24);
    const auto* const block = reinterpret_cast<const BYTE*>(::NtCurrentTeb()->ProcessEnvironmentBlock);
    const auto* const table = *reinterpret_cast<const GdiEntry* const*>(block + kGdiTableInProcessBlock);
    if (!table) return 0;
    const auto counts = [](const GdiEntry& one) {
        return std::ranges::find(kNotCounted, one.type) == std::end(kNotCounted);
    };
    return static_cast<int>(std::count_if(table, table + kGdiEntries, counts));
}

int CountWindows() {
    int count = 0;
    for (const HWND window : driver::TopLevelWindows()) count += CountOwn(window);
    // Those that only take messages are among no others.
    for (HWND window = nullptr;
         (window = ::FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;) {
        count += CountOwn(window);
    }
    return count;
}

}  // namespace

Counts HeldOfTheSystem() {
    return {{"handles", CountHandles()}, {"gdi", CountGdiObjects()}, {"windows", CountWindows()}};
}

std::size_t PrivateBytes() {
    std::size_t bytes = 0;
    MEMORY_BASIC_INFORMATION region = {};
    const BYTE* address = nullptr;
    while (::VirtualQuery(address, &region, sizeof region) == sizeof region) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
        address = static_cast<const BYTE*>(region.BaseAddress) + region.RegionSize;
    }
    return bytes;
}
