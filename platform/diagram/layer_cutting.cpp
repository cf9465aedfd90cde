#include <algorithm>

#include "platform/diagram/layer_graph.h"

namespace mero {

namespace {

constexpr double RoomOfLine = 7.0;
constexpr double RoomOfNode = 15.0;

/// Depth-first search in order of the nodes, those without a line to them first.
class CycleSearch {
public:
    CycleSearch(std::size_t nodeCount, const std::vector<LayoutEdge>& graphEdges)
        : edges(graphEdges), leaving(nodeCount), state(nodeCount, Unseen), runsBack(graphEdges.size()) {
        std::vector<bool> isEntered(nodeCount);
        for (std::size_t edge = 0; edge < edges.size(); ++edge) {
            leaving[edges[edge].from].push_back(edge);
            isEntered[edges[edge].to] = isEntered[edges[edge].to] || edges[edge].from != edges[edge].to;
        }
        for (const bool entered : {false, true}) {
            for (std::size_t node = 0; node < nodeCount; ++node) {
                if (isEntered[node] == entered && state[node] == Unseen) {
                    search(node);
                }
            }
        }
        std::reverse(order.begin(), order.end());
    }

    /// Edges that lead back to a node on their own path.
    [[nodiscard]] const std::vector<bool>& edgesBack() const { return runsBack; }
    /// Nodes such that all other edges lead from earlier ones to later ones.
    [[nodiscard]] const std::vector<std::size_t>& topologicalOrder() const { return order; }
    /// Nodes in the order in which the search came to them.
    [[nodiscard]] const std::vector<std::size_t>& searchOrder() const { return found; }
    [[nodiscard]] const std::vector<std::size_t>& edgesFrom(std::size_t node) const { return leaving[node]; }

private:
    enum State { Unseen, Open, Done };
    struct Step {
        std::size_t node;
        std::size_t next = 0;
    };

    void search(std::size_t start) {
        std::vector<Step> path;
        open(start, path);
        while (!path.empty()) {
            Step& step = path.back();
            if (step.next == leaving[step.node].size()) {
                state[step.node] = Done;
                order.push_back(step.node);
                path.pop_back();
                continue;
            }
            const std::size_t edge = leaving[step.node][step.next++];
            const std::size_t target = edges[edge].to;
            runsBack[edge] = state[target] == Open;
            if (state[target] == Unseen) {
                open(target, path);
            }
        }
    }

    void open(std::size_t node, std::vector<Step>& path) {
        state[node] = Open;
        found.push_back(node);
        path.push_back({node});
    }

    const std::vector<LayoutEdge>& edges;
    std::vector<std::vector<std::size_t>> leaving;
    std::vector<State> state;
    std::vector<bool> runsBack;
    std::vector<std::size_t> order;
    std::vector<std::size_t> found;
};

/// Layer of each node: the longest path to it. Where a path begins later than at the first layer, it begins
/// right before what it leads to.
std::vector<std::size_t> longestPaths(std::size_t nodeCount, const std::vector<LayoutEdge>& edges,
                                      const CycleSearch& search) {
    std::vector<std::size_t> layer(nodeCount);
    std::vector<bool> isEntered(nodeCount);
    for (const std::size_t node : search.topologicalOrder()) {
        for (const std::size_t edge : search.edgesFrom(node)) {
            if (!search.edgesBack()[edge]) {
                layer[edges[edge].to] = std::max(layer[edges[edge].to], layer[node] + 1);
                isEntered[edges[edge].to] = true;
            }
        }
    }
    for (std::size_t node = 0; node < nodeCount; ++node) {
        std::size_t nearest = NoItem;
        for (const std::size_t edge : search.edgesFrom(node)) {
            if (!search.edgesBack()[edge]) {
                nearest = std::min(nearest, layer[edges[edge].to]);
            }
        }
        if (!isEntered[node] && nearest != NoItem) {
            layer[node] = nearest - 1;
        }
    }
    return layer;
}

class LayerCutter {
public:
    LayerGraph cut(const std::vector<LayoutNode>& nodes, const std::vector<LayoutEdge>& edges) {
        const CycleSearch search(nodes.size(), edges);
        const std::vector<std::size_t> layers = longestPaths(nodes.size(), edges, search);
        for (std::size_t node = 0; node < nodes.size(); ++node) {
            const double half = nodes[node].height / 2;
            graph.items.push_back({.node = node,
                                   .layer = layers[node],
                                   .above = half + RoomOfNode,
                                   .below = half + nodes[node].roomBelow + RoomOfNode});
        }
        for (const std::size_t node : search.searchOrder()) {
            enter(node);
        }
        for (std::size_t edge = 0; edge < edges.size(); ++edge) {
            graph.chains.push_back(chainOf(edges[edge], search.edgesBack()[edge]));
        }
        return std::move(graph);
    }

private:
    LayerChain chainOf(const LayoutEdge& edge, bool runsBack) {
        const std::size_t first = graph.items[edge.from].layer;
        const std::size_t last = graph.items[edge.to].layer;
        LayerChain chain{{edge.from}, runsBack};
        if (runsBack) {
            for (std::size_t layer = first + 1; layer-- > last;) {
                chain.items.push_back(addLine(layer));
            }
            graph.items[chain.items[1]].anchor = edge.from;
            graph.items[chain.items.back()].anchor = edge.to;
        } else {
            for (std::size_t layer = first + 1; layer < last; ++layer) {
                chain.items.push_back(addLine(layer));
            }
        }
        chain.items.push_back(edge.to);
        for (std::size_t each = 1; each < chain.items.size(); ++each) {
            join(chain.items[each - 1], chain.items[each]);
        }
        return chain;
    }

    std::size_t addLine(std::size_t layer) {
        graph.items.push_back({.layer = layer, .above = RoomOfLine, .below = RoomOfLine});
        enter(graph.items.size() - 1);
        return graph.items.size() - 1;
    }

    void enter(std::size_t item) {
        const std::size_t layer = graph.items[item].layer;
        graph.layers.resize(std::max(graph.layers.size(), layer + 1));
        graph.items[item].position = graph.layers[layer].size();
        graph.layers[layer].push_back(item);
    }

    void join(std::size_t from, std::size_t to) {
        if (graph.items[from].layer > graph.items[to].layer) {
            std::swap(from, to);
        }
        if (graph.items[from].layer < graph.items[to].layer) {
            graph.items[from].behind.push_back(to);
            graph.items[to].before.push_back(from);
        }
    }

    LayerGraph graph;
};

}  // namespace

LayerGraph cutIntoLayers(const std::vector<LayoutNode>& nodes, const std::vector<LayoutEdge>& edges) {
    return LayerCutter().cut(nodes, edges);
}

}  // namespace mero
