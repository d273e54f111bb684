// The memory into which the open dialog writes the selected names.
#pragma once

#include "base/heap_block.h"

#include <cstddef>
#include <span>

// Larger than the size that is passed to the dialog: Wine writes a selection that does not fit all the same,
// and reports success. A block of this size comes from the system in fresh pages, which cost nothing until
// they are written to.
class OpenFileBuffer {
public:
    // The size passed to the dialog, in characters. Deliberate: room for 99 paths of 260; a larger selection
    // fails.
    static constexpr std::size_t kLength = std::size_t{99} * 260;

    OpenFileBuffer() noexcept;

    // Null when there is no memory: the dialog then has nowhere to put names, and fails.
    [[nodiscard]] wchar_t* Data() noexcept { return static_cast<wchar_t*>(m_memory.Get()); }

    // False when the dialog has written more than fits that size.
    [[nodiscard]] bool IsWithinLength() const noexcept;

    // As many characters as that size.
    [[nodiscard]] std::span<const wchar_t> Names() const noexcept { return {Written(), kLength}; }

private:
    [[nodiscard]] const wchar_t* Written() const noexcept {
        return static_cast<const wchar_t*>(m_memory.Get());
    }

    const HeapBlock m_memory;
};
