#include "ui/open_file_buffer.h"

namespace {

// Behind the part that the dialog may use: room for 30,000 names of 260 characters.
constexpr std::size_t kRoom = std::size_t{30'000} * 260;

// Stands at the first place that is not the dialog's. No name has it.
constexpr wchar_t kUntouched = 0xFFFF;

}  // namespace

OpenFileBuffer::OpenFileBuffer() noexcept : m_memory((kLength + kRoom) * sizeof(wchar_t)) {
    if (wchar_t* const names = Data()) names[kLength] = kUntouched;
}

bool OpenFileBuffer::IsWithinLength() const noexcept {
    const wchar_t* const names = Written();
    return names && names[kLength] == kUntouched;
}
