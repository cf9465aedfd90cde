#include <algorithm>

#include "platform/diagram/layer_graph.h"

namespace mero {

namespace {

/// How much a line between two items wants to be straight: where it passes through layers most of all.
double weightOf(const LayerItem& left, const LayerItem& right) {
    constexpr double BetweenNodes = 1.0;
    constexpr double AtOneNode = 2.0;
    constexpr double BetweenLines = 8.0;
    if (left.isLine() && right.isLine()) {
        return BetweenLines;
    }
    return left.isLine() || right.isLine() ? AtOneNode : BetweenNodes;
}

struct Wish {
    double y = 0.0;
    double weight = 0.0;
};

enum Sides : unsigned { SideBefore = 1, SideBehind = 2, BothSides = 3 };

Wish wishOf(const LayerGraph& graph, const LayerItem& item, unsigned sides) {
    Wish wish;
    const auto join = [&](const std::vector<std::size_t>& neighbours) {
        for (const std::size_t each : neighbours) {
            const double weight = weightOf(item, graph.items[each]);
            wish.y += weight * graph.items[each].y;
            wish.weight += weight;
        }
    };
    if ((sides & SideBefore) != 0) {
        join(item.before);
    }
    if ((sides & SideBehind) != 0) {
        join(item.behind);
    }
    constexpr double Indifferent = 0.01;
    if (wish.weight == 0.0) {
        const bool hangs = item.anchor != NoItem;
        return {hangs ? graph.items[item.anchor].y : item.y, Indifferent};
    }
    wish.y /= wish.weight;
    return wish;
}

/// Neighbours in a layer that push each other and lie as close as they may.
struct Block {
    double y = 0.0;  ///< where the first item would lie with all distances taken out
    double weight = 0.0;
    std::size_t count = 0;
};

/// Least squares under the distances of a fixed order: an isotonic regression, solved by pooling adjacent
/// violators.
void placeLayer(LayerGraph& graph, const std::vector<std::size_t>& layer, unsigned sides) {
    std::vector<Block> blocks;
    std::vector<double> shifts;
    double shift = 0.0;
    for (std::size_t each = 0; each < layer.size(); ++each) {
        const LayerItem& item = graph.items[layer[each]];
        if (each > 0) {
            shift += graph.items[layer[each - 1]].below + item.above;
        }
        shifts.push_back(shift);
        const Wish wish = wishOf(graph, item, sides);
        blocks.push_back({wish.y - shift, wish.weight, 1});
        while (blocks.size() > 1 && blocks[blocks.size() - 2].y > blocks.back().y) {
            const Block last = blocks.back();
            blocks.pop_back();
            Block& joined = blocks.back();
            const double weight = joined.weight + last.weight;
            joined = {(joined.y * joined.weight + last.y * last.weight) / weight, weight,
                      joined.count + last.count};
        }
    }
    std::size_t each = 0;
    for (const Block& block : blocks) {
        for (std::size_t member = 0; member < block.count; ++member, ++each) {
            graph.items[layer[each]].y = block.y + shifts[each];
        }
    }
}

void placeClosely(LayerGraph& graph) {
    for (const auto& layer : graph.layers) {
        double y = 0.0;
        for (const std::size_t index : layer) {
            LayerItem& item = graph.items[index];
            item.y = y + item.above;
            y = item.y + item.below;
        }
    }
}

void moveToTop(LayerGraph& graph) {
    double top = 0.0;
    for (const LayerItem& item : graph.items) {
        top = std::min(top, item.y - item.above);
    }
    for (LayerItem& item : graph.items) {
        item.y -= top;
    }
}

}  // namespace

void placeItems(LayerGraph& graph) {
    constexpr int Sweeps = 8;
    placeClosely(graph);
    for (int sweep = 0; sweep < Sweeps; ++sweep) {
        for (std::size_t layer = 1; layer < graph.layers.size(); ++layer) {
            placeLayer(graph, graph.layers[layer], sweep + 2 < Sweeps ? SideBefore : BothSides);
        }
        for (std::size_t layer = graph.layers.size() - 1; layer-- > 0;) {
            placeLayer(graph, graph.layers[layer], sweep + 2 < Sweeps ? SideBehind : BothSides);
        }
    }
    moveToTop(graph);
}

}  // namespace mero
