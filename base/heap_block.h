// Memory whose lack does not end the program.
#pragma once

#include <windows.h>

#include <cstddef>

// A zeroed block of the process heap.
class HeapBlock {
public:
    explicit HeapBlock(std::size_t size) noexcept
        : m_block(::HeapAlloc(::GetProcessHeap(), HEAP_ZERO_MEMORY, size)) {}
    HeapBlock(const HeapBlock&) = delete;
    HeapBlock& operator=(const HeapBlock&) = delete;
    ~HeapBlock() { ::HeapFree(::GetProcessHeap(), 0, m_block); }

    [[nodiscard]] void* Get() const noexcept { return m_block; }  // null when there was no memory

private:
    void* const m_block;
};
