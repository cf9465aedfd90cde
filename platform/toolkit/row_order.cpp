#include "platform/toolkit/row_order.h"

#include <algorithm>

namespace mero {

namespace {

constexpr std::size_t BlockCapacity = 512;

}  // namespace

std::uint32_t RowOrder::addBlockBehind(std::size_t position) {
    const auto made = static_cast<std::uint32_t>(blocks.size());
    blocks.emplace_back().reserve(BlockCapacity);
    const bool isFirst = blockOrder.empty();
    const std::size_t newPosition = isFirst ? 0 : position + 1;
    const std::uint32_t place =
        isFirst ? 0 : firstPlace[position] + static_cast<std::uint32_t>(blocks[blockOrder[position]].size());
    blockOrder.insert(blockOrder.begin() + static_cast<std::ptrdiff_t>(newPosition), made);
    firstPlace.insert(firstPlace.begin() + static_cast<std::ptrdiff_t>(newPosition), place);
    positionOfBlock.push_back(0);
    for (std::size_t each = newPosition; each < blockOrder.size(); ++each) {
        positionOfBlock[blockOrder[each]] = static_cast<std::uint32_t>(each);
    }
    return made;
}

void RowOrder::splitBlock(std::size_t position) {
    const std::uint32_t lower = blockOrder[position];
    const std::uint32_t upper = addBlockBehind(position);
    const auto middle = blocks[lower].begin() + static_cast<std::ptrdiff_t>(BlockCapacity / 2);
    blocks[upper].assign(middle, blocks[lower].end());
    blocks[lower].erase(middle, blocks[lower].end());
    for (const Row row : blocks[upper]) {
        blockOfRow[row] = upper;
    }
    firstPlace[position + 1] = firstPlace[position] + static_cast<std::uint32_t>(blocks[lower].size());
}

void RowOrder::assign(const std::vector<Row>& rows) {
    *this = {};
    // Half full, so that rows can go between them.
    constexpr std::size_t RowsOfBlock = BlockCapacity / 2;
    blockOfRow.resize(rows.size());
    for (std::size_t first = 0; first < rows.size(); first += RowsOfBlock) {
        const std::size_t behind = std::min(first + RowsOfBlock, rows.size());
        const auto id = static_cast<std::uint32_t>(blocks.size());
        blocks.emplace_back().reserve(BlockCapacity);
        blocks.back().assign(rows.begin() + static_cast<std::ptrdiff_t>(first),
                             rows.begin() + static_cast<std::ptrdiff_t>(behind));
        blockOrder.push_back(id);
        positionOfBlock.push_back(id);
        firstPlace.push_back(static_cast<std::uint32_t>(first));
        for (const Row row : blocks.back()) {
            blockOfRow[row] = id;
        }
    }
}

void RowOrder::insertBehind(Row before) {
    const auto row = static_cast<Row>(size());
    if (blocks.empty()) {
        addBlockBehind(0);
    }
    std::uint32_t target = before == AtBegin ? blockOrder.front() : blockOfRow[before];
    if (blocks[target].size() == BlockCapacity) {
        const std::size_t position = positionOfBlock[target];
        if (position + 1 == blockOrder.size() && blocks[target].back() == before) {
            target = addBlockBehind(position);
        } else {
            splitBlock(position);
            target = before == AtBegin ? blockOrder.front() : blockOfRow[before];
        }
    }
    Block& block = blocks[target];
    const bool atBlockBegin = before == AtBegin || block.empty();
    const auto place = atBlockBegin             ? block.begin()
                       : block.back() == before ? block.end()
                                                : std::next(std::find(block.begin(), block.end(), before));
    block.insert(place, row);
    blockOfRow.push_back(target);
    for (std::size_t each = positionOfBlock[target] + 1; each < firstPlace.size(); ++each) {
        ++firstPlace[each];
    }
}

std::size_t RowOrder::placeOf(Row row) const {
    const std::uint32_t id = blockOfRow[row];
    const Block& block = blocks[id];
    const std::size_t first = firstPlace[positionOfBlock[id]];
    if (block.back() == row) {
        return first + block.size() - 1;
    }
    return first + static_cast<std::size_t>(std::find(block.begin(), block.end(), row) - block.begin());
}

RowOrder::Row RowOrder::rowAt(std::size_t place) const {
    return runFrom(place).front();
}

std::span<const RowOrder::Row> RowOrder::runFrom(std::size_t place) const {
    const auto behind = std::upper_bound(firstPlace.begin(), firstPlace.end(), place);
    const auto position = static_cast<std::size_t>(behind - firstPlace.begin()) - 1;
    return std::span(blocks[blockOrder[position]]).subspan(place - firstPlace[position]);
}

}  // namespace mero
