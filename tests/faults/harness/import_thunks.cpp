#include "tests/faults/harness/import_thunks.h"

#include "tests/support/replaced_imports.h"

#include <cstring>
#include <stdexcept>

namespace {

constexpr std::size_t kCodeBytes = 64 * 1024;
constexpr std::size_t kThunkBytes = 64;

// Saves the four arguments in registers where the others lie, asks `Enter` where to go, and goes there with
// all arguments as they were.
class CodeWriter {
public:
    explicit CodeWriter(std::uint8_t* to) noexcept : m_to(to) {}

    void Bytes(std::initializer_list<std::uint8_t> bytes) {
        for (const std::uint8_t byte : bytes) *m_to++ = byte;
    }
    void Address(const void* address) {
        std::memcpy(m_to, &address, sizeof address);
        m_to += sizeof address;
    }

private:
    std::uint8_t* m_to;
};

}  // namespace

ImportThunks::ImportThunks(Route route)
    : m_route(route),
      m_code(static_cast<std::uint8_t*>(
          ::VirtualAlloc(nullptr, kCodeBytes, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE))),
      m_next(m_code) {
    if (!m_code) throw std::runtime_error("no memory for thunks");
}

ImportThunks::~ImportThunks() {
    ::VirtualFree(m_code, 0, MEM_RELEASE);
}

void ImportThunks::Redirect(HMODULE module, void* (*choose)(const std::string& name, void* real)) {
    for (const ImportSlot& slot : ImportSlots(module)) {
        if (void* const target = choose(slot.name, *slot.address)) {
            WriteImportSlot(slot.address, Wrap(slot.name, target));
        }
    }
}

void* ImportThunks::Wrap(const std::string& name, void* target) {
    m_thunks.push_back({m_route, {name, target}});
    return WriteCode(m_thunks.back());
}

void* ImportThunks::WriteCode(const Thunk& thunk) {
    if (m_next + kThunkBytes > m_code + kCodeBytes) throw std::runtime_error("too many imports");
    std::uint8_t* const start = m_next;
    m_next += kThunkBytes;
    CodeWriter code(start);
    code.Bytes({0x41, 0x51, 0x41, 0x50, 0x52, 0x51});  // push r9; push r8; push rdx; push rcx
    code.Bytes({0x48, 0x89, 0xE2});                    // mov rdx, rsp
    code.Bytes({0x48, 0xB9});                          // mov rcx, thunk
    code.Address(&thunk);
    code.Bytes({0x48, 0x83, 0xEC, 0x28});  // sub rsp, 40
    code.Bytes({0x48, 0xB8});              // mov rax, Enter
    code.Address(reinterpret_cast<const void*>(&Enter));
    code.Bytes({0xFF, 0xD0});                          // call rax
    code.Bytes({0x48, 0x83, 0xC4, 0x28});              // add rsp, 40
    code.Bytes({0x59, 0x5A, 0x41, 0x58, 0x41, 0x59});  // pop rcx; pop rdx; pop r8; pop r9
    code.Bytes({0xFF, 0xE0});                          // jmp rax
    return start;
}

void* ImportThunks::Enter(const Thunk* thunk, const std::uint64_t* registers) {
    const DWORD error = ::GetLastError();
    void* const target = thunk->route(thunk->function, CallArguments(registers));
    ::SetLastError(error);
    return target;
}
