#include <algorithm>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "platform/diagram/layer_graph.h"

namespace mero {

namespace {

struct Graph {
    std::vector<LayoutNode> nodes;
    std::vector<LayoutEdge> edges;
};

/// Mostly forward lines, some that run back, loops, double lines and nodes without any.
Graph randomGraph(unsigned seed, std::size_t size) {
    std::mt19937 random(seed);
    const auto upTo = [&random](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    Graph graph;
    for (std::size_t node = 0; node < size; ++node) {
        graph.nodes.push_back({40.0 + static_cast<double>(upTo(80)), 30.0 + static_cast<double>(upTo(50)),
                               upTo(3) == 0 ? 130.0 : 0.0, upTo(3) == 0 ? 40.0 : 0.0});
    }
    for (std::size_t edge = 0; edge < size * 4 / 3; ++edge) {
        const std::size_t from = upTo(size);
        const std::size_t near = from + 1 + upTo(6);
        graph.edges.push_back({from, upTo(8) == 0 || near >= size ? upTo(from + 1) : near, std::nullopt, 0.0,
                               upTo(4) == 0 ? 60.0 : 0.0});
    }
    return graph;
}

DrawRect withRoom(const DrawRect& bounds, const LayoutNode& node) {
    const double width = std::max(node.width, node.roomWidth);
    return {bounds.centre().x - width / 2, bounds.y, width, bounds.height + node.roomBelow};
}

/// Whether a piece with a right angle runs through the inside of a node.
bool runsThrough(const DrawPoint& from, const DrawPoint& to, const DrawRect& node) {
    return std::max(from.x, to.x) > node.x + 1 && std::min(from.x, to.x) < node.right() - 1 &&
           std::max(from.y, to.y) > node.y + 1 && std::min(from.y, to.y) < node.bottom() - 1;
}

void expectGoodLines(const Graph& graph, const LayoutResult& layout) {
    for (std::size_t edge = 0; edge < graph.edges.size(); ++edge) {
        const DrawLine& line = layout.edges[edge];
        const DrawRect& from = layout.nodes[graph.edges[edge].from];
        const DrawRect& to = layout.nodes[graph.edges[edge].to];
        ASSERT_GE(line.size(), 2U);
        EXPECT_NEAR(line.front().x, from.right(), 1e-6);
        EXPECT_NEAR(line.front().y, from.centre().y, 1e-6);
        EXPECT_NEAR(line.back().x, to.x, 1e-6);
        EXPECT_NEAR(line.back().y, to.centre().y, 1.0);
        for (std::size_t each = 1; each < line.size(); ++each) {
            EXPECT_TRUE(line[each].x == line[each - 1].x || line[each].y == line[each - 1].y);
            EXPECT_TRUE(std::none_of(
                layout.nodes.begin(), layout.nodes.end(),
                [&](const DrawRect& node) { return runsThrough(line[each - 1], line[each], node); }))
                << "edge " << edge;
        }
    }
}

TEST(LayeredLayout, NodesDontOverlapAndLinesRunBetweenThemForAnyGraph) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        const Graph graph = randomGraph(seed, 2 + seed);
        const LayoutResult layout = layOutInLayers(graph.nodes, graph.edges);
        for (std::size_t left = 0; left < graph.nodes.size(); ++left) {
            const DrawRect room = withRoom(layout.nodes[left], graph.nodes[left]);
            EXPECT_TRUE(layout.extent.contains(room));
            for (std::size_t right = left + 1; right < graph.nodes.size(); ++right) {
                EXPECT_FALSE(room.overlaps(withRoom(layout.nodes[right], graph.nodes[right])))
                    << left << " and " << right;
            }
        }
        expectGoodLines(graph, layout);
        const LayoutResult again = layOutInLayers(graph.nodes, graph.edges);
        EXPECT_EQ(again.nodes, layout.nodes);
        EXPECT_EQ(again.edges, layout.edges);
    }
}

TEST(LayeredLayout, LinesRunForwardButForThoseOfCycles) {
    // 0 -> 1 -> 2 -> 3 with 2 -> 1, a short cut 0 -> 3 and a loop at 2.
    const std::vector<LayoutNode> nodes(4, {100, 60, 0, 0});
    const std::vector<LayoutEdge> edges{{0, 1, {}, 0, 0}, {1, 2, {}, 0, 0}, {2, 3, {}, 0, 0},
                                        {2, 1, {}, 0, 0}, {0, 3, {}, 0, 0}, {2, 2, {}, 0, 0}};
    const LayoutResult layout = layOutInLayers(nodes, edges);
    for (std::size_t node = 1; node < nodes.size(); ++node) {
        EXPECT_GT(layout.nodes[node].x, layout.nodes[node - 1].right());
    }
    expectGoodLines({nodes, edges}, layout);
    const DrawLine& back = layout.edges[3];
    const auto rightmost = std::max_element(
        back.begin(), back.end(), [](const auto& left, const auto& right) { return left.x < right.x; });
    EXPECT_GT(rightmost->x, layout.nodes[2].right());
}

TEST(LayeredLayout, LinesThatNeedntCrossDont) {
    // Two trees whose leaves are numbered the wrong way round.
    const std::vector<LayoutNode> nodes(8, {100, 60, 0, 0});
    const std::vector<LayoutEdge> edges{{0, 1, {}, 0, 0}, {0, 2, {}, 0, 0}, {1, 6, {}, 0, 0},
                                        {2, 5, {}, 0, 0}, {2, 4, {}, 0, 0}, {1, 3, {}, 0, 0},
                                        {6, 7, {}, 0, 0}};
    LayerGraph graph = cutIntoLayers(nodes, edges);
    std::swap(graph.items[3].position, graph.items[6].position);
    std::reverse(graph.layers[2].begin(), graph.layers[2].end());
    for (std::size_t position = 0; position < graph.layers[2].size(); ++position) {
        graph.items[graph.layers[2][position]].position = position;
    }
    EXPECT_GT(countCrossings(graph), 0U);
    orderLayers(graph);
    EXPECT_EQ(countCrossings(graph), 0U);
}

TEST(LayeredLayout, FiveHundredNodesTakeWellBelowASecond) {
    const Graph graph = randomGraph(7, 500);
    const auto started = std::chrono::steady_clock::now();
    const LayoutResult layout = layOutInLayers(graph.nodes, graph.edges);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - started;
    RecordProperty("milliseconds", static_cast<int>(taken.count() * 1000));
    EXPECT_LT(taken.count(), 1.0);
    EXPECT_EQ(layout.nodes.size(), 500U);
}

}  // namespace

}  // namespace mero
