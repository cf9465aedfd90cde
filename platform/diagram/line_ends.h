#pragma once

#include "platform/diagram/process_diagram.h"

namespace mero {

/// Whether a point lies inside of a shape as it is drawn: events are ellipses, gateways diamonds.
[[nodiscard]] bool isInside(const DiagramShape& shape, const DrawPoint& point);

/// Lets arrows begin and end at the borders of shapes: takes away what of a line lies inside of the shapes at
/// its ends, and prolongs a line that ends a little before.
void endAtBorders(DrawLine& line, const DiagramShape& from, const DiagramShape& to);

}  // namespace mero
