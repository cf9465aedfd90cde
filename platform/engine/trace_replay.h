#pragma once

#include <cstddef>
#include <functional>

#include "platform/engine/control_component.h"
#include "platform/engine/event_trace.h"

namespace mero {

/// Asked every 1,000 events with the number of events played; false stops.
using ReplayProgress = std::function<bool(std::size_t)>;

/// Plays the events exactly as they stand, all of them, to every component that is attached; also those
/// behind the end of the run. False if `progress` stopped it.
bool replayTrace(const EventTrace& trace, ControlComponent& control, const ReplayProgress& progress = {});

}  // namespace mero
