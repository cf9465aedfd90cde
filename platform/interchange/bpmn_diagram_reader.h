#pragma once

#include "platform/interchange/bpmn_model.h"
#include "platform/interchange/xml_document.h"

namespace mero {

inline constexpr std::string_view BpmnDiagramNamespace = "http://www.omg.org/spec/BPMN/20100524/DI";

/// Reads the shapes and edges of an element `BPMNDiagram` into `bounds` and `waypoints` of the file; what has
/// no good coordinates is passed over.
void readBpmnDiagram(const XmlElement& diagram, BpmnFile& file);

}  // namespace mero
