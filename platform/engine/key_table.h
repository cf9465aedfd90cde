#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "component/host/sv_string.h"

#include "platform/engine/mixing.h"

namespace mero {

/// Texts numbered in the order of their first use, each kept once. Number 0 is the empty text. The texts stay
/// where they are as the table grows and as it is moved.
class KeyTable {
public:
    KeyTable() : slots(MinimumSlots, Free) { intern({}); }

    std::uint32_t intern(std::string_view text) {
        const std::uint64_t hash = mixText(text);
        std::size_t slot = findSlot(text, hash);
        if (slots[slot] != Free) {
            return slots[slot];
        }
        const auto number = static_cast<std::uint32_t>(texts.size());
        texts.emplace_back(text);
        hashes.push_back(hash);
        slots[slot] = number;
        if (texts.size() * 4 > slots.size() * 3) {
            grow();
        }
        return number;
    }

    [[nodiscard]] const SV::String& operator[](std::uint32_t number) const { return texts[number]; }
    [[nodiscard]] std::size_t size() const { return texts.size(); }

private:
    static constexpr std::uint32_t Free = UINT32_MAX;
    static constexpr std::size_t MinimumSlots = 64;

    /// Open addressing with linear probing; the number of slots is a power of two.
    [[nodiscard]] std::size_t findSlot(std::string_view text, std::uint64_t hash) const {
        const std::size_t mask = slots.size() - 1;
        std::size_t slot = hash & mask;
        while (slots[slot] != Free && (hashes[slots[slot]] != hash || texts[slots[slot]].view() != text)) {
            slot = (slot + 1) & mask;
        }
        return slot;
    }

    void grow() {
        slots.assign(slots.size() * 2, Free);
        const std::size_t mask = slots.size() - 1;
        for (std::uint32_t number = 0; number < texts.size(); ++number) {
            std::size_t slot = hashes[number] & mask;
            while (slots[slot] != Free) {
                slot = (slot + 1) & mask;
            }
            slots[slot] = number;
        }
    }

    std::deque<SV::String> texts;
    std::vector<std::uint64_t> hashes;
    std::vector<std::uint32_t> slots;
};

}  // namespace mero
