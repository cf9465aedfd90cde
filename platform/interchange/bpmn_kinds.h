#pragma once

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

/// True for elements inside of others that describe them and need no word in a report.
bool isDescription(std::string_view kind);

/// True for elements that name who carries out an activity.
bool isResourceRole(std::string_view kind);

/// True for elements below the root that others refer to and that do nothing by themselves.
bool isDefinition(std::string_view kind);

/// Word of the library for an event definition such as "timerEventDefinition"; empty for other elements.
std::string_view eventWordOf(std::string_view kind);

}  // namespace mero
