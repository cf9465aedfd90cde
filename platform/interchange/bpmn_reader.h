#pragma once

#include <string_view>

#include "platform/interchange/bpmn_model.h"
#include "platform/support/result.h"

namespace mero {

/// Reads BPMN 2.0 XML (OMG formal/2011-01-03) from decoded text (`decodeXml`), with any prefix. Elements of
/// other namespaces are passed over wherever they stand. Refused with line and column: text that isn't XML,
/// declared entities, nesting deeper than 256 levels, a root other than `definitions`.
Result<BpmnFile> readBpmn(std::string_view text, std::string_view source);

}  // namespace mero
