#include <algorithm>
#include <numeric>

#include "platform/diagram/layer_graph.h"

namespace mero {

namespace {

using Neighbours = std::vector<std::size_t> LayerItem::*;

/// Sums of counts over positions, each step in the logarithm of their number.
class PositionCounter {
public:
    explicit PositionCounter(std::size_t positions) : sums(positions + 1) {}

    void add(std::size_t position) {
        for (std::size_t each = position + 1; each < sums.size(); each += each & (~each + 1)) {
            ++sums[each];
        }
        ++total;
    }
    [[nodiscard]] std::size_t countBehind(std::size_t position) const {
        std::size_t upTo = 0;
        for (std::size_t each = position + 1; each > 0; each -= each & (~each + 1)) {
            upTo += sums[each];
        }
        return total - upTo;
    }

private:
    std::vector<std::size_t> sums;
    std::size_t total = 0;
};

/// After W. Barth, P. Mutzel, M. Jünger: "Simple and Efficient Bilayer Cross Counting", Journal of Graph
/// Algorithms and Applications 8(2), 2004.
std::size_t crossingsBehind(const LayerGraph& graph, std::size_t layer) {
    PositionCounter counter(graph.layers[layer + 1].size());
    std::size_t crossings = 0;
    std::vector<std::size_t> ends;
    for (const std::size_t item : graph.layers[layer]) {
        ends.clear();
        for (const std::size_t end : graph.items[item].behind) {
            ends.push_back(graph.items[end].position);
        }
        std::sort(ends.begin(), ends.end());
        for (const std::size_t end : ends) {
            crossings += counter.countBehind(end);
        }
        for (const std::size_t end : ends) {
            counter.add(end);
        }
    }
    return crossings;
}

double barycentre(const LayerGraph& graph, std::size_t index, Neighbours neighbours) {
    const LayerItem& item = graph.items[index];
    const auto& fixed = item.*neighbours;
    if (!fixed.empty()) {
        double sum = 0.0;
        for (const std::size_t each : fixed) {
            sum += static_cast<double>(graph.items[each].position);
        }
        return sum / static_cast<double>(fixed.size());
    }
    constexpr double RightBehind = 0.5;
    return item.anchor != NoItem ? barycentre(graph, item.anchor, neighbours) + RightBehind
                                 : static_cast<double>(item.position);
}

void setPositions(LayerGraph& graph, const std::vector<std::size_t>& layer) {
    for (std::size_t position = 0; position < layer.size(); ++position) {
        graph.items[layer[position]].position = position;
    }
}

void sortLayer(LayerGraph& graph, std::size_t layer, Neighbours neighbours) {
    std::vector<std::size_t>& order = graph.layers[layer];
    std::vector<std::pair<double, std::size_t>> keyed;
    keyed.reserve(order.size());
    for (const std::size_t item : order) {
        keyed.emplace_back(barycentre(graph, item, neighbours), item);
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::transform(keyed.begin(), keyed.end(), order.begin(), [](const auto& entry) { return entry.second; });
    setPositions(graph, order);
}

}  // namespace

std::size_t countCrossings(const LayerGraph& graph) {
    std::size_t crossings = 0;
    for (std::size_t layer = 0; layer + 1 < graph.layers.size(); ++layer) {
        crossings += crossingsBehind(graph, layer);
    }
    return crossings;
}

void orderLayers(LayerGraph& graph) {
    constexpr int MostSweeps = 24;
    constexpr int SweepsWithoutGain = 6;
    auto best = graph.layers;
    std::size_t fewest = countCrossings(graph);
    for (int sweep = 0, idle = 0; sweep < MostSweeps && idle < SweepsWithoutGain && fewest > 0; ++sweep) {
        for (std::size_t each = 1; each < graph.layers.size(); ++each) {
            const bool forward = sweep % 2 == 0;
            sortLayer(graph, forward ? each : graph.layers.size() - 1 - each,
                      forward ? &LayerItem::before : &LayerItem::behind);
        }
        ++idle;
        if (const std::size_t crossings = countCrossings(graph); crossings < fewest) {
            fewest = crossings;
            best = graph.layers;
            idle = 0;
        }
    }
    graph.layers = std::move(best);
    for (const auto& layer : graph.layers) {
        setPositions(graph, layer);
    }
}

}  // namespace mero
