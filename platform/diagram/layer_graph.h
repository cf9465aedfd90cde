#pragma once

#include <cstddef>
#include <vector>

#include "platform/diagram/layered_layout.h"

namespace mero {

inline constexpr std::size_t NoItem = static_cast<std::size_t>(-1);

/// A node in its layer, or the place where a line passes through a layer.
struct LayerItem {
    std::size_t node = NoItem;  ///< none for a passing line
    std::size_t layer = 0;
    std::size_t position = 0;  ///< in its layer
    double above = 0.0;        ///< room that the item needs above and below its line
    double below = 0.0;
    double y = 0.0;                     ///< of the line through its centre
    std::vector<std::size_t> before{};  ///< items of the layer before that lines come from
    std::vector<std::size_t> behind{};
    std::size_t anchor = NoItem;  ///< item of the same layer that a line which turns here begins or ends at

    [[nodiscard]] bool isLine() const { return node == NoItem; }
};

/// The items that a line runs through, from the node where it begins to that where it ends. One that runs
/// back begins and ends with an item in the layer of its node.
struct LayerChain {
    std::vector<std::size_t> items;
    bool runsBack = false;
};

/// A graph cut into layers: lines run between neighbouring layers only.
struct LayerGraph {
    std::vector<LayerItem> items;  ///< those of nodes first, in order of the nodes
    std::vector<std::vector<std::size_t>> layers;
    std::vector<LayerChain> chains;  ///< in order of the edges
};

/// Turns the edges of cycles and cuts the graph into layers by longest paths.
[[nodiscard]] LayerGraph cutIntoLayers(const std::vector<LayoutNode>& nodes,
                                       const std::vector<LayoutEdge>& edges);

/// Orders the items of each layer by barycentres such that few lines cross.
void orderLayers(LayerGraph& graph);

/// Crossings of lines between neighbouring layers.
[[nodiscard]] std::size_t countCrossings(const LayerGraph& graph);

/// Gives each item its height: as near to its neighbours as the order and the rooms allow.
void placeItems(LayerGraph& graph);

}  // namespace mero
