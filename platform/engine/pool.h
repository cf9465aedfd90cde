#pragma once

#include <cstdint>
#include <vector>

namespace mero {

/// Reference to an item of a pool that may have been given back meanwhile.
struct PoolHandle {
    std::uint32_t index = UINT32_MAX;
    std::uint32_t serial = 0;
};

/// Items that are used again after they were given back, with what memory they hold. `Item::serial` tells
/// one use from the next.
template <class Item>
class Pool {
public:
    std::uint32_t take() {
        if (free.empty()) {
            items.emplace_back();
            return static_cast<std::uint32_t>(items.size() - 1);
        }
        const std::uint32_t index = free.back();
        free.pop_back();
        return index;
    }
    void giveBack(std::uint32_t index) {
        ++items[index].serial;
        free.push_back(index);
    }
    Item& operator[](std::uint32_t index) { return items[index]; }
    const Item& operator[](std::uint32_t index) const { return items[index]; }
    /// Items in use and given back.
    [[nodiscard]] std::uint32_t size() const { return static_cast<std::uint32_t>(items.size()); }
    [[nodiscard]] PoolHandle handle(std::uint32_t index) const { return {index, items[index].serial}; }
    [[nodiscard]] bool holds(PoolHandle handle) const { return items[handle.index].serial == handle.serial; }

private:
    std::vector<Item> items;
    std::vector<std::uint32_t> free;
};

}  // namespace mero
