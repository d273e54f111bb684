// A set of texts that only grows. Rules only: standard types.
//
// The library's own hash set would be a sixteenth of what the program may weigh; this one does no more than a
// list of files needs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class TextSet {
public:
    // True when the set did not have a text of exactly these characters and now has it.
    bool Insert(std::wstring_view text);

    // Takes back the last Insert that was true. At most once for each.
    void RemoveLast();

private:
    [[nodiscard]] std::uint32_t& SlotOf(std::wstring_view text);
    void Grow();

    std::vector<std::wstring> m_texts;  // in the order in which they came
    // Open addressing, a power of two of slots, at most half of them taken: 1 + the index of a text, 0 where
    // a search ends.
    std::vector<std::uint32_t> m_slots;
};
