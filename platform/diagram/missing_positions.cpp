#include "platform/diagram/missing_positions.h"

#include <algorithm>
#include <map>

#include "platform/diagram/layered_layout.h"
#include "platform/diagram/line_ends.h"

namespace mero {

namespace {

struct Size {
    double width;
    double height;
};

Size usualSize(const DiagramShape& shape) {
    if (isEvent(shape.kind)) {
        return {36.0, 36.0};
    }
    return isGateway(shape.kind) ? Size{50.0, 50.0} : Size{120.0, 72.0};
}

bool isPlaced(const DiagramShape& shape) {
    return shape.bounds.width > 0.0;
}

class MissingPlacer {
public:
    explicit MissingPlacer(ProcessDiagram& unfinished) : diagram(unfinished) {
        for (const DiagramShape& shape : diagram.shapes) {
            if (shape.isBoundary()) {
                hosts.emplace(shape.object, shape.host);
            }
        }
    }

    void place() {
        dropMeaninglessSwimlanes();
        indexShapes();
        findMissing();
        if (!missing.empty()) {
            layOutMissing();
        }
        for (DiagramShape& shape : diagram.shapes) {
            if (!isPlaced(shape)) {
                placeOnBorder(shape);
            }
        }
        for (DiagramEdge& edge : diagram.edges) {
            const DiagramShape& from = shapeOf(edge.from);
            const DiagramShape& to = shapeOf(edge.to);
            if (edge.points.empty()) {
                edge.points = {from.bounds.centre(), to.bounds.centre()};
            }
            endAtBorders(edge.points, from, to);
        }
    }

private:
    static constexpr double EventDistance = 40.0;
    static constexpr double LineDistance = 10.0;
    static constexpr double LabelWidth = 100.0;
    static constexpr double WidthOfLetter = 6.5;
    static constexpr double LabelHeight = 32.0;

    /// Pools and lanes around shapes that have to be placed anew.
    void dropMeaninglessSwimlanes() {
        const bool isDrawn =
            std::any_of(diagram.shapes.begin(), diagram.shapes.end(), [](const DiagramShape& shape) {
                return !isSwimlane(shape.kind) && !shape.isBoundary() && isPlaced(shape);
            });
        std::erase_if(diagram.shapes, [&](const DiagramShape& shape) {
            return isSwimlane(shape.kind) && (!isDrawn || !isPlaced(shape));
        });
    }

    void indexShapes() {
        for (std::size_t each = 0; each < diagram.shapes.size(); ++each) {
            index.emplace(diagram.shapes[each].object, each);
        }
    }

    [[nodiscard]] DiagramShape& shapeOf(MeroId object) { return diagram.shapes[index.at(object)]; }

    [[nodiscard]] bool hangs(const DiagramShape& shape) const { return hosts.contains(shape.object); }

    void findMissing() {
        for (const DiagramShape& shape : diagram.shapes) {
            if (!isPlaced(shape) && !hangs(shape)) {
                numbers.emplace(shape.object, missing.size());
                missing.push_back(shape.object);
            }
        }
        for (const auto& [event, host] : hosts) {
            if (numbers.contains(host)) {
                shapeOf(event).bounds = {};
                hanging[host].push_back(event);
            }
        }
    }

    [[nodiscard]] LayoutNode nodeOf(const DiagramShape& shape) const {
        const Size size = usualSize(shape);
        LayoutNode node{size.width, size.height};
        if ((isEvent(shape.kind) || isGateway(shape.kind)) && !shape.label.empty()) {
            node.roomWidth = LabelWidth;
            node.roomBelow = LabelHeight;
        }
        if (const auto events = hanging.find(shape.object); events != hanging.end()) {
            const auto count = static_cast<double>(events->second.size());
            node.width = std::max(node.width, EventDistance * (count + 1));
            node.roomBelow = LabelHeight + EventDistance / 2 + LineDistance * count;
        }
        return node;
    }

    /// Where an event hangs, from the centre of its host.
    [[nodiscard]] DrawPoint hangingPlace(MeroId event, const LayoutNode& host) const {
        const auto& events = hanging.at(hosts.at(event));
        const auto number =
            static_cast<double>(std::find(events.begin(), events.end(), event) - events.begin());
        return {EventDistance * (number + 0.75) - host.width / 2, host.height / 2};
    }

    [[nodiscard]] LayoutEdge edgeOf(const DiagramEdge& edge, const std::vector<LayoutNode>& nodes) {
        LayoutEdge laidOut;
        laidOut.labelWidth = std::min(WidthOfLetter * static_cast<double>(edge.label.size()), LabelWidth);
        laidOut.to = numbers.at(edge.to);
        if (const auto host = hosts.find(edge.from); host != hosts.end()) {
            laidOut.from = numbers.at(host->second);
            const LayoutNode& node = nodes[laidOut.from];
            const auto& events = hanging.at(host->second);
            const auto fromRight =
                static_cast<double>(events.end() - std::find(events.begin(), events.end(), edge.from));
            const DrawPoint place = hangingPlace(edge.from, node);
            const double radius = usualSize(shapeOf(edge.from)).height / 2;
            laidOut.exit = DrawPoint{place.x, place.y + radius};
            laidOut.exitDepth = place.y + radius + LineDistance * fromRight;
        } else {
            laidOut.from = numbers.at(edge.from);
        }
        return laidOut;
    }

    [[nodiscard]] bool isLaidOut(const DiagramEdge& edge) const {
        const auto host = hosts.find(edge.from);
        return numbers.contains(host != hosts.end() ? host->second : edge.from) && numbers.contains(edge.to);
    }

    void layOutMissing() {
        std::vector<LayoutNode> nodes;
        for (const MeroId object : missing) {
            nodes.push_back(nodeOf(shapeOf(object)));
        }
        std::vector<LayoutEdge> edges;
        std::vector<DiagramEdge*> drawn;
        for (DiagramEdge& edge : diagram.edges) {
            if (isLaidOut(edge)) {
                edges.push_back(edgeOf(edge, nodes));
                drawn.push_back(&edge);
            }
        }
        const DrawPoint origin = freePlace();
        const LayoutResult layout = layOutInLayers(nodes, edges);
        for (std::size_t each = 0; each < missing.size(); ++each) {
            DrawRect& bounds = shapeOf(missing[each]).bounds;
            bounds = layout.nodes[each];
            bounds.x += origin.x;
            bounds.y += origin.y;
            placeHanging(missing[each], nodes[each]);
        }
        for (std::size_t each = 0; each < drawn.size(); ++each) {
            drawn[each]->points = layout.edges[each];
            for (DrawPoint& point : drawn[each]->points) {
                point.x += origin.x;
                point.y += origin.y;
            }
        }
    }

    void placeHanging(MeroId host, const LayoutNode& node) {
        const auto events = hanging.find(host);
        if (events == hanging.end()) {
            return;
        }
        const DrawPoint centre = shapeOf(host).bounds.centre();
        for (const MeroId event : events->second) {
            const Size size = usualSize(shapeOf(event));
            const DrawPoint place = hangingPlace(event, node);
            shapeOf(event).bounds = {centre.x + place.x - size.width / 2,
                                     centre.y + place.y - size.height / 2, size.width, size.height};
        }
    }

    /// Below everything that is drawn.
    [[nodiscard]] DrawPoint freePlace() const {
        DrawRect drawn;
        for (const DiagramShape& shape : diagram.shapes) {
            drawn = united(drawn, shape.bounds);
        }
        return drawn.height > 0.0 ? DrawPoint{drawn.x, drawn.bottom() + EventDistance} : DrawPoint{};
    }

    /// An event whose host has a place of its own.
    void placeOnBorder(DiagramShape& event) {
        const DrawRect& host = shapeOf(hosts.at(event.object)).bounds;
        const Size size = usualSize(event);
        const double x =
            host.x + EventDistance / 2 + EventDistance * eventsOnBorder[hosts.at(event.object)]++;
        event.bounds = {x - size.width / 2, host.bottom() - size.height / 2, size.width, size.height};
    }

    ProcessDiagram& diagram;
    std::map<MeroId, MeroId> hosts;  ///< of boundary events
    std::map<MeroId, std::size_t> index;
    std::vector<MeroId> missing;
    std::map<MeroId, std::size_t> numbers;  ///< of what is laid out
    std::map<MeroId, std::vector<MeroId>> hanging;
    std::map<MeroId, int> eventsOnBorder;
};

}  // namespace

void placeMissing(ProcessDiagram& diagram) {
    MissingPlacer(diagram).place();
}

}  // namespace mero
