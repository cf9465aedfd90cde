#pragma once

#include <map>

#include "platform/diagram/process_diagram.h"

namespace mero {

/// Gives shapes without bounds and lines without points their places; lines end at the borders of shapes.
/// `hosts` tells what boundary events are attached to.
void placeMissing(ProcessDiagram& diagram, const std::map<MeroId, MeroId>& hosts);

}  // namespace mero
