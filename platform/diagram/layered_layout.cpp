#include "platform/diagram/layered_layout.h"

#include <algorithm>
#include <numeric>

#include "platform/diagram/edge_routing.h"
#include "platform/diagram/layer_graph.h"

namespace mero {

namespace {

constexpr double PartGap = 24.0;
/// Nodes without lines stand side by side up to this width.
constexpr double RowWidth = 1000.0;

/// Numbers of the nodes and edges that hang together.
struct Part {
    std::vector<std::size_t> nodes;
    std::vector<std::size_t> edges;
};

/// The parts of a graph that no edge joins, in order of their first nodes.
std::vector<Part> partsOf(std::size_t nodeCount, const std::vector<LayoutEdge>& edges) {
    std::vector<std::size_t> leader(nodeCount);
    std::iota(leader.begin(), leader.end(), std::size_t{0});
    const auto find = [&leader](std::size_t node) {
        while (leader[node] != node) {
            node = leader[node] = leader[leader[node]];
        }
        return node;
    };
    for (const LayoutEdge& edge : edges) {
        const std::size_t from = find(edge.from);
        const std::size_t to = find(edge.to);
        leader[std::max(from, to)] = std::min(from, to);
    }
    std::vector<Part> parts;
    std::vector<std::size_t> partOf(nodeCount);
    for (std::size_t node = 0; node < nodeCount; ++node) {
        const std::size_t first = find(node);
        if (first == node) {
            partOf[node] = parts.size();
            parts.emplace_back();
        }
        partOf[node] = partOf[first];
        parts[partOf[node]].nodes.push_back(node);
    }
    for (std::size_t edge = 0; edge < edges.size(); ++edge) {
        parts[partOf[edges[edge].from]].edges.push_back(edge);
    }
    return parts;
}

/// Puts one part under the other; nodes without lines stand in rows at the end.
class LayoutBuilder {
public:
    LayoutBuilder(const std::vector<LayoutNode>& layoutNodes, const std::vector<LayoutEdge>& layoutEdges)
        : nodes(layoutNodes), edges(layoutEdges) {
        result.nodes.resize(nodes.size());
        result.edges.resize(edges.size());
    }

    LayoutResult build() {
        std::vector<std::size_t> single;
        for (const Part& part : partsOf(nodes.size(), edges)) {
            if (part.edges.empty()) {
                single.push_back(part.nodes.front());
            } else {
                addPart(part);
            }
        }
        addRows(single);
        return std::move(result);
    }

private:
    void addPart(const Part& part) {
        std::vector<std::size_t> numberInPart(nodes.size());
        std::vector<LayoutNode> ownNodes;
        for (const std::size_t node : part.nodes) {
            numberInPart[node] = ownNodes.size();
            ownNodes.push_back(nodes[node]);
        }
        std::vector<LayoutEdge> ownEdges;
        for (const std::size_t edge : part.edges) {
            LayoutEdge own = edges[edge];
            own.from = numberInPart[own.from];
            own.to = numberInPart[own.to];
            ownEdges.push_back(own);
        }
        LayerGraph graph = cutIntoLayers(ownNodes, ownEdges);
        orderLayers(graph);
        placeItems(graph);
        LayerColumns columns;
        const std::vector<DrawLine> lines = routeLines(graph, ownNodes, ownEdges, columns);
        const double top = nextTop();
        double bottom = top;
        for (const LayerItem& item : graph.items) {
            bottom = std::max(bottom, top + item.y + item.below);
        }
        for (std::size_t each = 0; each < ownNodes.size(); ++each) {
            const LayerItem& item = graph.items[each];
            const double middle = (columns.left[item.layer] + columns.right[item.layer]) / 2;
            const LayoutNode& node = ownNodes[each];
            result.nodes[part.nodes[each]] = {middle - node.width / 2, top + item.y - node.height / 2,
                                              node.width, node.height};
        }
        for (std::size_t each = 0; each < lines.size(); ++each) {
            for (const DrawPoint& point : lines[each]) {
                result.edges[part.edges[each]].push_back({point.x, top + point.y});
            }
        }
        grow(columns.width, bottom);
    }

    void addRows(const std::vector<std::size_t>& single) {
        double x = 0.0;
        double top = nextTop();
        double bottom = top;
        for (const std::size_t index : single) {
            const LayoutNode& node = nodes[index];
            const double width = std::max(node.width, node.roomWidth);
            if (x > 0.0 && x + width > RowWidth) {
                x = 0.0;
                top = bottom + PartGap;
            }
            result.nodes[index] = {x + (width - node.width) / 2, top, node.width, node.height};
            bottom = std::max(bottom, top + node.height + node.roomBelow);
            x += width;
            grow(x, bottom);
            x += PartGap;
        }
    }

    [[nodiscard]] double nextTop() const {
        return result.extent.height > 0.0 ? result.extent.height + PartGap : 0.0;
    }
    void grow(double width, double height) {
        result.extent.width = std::max(result.extent.width, width);
        result.extent.height = std::max(result.extent.height, height);
    }

    const std::vector<LayoutNode>& nodes;
    const std::vector<LayoutEdge>& edges;
    LayoutResult result;
};

}  // namespace

LayoutResult layOutInLayers(const std::vector<LayoutNode>& nodes, const std::vector<LayoutEdge>& edges) {
    return LayoutBuilder(nodes, edges).build();
}

}  // namespace mero
