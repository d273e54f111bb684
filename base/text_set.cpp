#include "base/text_set.h"

#include <algorithm>
#include <functional>

bool TextSet::Insert(std::wstring_view text) {
    if (m_texts.size() * 2 >= m_slots.size()) Grow();
    std::uint32_t& slot = SlotOf(text);
    if (slot != 0) return false;
    m_texts.emplace_back(text);
    slot = static_cast<std::uint32_t>(m_texts.size());
    return true;
}

void TextSet::RemoveLast() {
    // No search for another text leads past the slot that was taken last.
    SlotOf(m_texts.back()) = 0;
    m_texts.pop_back();
}

std::uint32_t& TextSet::SlotOf(std::wstring_view text) {
    for (std::size_t hash = std::hash<std::wstring_view>{}(text);; ++hash) {
        std::uint32_t& slot = m_slots[hash & (m_slots.size() - 1)];
        if (slot == 0 || m_texts[slot - 1] == text) return slot;
    }
}

void TextSet::Grow() {
    constexpr std::size_t kFirstSize = 64;
    m_slots.assign(std::max(m_slots.size() * 2, kFirstSize), 0);
    std::uint32_t number = 0;
    for (const std::wstring& text : m_texts) SlotOf(text) = ++number;
}
