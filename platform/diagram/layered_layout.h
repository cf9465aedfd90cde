#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/diagram/geometry.h"

namespace mero {

/// What the layout has to know of a graph; sizes in drawing units.
struct LayoutNode {
    double width = 0.0;
    double height = 0.0;
    double roomWidth = 0.0;  ///< of the label below, if that is wider
    double roomBelow = 0.0;  ///< for labels and what hangs on the lower border
};

struct LayoutEdge {
    std::size_t from = 0;
    std::size_t to = 0;
    /// Where the line begins, from the centre of its node; the middle of the right border if not given.
    std::optional<DrawPoint> exit;
    /// Distance below the centre at which a line with `exit` turns to the right.
    double exitDepth = 0.0;
    /// Length of the flat piece behind the first upright, for a label.
    double labelWidth = 0.0;
};

struct LayoutResult {
    std::vector<DrawRect> nodes;  ///< without their rooms; in order of the nodes
    std::vector<DrawLine> edges;  ///< horizontal and vertical pieces; in order of the edges
    DrawRect extent;              ///< begins at 0, 0; rooms included
};

/// Draws a directed graph from left to right in layers, after K. Sugiyama, S. Tagawa, M. Toda: "Methods for
/// Visual Understanding of Hierarchical System Structures", IEEE Transactions on Systems, Man, and
/// Cybernetics 11(2), 1981:
/// depth-first search turns the edges of cycles, longest paths give the layers, barycentres the order in a
/// layer, and least squares the heights. Lines have right angles; those that run back turn beside the nodes,
/// so that every line leaves on the right and arrives on the left. Nodes and their rooms don't overlap. Equal
/// graphs give equal drawings.
[[nodiscard]] LayoutResult layOutInLayers(const std::vector<LayoutNode>& nodes,
                                          const std::vector<LayoutEdge>& edges);

}  // namespace mero
