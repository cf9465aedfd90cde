#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace mero {

/// Order of the rows 0, 1, … of a table, in which a new row may go behind any other: a list in blocks, so
/// that inserting, finding the place of a row and finding the row of a place stay quick with a million rows.
class RowOrder {
public:
    using Row = std::uint32_t;
    static constexpr Row AtBegin = static_cast<Row>(-1);

    /// Takes all rows at once, in place of those that were here; every number below their count is there
    /// once.
    void assign(const std::vector<Row>& rows);
    /// Adds row number `size()` behind `before`.
    void insertBehind(Row before);
    [[nodiscard]] std::size_t placeOf(Row row) const;
    [[nodiscard]] Row rowAt(std::size_t place) const;
    /// Some rows from `place`, which has to be there, onward: a walk asks again behind them.
    [[nodiscard]] std::span<const Row> runFrom(std::size_t place) const;
    [[nodiscard]] Row last() const { return blocks[blockOrder.back()].back(); }
    [[nodiscard]] std::size_t size() const { return blockOfRow.size(); }

private:
    using Block = std::vector<Row>;

    /// Gives the identifier of a new, empty block.
    std::uint32_t addBlockBehind(std::size_t position);
    void splitBlock(std::size_t position);

    std::vector<Block> blocks;                   ///< by identifier
    std::vector<std::uint32_t> blockOrder;       ///< identifiers in order
    std::vector<std::uint32_t> positionOfBlock;  ///< by identifier: index in `blockOrder`
    std::vector<std::uint32_t> firstPlace;       ///< by index in `blockOrder`: rows before the block
    std::vector<std::uint32_t> blockOfRow;       ///< identifiers
};

}  // namespace mero
