#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/interchange/bpmn_model.h"

namespace mero {

/// Class of the library for an element such as "userTask"; empty for an element that is no flow node.
std::string_view classOfKind(std::string_view kind);

/// Word of the library for the kind of an event: "none", "timer" …, "multiple" for several definitions.
std::string eventKindOf(const BpmnNode& node);

/// True for the events that the engine carries out as they are meant.
bool isExecutedEvent(const BpmnNode& node);

/// Seconds of a duration of weeks, days, hours, minutes and seconds (ISO 8601); none for years, months and
/// other texts.
std::optional<double> secondsOfDuration(std::string_view text);

}  // namespace mero
