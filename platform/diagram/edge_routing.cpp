#include "platform/diagram/edge_routing.h"

#include <algorithm>
#include <cmath>

namespace mero {

namespace {

constexpr double Margin = 16.0;
constexpr double TrackDistance = 9.0;
constexpr double SameHeight = 0.5;

/// The piece of a line that crosses the room between two layers.
struct Crossing {
    std::size_t edge;
    std::size_t piece;  ///< number of this piece in its line
    double fromY;
    double toY;
    std::size_t from;  ///< items
    std::size_t to;
    std::size_t track = 0;

    [[nodiscard]] double top() const { return std::min(fromY, toY); }
    [[nodiscard]] double bottom() const { return std::max(fromY, toY); }
    [[nodiscard]] bool isStraight() const { return bottom() - top() < SameHeight; }
    /// Whether both may have the same upright.
    [[nodiscard]] bool fits(const Crossing& other) const {
        return from == other.from || to == other.to || top() > other.bottom() + TrackDistance / 2 ||
               other.top() > bottom() + TrackDistance / 2;
    }
};

/// Places uprights into as few tracks as they fit in, the long ones on the outside of what they enclose.
std::size_t assignTracks(std::vector<Crossing>& crossings) {
    std::stable_sort(crossings.begin(), crossings.end(), [](const Crossing& left, const Crossing& right) {
        return left.bottom() - left.top() < right.bottom() - right.top();
    });
    std::vector<std::vector<const Crossing*>> tracks;
    for (Crossing& crossing : crossings) {
        if (crossing.isStraight()) {
            continue;
        }
        const auto place = std::find_if(tracks.begin(), tracks.end(), [&](const auto& track) {
            return std::all_of(track.begin(), track.end(),
                               [&](const Crossing* other) { return crossing.fits(*other); });
        });
        crossing.track = static_cast<std::size_t>(place - tracks.begin());
        if (place == tracks.end()) {
            tracks.emplace_back();
        }
        tracks[crossing.track].push_back(&crossing);
    }
    return tracks.size();
}

class LineRouter {
public:
    LineRouter(const LayerGraph& layerGraph, const std::vector<LayoutNode>& layoutNodes,
               const std::vector<LayoutEdge>& layoutEdges)
        : graph(layerGraph), nodes(layoutNodes), edges(layoutEdges), rooms(graph.layers.size() + 1) {
        for (std::size_t edge = 0; edge < edges.size(); ++edge) {
            collect(edge);
        }
    }

    std::vector<DrawLine> route(LayerColumns& columns) {
        placeColumns(columns);
        std::vector<std::vector<double>> uprights(edges.size());
        for (std::size_t room = 0; room < rooms.size(); ++room) {
            for (const Crossing& crossing : rooms[room]) {
                auto& line = uprights[crossing.edge];
                line.resize(std::max(line.size(), crossing.piece + 1));
                line[crossing.piece] =
                    roomStart[room] + Margin + static_cast<double>(crossing.track) * TrackDistance;
            }
        }
        std::vector<DrawLine> lines;
        for (std::size_t edge = 0; edge < edges.size(); ++edge) {
            lines.push_back(lineOf(edge, uprights[edge], columns));
        }
        return lines;
    }

private:
    /// The room to the right of layer n has number n + 1.
    void collect(std::size_t edge) {
        const LayerChain& chain = graph.chains[edge];
        for (std::size_t piece = 0; piece + 1 < chain.items.size(); ++piece) {
            const LayerItem& from = graph.items[chain.items[piece]];
            const LayerItem& to = graph.items[chain.items[piece + 1]];
            const bool turnsOnTheRight = chain.runsBack && piece == 0;
            const std::size_t room = turnsOnTheRight  ? from.layer + 1
                                     : chain.runsBack ? from.layer
                                                      : from.layer + 1;
            const double fromY = from.y + (piece == 0 ? edges[edge].exitDepth : 0.0);
            rooms[room].push_back({edge, piece, fromY, to.y, chain.items[piece], chain.items[piece + 1]});
        }
    }

    void placeColumns(LayerColumns& columns) {
        double x = 0.0;
        for (std::size_t room = 0; room < rooms.size(); ++room) {
            const std::size_t tracks = assignTracks(rooms[room]);
            const bool isOutside = room == 0 || room + 1 == rooms.size();
            roomStart.push_back(x);
            if (tracks > 0 || !isOutside) {
                x += 2 * Margin + static_cast<double>(std::max<std::size_t>(tracks, 1) - 1) * TrackDistance;
                x += labelRoomOf(room);
            }
            if (room < graph.layers.size()) {
                columns.left.push_back(x);
                x += widthOf(room);
                columns.right.push_back(x);
            }
        }
        columns.width = x;
    }

    [[nodiscard]] double labelRoomOf(std::size_t room) const {
        double width = 0.0;
        for (const Crossing& crossing : rooms[room]) {
            if (crossing.piece == 0) {
                width = std::max(width, edges[crossing.edge].labelWidth);
            }
        }
        return width;
    }

    [[nodiscard]] double widthOf(std::size_t layer) const {
        double width = 0.0;
        for (const std::size_t item : graph.layers[layer]) {
            if (!graph.items[item].isLine()) {
                const LayoutNode& node = nodes[graph.items[item].node];
                width = std::max({width, node.width, node.roomWidth});
            }
        }
        return width;
    }

    [[nodiscard]] DrawLine lineOf(std::size_t edge, const std::vector<double>& uprights,
                                  const LayerColumns& columns) const {
        const LayerChain& chain = graph.chains[edge];
        const LayerItem& first = graph.items[chain.items.front()];
        const LayerItem& last = graph.items[chain.items.back()];
        const auto middleOf = [&](const LayerItem& item) {
            return (columns.left[item.layer] + columns.right[item.layer]) / 2;
        };
        DrawLine line;
        if (const auto& exit = edges[edge].exit) {
            line.push_back({middleOf(first) + exit->x, first.y + exit->y});
            line.push_back({line.back().x, first.y + edges[edge].exitDepth});
        } else {
            line.push_back({middleOf(first) + nodes[first.node].width / 2, first.y});
        }
        for (std::size_t piece = 0; piece < uprights.size(); ++piece) {
            const double toY = graph.items[chain.items[piece + 1]].y;
            if (std::abs(line.back().y - toY) < SameHeight) {
                continue;
            }
            line.push_back({uprights[piece], line.back().y});
            line.push_back({uprights[piece], toY});
        }
        line.push_back({middleOf(last) - nodes[last.node].width / 2, line.back().y});
        return line;
    }

    const LayerGraph& graph;
    const std::vector<LayoutNode>& nodes;
    const std::vector<LayoutEdge>& edges;
    std::vector<std::vector<Crossing>> rooms;
    std::vector<double> roomStart;
};

}  // namespace

std::vector<DrawLine> routeLines(const LayerGraph& graph, const std::vector<LayoutNode>& nodes,
                                 const std::vector<LayoutEdge>& edges, LayerColumns& columns) {
    return LineRouter(graph, nodes, edges).route(columns);
}

}  // namespace mero
