#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "component/host/sv_string.h"

#include "platform/toolkit/mixing.h"

namespace mero {

/// Texts numbered in the order of their first use, each kept once. Number 0 is the empty text. The texts stay
/// where they are as the table grows and as it is moved.
class KeyTable {
public:
    KeyTable() : slots(MinimumSlots), texts(1) {}

    std::uint32_t intern(std::string_view text) {
        if (text.empty()) {
            return 0;
        }
        const std::uint64_t hash = mixText(text);
        const auto tag = static_cast<std::uint32_t>(hash >> 32);
        std::size_t place = hash & (slots.size() - 1);
        for (; slots[place].number != 0; place = (place + 1) & (slots.size() - 1)) {
            if (slots[place].tag == tag && texts[slots[place].number].view() == text) {
                return slots[place].number;
            }
        }
        const auto number = static_cast<std::uint32_t>(texts.size());
        texts.emplace_back(text);
        slots[place] = {number, tag};
        if (texts.size() * 4 > slots.size() * 3) {
            grow();
        }
        return number;
    }

    [[nodiscard]] const SV::String& operator[](std::uint32_t number) const { return texts[number]; }
    [[nodiscard]] std::size_t size() const { return texts.size(); }

private:
    static constexpr std::size_t MinimumSlots = 64;

    /// Open addressing with linear probing over a power of two of slots. The tag spares most looks at texts.
    struct Slot {
        std::uint32_t number = 0;  ///< 0: free
        std::uint32_t tag = 0;
    };

    void grow() {
        slots.assign(slots.size() * 2, {});
        for (std::uint32_t number = 1; number < texts.size(); ++number) {
            const std::uint64_t hash = mixText(texts[number].view());
            std::size_t place = hash & (slots.size() - 1);
            while (slots[place].number != 0) {
                place = (place + 1) & (slots.size() - 1);
            }
            slots[place] = {number, static_cast<std::uint32_t>(hash >> 32)};
        }
    }

    std::vector<Slot> slots;
    std::deque<SV::String> texts;
};

}  // namespace mero
