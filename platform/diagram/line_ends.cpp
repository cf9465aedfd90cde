#include "platform/diagram/line_ends.h"

#include <algorithm>
#include <cmath>

namespace mero {

namespace {

/// Where a line from a point inside leaves the shape.
DrawPoint leavingPoint(const DiagramShape& shape, DrawPoint inside, DrawPoint outside) {
    constexpr int Halvings = 24;
    for (int each = 0; each < Halvings; ++each) {
        const DrawPoint middle{(inside.x + outside.x) / 2, (inside.y + outside.y) / 2};
        (isInside(shape, middle) ? inside : outside) = middle;
    }
    return outside;
}

/// The point nearest to the middle of the shape on the line's first piece, prolonged beyond its start.
DrawPoint prolongedToMiddle(const DrawLine& line, DrawPoint middle) {
    const DrawPoint along{line[0].x - line[1].x, line[0].y - line[1].y};
    const double square = along.x * along.x + along.y * along.y;
    if (square == 0.0) {
        return middle;
    }
    const double steps =
        std::max(0.0, ((middle.x - line[0].x) * along.x + (middle.y - line[0].y) * along.y) / square);
    return {line[0].x + steps * along.x, line[0].y + steps * along.y};
}

/// Tools that take every shape for a rectangle let lines end before the border of a gateway or an event.
void prolongToStart(DrawLine& line, const DiagramShape& shape) {
    constexpr double Gap = 0.5;  // drawing units, which nobody sees
    const DrawRect& bounds = shape.bounds;
    const double reach = std::min(bounds.width, bounds.height) / 4;
    const DrawRect near{bounds.x - reach, bounds.y - reach, bounds.width + 2 * reach,
                        bounds.height + 2 * reach};
    if (!near.contains(DrawRect{line[0].x, line[0].y, 0.0, 0.0})) {
        return;
    }
    const DrawPoint straight = prolongedToMiddle(line, bounds.centre());
    const DrawPoint border =
        leavingPoint(shape, isInside(shape, straight) ? straight : bounds.centre(), line[0]);
    if (std::hypot(border.x - line[0].x, border.y - line[0].y) > Gap) {
        line[0] = border;
    }
}

void endAtStart(DrawLine& line, const DiagramShape& shape) {
    if (!isInside(shape, line.front())) {
        prolongToStart(line, shape);
        return;
    }
    while (line.size() > 2 && isInside(shape, line[1])) {
        line.erase(line.begin());
    }
    if (!isInside(shape, line[1])) {
        line[0] = leavingPoint(shape, line[0], line[1]);
    }
}

}  // namespace

bool isInside(const DiagramShape& shape, const DrawPoint& point) {
    const DrawPoint centre = shape.bounds.centre();
    const double dx = std::abs(point.x - centre.x) / (shape.bounds.width / 2);
    const double dy = std::abs(point.y - centre.y) / (shape.bounds.height / 2);
    if (isEvent(shape.kind)) {
        return dx * dx + dy * dy < 1.0;
    }
    return isGateway(shape.kind) ? dx + dy < 1.0 : dx < 1.0 && dy < 1.0;
}

void endAtBorders(DrawLine& line, const DiagramShape& from, const DiagramShape& to) {
    endAtStart(line, from);
    std::reverse(line.begin(), line.end());
    endAtStart(line, to);
    std::reverse(line.begin(), line.end());
}

}  // namespace mero
