#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Finds positions in a sequence by hash, with open addressing and linear probing. It knows nothing of the
/// entries: whether the one at a position is wanted, the caller tells.
class MeroPositionIndex {
public:
    static constexpr std::size_t Missing = static_cast<std::size_t>(-1);

    /// `isWanted(position)` is asked for entries of the same hash only; `Missing` if none is wanted.
    template <class IsWanted>
    [[nodiscard]] std::size_t find(std::size_t hash, IsWanted isWanted) const {
        if (cells.empty()) {
            return Missing;
        }
        const std::uint32_t tag = tagOf(hash);
        for (std::size_t cell = homeOf(tag); cells[cell].number != 0; cell = next(cell)) {
            if (cells[cell].tag == tag && isWanted(std::size_t{cells[cell].number} - 1)) {
                return std::size_t{cells[cell].number} - 1;
            }
        }
        return Missing;
    }

    /// A position of the hash; what lies there isn't looked at.
    [[nodiscard]] std::size_t findFirst(std::size_t hash) const {
        return find(hash, [](std::size_t) { return true; });
    }

    void add(std::size_t hash, std::size_t position) {
        if ((std::size_t{used} + 1) * 2 > cells.size()) {
            grow();
        }
        place({static_cast<std::uint32_t>(position + 1), tagOf(hash)});
        ++used;
    }

    /// Closes the gap that the position leaves, so that searches need no marks for what has gone.
    void erase(std::size_t hash, std::size_t position) {
        const std::size_t mask = cells.size() - 1;
        std::size_t gap = cellOf(hash, position);
        for (std::size_t cell = next(gap); cells[cell].number != 0; cell = next(cell)) {
            const std::size_t home = homeOf(cells[cell].tag);
            if (((cell - home) & mask) >= ((cell - gap) & mask)) {
                cells[gap] = cells[cell];
                gap = cell;
            }
        }
        cells[gap] = {};
        --used;
    }

    /// The entry has moved.
    void move(std::size_t hash, std::size_t from, std::size_t to) {
        cells[cellOf(hash, from)].number = static_cast<std::uint32_t>(to + 1);
    }

    /// Keeps the memory.
    void clear() {
        if (used != 0) {
            std::fill(cells.begin(), cells.end(), Cell{});
            used = 0;
        }
    }

    [[nodiscard]] bool empty() const { return used == 0; }

    /// Asks for the memory that `find` of the hash will look at.
    void prefetch(std::size_t hash) const {
        if (!cells.empty()) {
            __builtin_prefetch(&cells[homeOf(tagOf(hash))]);
        }
    }

private:
    static constexpr std::uint32_t BlockSize = 16;

    /// The tag, the lower half of the hash, spares looking at entries of other hashes, and entries needn't be
    /// hashed anew as the index grows.
    struct Cell {
        std::uint32_t number = 0;  ///< position plus 1; 0 if the cell is free
        std::uint32_t tag = 0;
    };

    [[nodiscard]] static std::uint32_t tagOf(std::size_t hash) { return static_cast<std::uint32_t>(hash); }
    /// The hash of a number is the number, and objects of a process have neighbouring numbers: those of a
    /// block stay together in memory, while the blocks are spread by Fibonacci hashing.
    [[nodiscard]] std::size_t homeOf(std::uint32_t tag) const {
        const std::uint32_t spread = (tag / BlockSize) * 0x9E3779B1U;
        return (std::uint64_t{spread} >> shift) * BlockSize + tag % BlockSize;
    }
    [[nodiscard]] std::size_t next(std::size_t cell) const { return (cell + 1) & (cells.size() - 1); }
    [[nodiscard]] std::size_t cellOf(std::size_t hash, std::size_t position) const {
        std::size_t cell = homeOf(tagOf(hash));
        while (cells[cell].number != position + 1) {
            cell = next(cell);
        }
        return cell;
    }
    void place(Cell entry) {
        std::size_t cell = homeOf(entry.tag);
        while (cells[cell].number != 0) {
            cell = next(cell);
        }
        cells[cell] = entry;
    }
    void grow() {
        const std::size_t wanted = std::max(std::size_t{BlockSize}, cells.size() * 2);
        std::vector<Cell> old(wanted);
        old.swap(cells);
        shift = static_cast<std::uint32_t>(32 - std::countr_zero(wanted / BlockSize));
        for (const Cell& entry : old) {
            if (entry.number != 0) {
                place(entry);
            }
        }
    }

    std::vector<Cell> cells;  ///< none, or a power of two
    std::uint32_t used = 0;
    std::uint32_t shift = 32;
};
