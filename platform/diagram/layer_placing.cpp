#include <algorithm>
#include <limits>

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

/// Heights at which an item keeps its distance from those above and below.
struct Freedom {
    double from = -std::numeric_limits<double>::infinity();
    double to = std::numeric_limits<double>::infinity();

    [[nodiscard]] Freedom together(const Freedom& other) const {
        return {std::max(from, other.from), std::min(to, other.to)};
    }
    [[nodiscard]] bool isEmpty() const { return from > to; }
};

Freedom freedomOf(const LayerGraph& graph, const LayerItem& item) {
    const auto& layer = graph.layers[item.layer];
    Freedom freedom;
    if (item.position > 0) {
        const LayerItem& upper = graph.items[layer[item.position - 1]];
        freedom.from = upper.y + upper.below + item.above;
    }
    if (item.position + 1 < layer.size()) {
        const LayerItem& lower = graph.items[layer[item.position + 1]];
        freedom.to = lower.y - lower.above - item.below;
    }
    return freedom;
}

/// The item that goes on with a line that neither splits nor joins; none where there is no such.
std::size_t onlyNext(const LayerGraph& graph, const LayerItem& item) {
    const bool goesOn = item.behind.size() == 1 && graph.items[item.behind.front()].before.size() == 1;
    return goesOn ? item.behind.front() : NoItem;
}

/// Puts neighbours along one line on one height, as far as the room between others allows.
void straighten(LayerGraph& graph) {
    std::vector<bool> isDone(graph.items.size());
    for (const auto& layer : graph.layers) {
        for (std::size_t index : layer) {
            while (index != NoItem && !isDone[index]) {
                std::vector<std::size_t> run;
                Freedom freedom;
                double sum = 0.0;
                while (index != NoItem) {
                    const LayerItem& item = graph.items[index];
                    const Freedom common = freedom.together(freedomOf(graph, item));
                    if (common.isEmpty() && !run.empty()) {
                        break;
                    }
                    freedom = common;
                    run.push_back(index);
                    isDone[index] = true;
                    sum += item.y;
                    index = onlyNext(graph, item);
                }
                if (!freedom.isEmpty()) {
                    const double mean = sum / static_cast<double>(run.size());
                    for (const std::size_t member : run) {
                        graph.items[member].y = std::clamp(mean, freedom.from, freedom.to);
                    }
                }
            }
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
    straighten(graph);
    moveToTop(graph);
}

}  // namespace mero
