#pragma once

#include <string>

#include "platform/interchange/bpmn_identifiers.h"
#include "platform/interchange/object_writer.h"

namespace mero {

/// Keeps the pool and the lanes of a process as far as the file draws them, so that a diagram can show them.
/// They have no part in a run; what lanes mean for it is the business of `BpmnLaneWriter`.
class BpmnSwimlaneWriter {
public:
    /// All have to outlive this.
    BpmnSwimlaneWriter(const BpmnFile& readFile, const BpmnIdentifiers& knownIdentifiers,
                       ObjectWriter& objectWriter)
        : file(readFile), identifiers(knownIdentifiers), writer(objectWriter) {}

    void write(const BpmnScope& scope, MeroId model);

private:
    void writeOne(const BpmnElement& element, std::string_view className, MeroId model);

    const BpmnFile& file;
    const BpmnIdentifiers& identifiers;
    ObjectWriter& writer;
};

}  // namespace mero
