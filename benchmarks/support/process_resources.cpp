#include "benchmarks/support/process_resources.h"

#include "tests/equipment/failure.h"

#include <winternl.h>

#include <vector>

namespace {

constexpr LONG kLengthMismatch = static_cast<LONG>(0xC0000004);
constexpr int kSystemHandleInformation = 16;

struct HandleEntry {
    ULONG processId;
    BYTE type;
    BYTE flags;
    USHORT handle;
    void* object;
    ULONG access;
};

struct HandleTable {
    ULONG count;
    HandleEntry entries[1];
};

// The system's table of graphic objects, and where the process environment block says that it is.
constexpr std::size_t kGdiTableOffset = 0xF8;
constexpr int kGdiEntries = 16384;
struct GdiEntry {
    void* object;
    ULONG owner;
    USHORT unique;
    BYTE type;  // 0: free
    BYTE flags;
    void* userData;
};
static_assert(sizeof(GdiEntry) == 24);

template <class Function>
Function* NtFunction(const char* name) {
    const FARPROC address = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), name);
    if (!address) throw driver::Failure(std::string("no ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

void ReadFrom(HANDLE process, const void* address, void* target, std::size_t bytes) {
    if (!::ReadProcessMemory(process, address, target, bytes, nullptr))
        driver::FailCall("ReadProcessMemory", ::GetLastError());
}

}  // namespace

int CountHandles(DWORD processId) {
    auto* const query = NtFunction<LONG WINAPI(int, void*, ULONG, ULONG*)>("NtQuerySystemInformation");
    std::vector<HandleEntry> memory(4096);
    ULONG needed = 0;
    const auto bytes = [&] { return static_cast<ULONG>(memory.size() * sizeof(HandleEntry)); };
    while (query(kSystemHandleInformation, memory.data(), bytes(), &needed) == kLengthMismatch) {
        memory.resize(memory.size() * 2);
    }
    const auto& table = *reinterpret_cast<const HandleTable*>(memory.data());
    int count = 0;
    for (ULONG i = 0; i < table.count; ++i) {
        if (table.entries[i].processId == processId) ++count;
    }
    return count;
}

int CountGdiObjects(HANDLE process) {
    auto* const query =
        NtFunction<LONG WINAPI(HANDLE, int, void*, ULONG, ULONG*)>("NtQueryInformationProcess");
    PROCESS_BASIC_INFORMATION information = {};
    if (query(process, ProcessBasicInformation, &information, sizeof information, nullptr) < 0)
        throw driver::Failure("NtQueryInformationProcess failed");
    const void* table = nullptr;
    const auto* const block = reinterpret_cast<const BYTE*>(information.PebBaseAddress);
    ReadFrom(process, block + kGdiTableOffset, &table, sizeof table);
    std::vector<GdiEntry> entries(kGdiEntries);
    ReadFrom(process, table, entries.data(), entries.size() * sizeof(GdiEntry));
    int count = 0;
    for (const GdiEntry& entry : entries) {
        if (entry.type != 0) ++count;
    }
    return count;
}
