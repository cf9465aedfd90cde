#pragma once

#include "platform/diagram/layer_graph.h"

namespace mero {

/// Left and right end of each layer, and of the whole drawing.
struct LayerColumns {
    std::vector<double> left;
    std::vector<double> right;
    double width = 0.0;
};

/// Lines of right angles along the chains of a graph whose items have their heights. Between layers each line
/// has an upright of its own; lines that begin at the same node, or end at the same one, may share it.
/// `columns` gets the places of the layers, as wide as their nodes, with room for the uprights.
[[nodiscard]] std::vector<DrawLine> routeLines(const LayerGraph& graph, const std::vector<LayoutNode>& nodes,
                                               const std::vector<LayoutEdge>& edges, LayerColumns& columns);

}  // namespace mero
