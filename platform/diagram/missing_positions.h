#pragma once

#include "platform/diagram/process_diagram.h"

namespace mero {

/// Gives shapes without bounds and lines without points their places; lines end at the borders of shapes.
void placeMissing(ProcessDiagram& diagram);

}  // namespace mero
