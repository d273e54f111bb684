#include "tests/faults/harness/import_thunks.h"

#include "tests/faults/harness/program_host.h"

#include <windows.h>

#include <cstdint>
#include <map>
#include <new>
#include <stdexcept>

namespace {

constexpr std::size_t kMostThunks = 1000;

struct Thunk {
    std::string name;
    void* target = nullptr;
    void* code = nullptr;
};

// Saves the four arguments in registers where the others are, asks `enter` where to go, and goes there with
// all arguments as they were.
#pragma pack(push, 1)
struct Code {
    std::uint8_t save[6] = {0x41, 0x51, 0x41, 0x50, 0x52, 0x51};  // push r9; push r8; push rdx; push rcx
    std::uint8_t passRegisters[3] = {0x48, 0x89, 0xE2};           // mov rdx, rsp
    std::uint8_t passThunk[2] = {0x48, 0xB9};                     // mov rcx, thunk
    const void* thunk;
    std::uint8_t reserve[4] = {0x48, 0x83, 0xEC, 0x28};  // sub rsp, 40
    std::uint8_t load[2] = {0x48, 0xB8};                 // mov rax, enter
    const void* enter;
    std::uint8_t call[2] = {0xFF, 0xD0};                             // call rax
    std::uint8_t release[4] = {0x48, 0x83, 0xC4, 0x28};              // add rsp, 40
    std::uint8_t restore[6] = {0x59, 0x5A, 0x41, 0x58, 0x41, 0x59};  // pop rcx; pop rdx; pop r8; pop r9
    std::uint8_t go[2] = {0xFF, 0xE0};                               // jmp rax
};
#pragma pack(pop)

void* Enter(const Thunk* thunk, SavedRegisters registers) {
    const DWORD error = ::GetLastError();
    void* const elsewhere = CurrentHost().watch.Route(thunk->name, registers);
    ::SetLastError(error);
    return elsewhere ? elsewhere : thunk->target;
}

// Memory that the processor may run.
Code* CodeMemory() {
    void* const memory =
        ::VirtualAlloc(nullptr, kMostThunks * sizeof(Code), MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
    if (!memory) throw std::runtime_error("no memory for thunks");
    return static_cast<Code*>(memory);
}

}  // namespace

void* WatchedCode(const std::string& name, void* target) {
    static std::map<std::string, Thunk> s_thunks;  // addresses must stay
    static Code* s_free = CodeMemory();
    Thunk& thunk = s_thunks[name];
    if (!thunk.code) {
        if (s_thunks.size() > kMostThunks) throw std::runtime_error("too many imports");
        thunk.name = name;
        thunk.code = new (s_free++) Code{.thunk = &thunk, .enter = reinterpret_cast<const void*>(&Enter)};
    }
    thunk.target = target;
    return thunk.code;
}
