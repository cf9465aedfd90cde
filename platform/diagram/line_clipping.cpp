#include "platform/diagram/line_clipping.h"

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

void clipAtStart(DrawLine& line, const DiagramShape& shape) {
    if (!isInside(shape, line.front())) {
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

void clipAtEnds(DrawLine& line, const DiagramShape& from, const DiagramShape& to) {
    clipAtStart(line, from);
    std::reverse(line.begin(), line.end());
    clipAtStart(line, to);
    std::reverse(line.begin(), line.end());
}

}  // namespace mero
