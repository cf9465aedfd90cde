#pragma once

#include "platform/interchange/bpmn_model.h"
#include "platform/interchange/xml_document.h"

namespace mero {

/// Reads BPMN 2.0 XML (OMG formal/2011-01-03) with any prefix. Elements of other namespaces are passed over
/// wherever they stand. Throws `DocumentRefused` for a root other than `definitions`.
BpmnFile readBpmn(const XmlDocument& document);

}  // namespace mero
