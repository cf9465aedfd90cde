#pragma once

#include <string>
#include <unordered_map>

#include "platform/interchange/bpmn_identifiers.h"
#include "platform/interchange/bpmn_model.h"
#include "platform/interchange/bpmn_notes.h"
#include "platform/interchange/object_writer.h"

namespace mero {

/// Objects by the identifiers of their elements.
using BpmnObjects = std::unordered_map<std::string, MeroId>;

/// Makes the relations between flow nodes.
class BpmnFlowWriter {
public:
    BpmnFlowWriter(const BpmnFile& readFile, const BpmnIdentifiers& knownIdentifiers,
                   ObjectWriter& objectWriter, BpmnNotes& importNotes)
        : file(readFile), identifiers(knownIdentifiers), writer(objectWriter), notes(importNotes) {}

    /// Sequence flows, links and attached events of one scope, whose objects are `nodes`.
    void writeFlows(const BpmnScope& scope, const BpmnObjects& nodes);
    /// `nodes` are those of all scopes.
    void writeMessageFlows(const BpmnObjects& nodes);

private:
    /// A flow to something that is there but isn't an object of this model can be done without; one to
    /// nothing shows that the file is broken.
    void noteOddFlow(const BpmnFlow& flow, const std::string& end);
    void describeFlow(const BpmnFlow& flow, MeroId relation);
    /// A throwing link goes on at the catching link of its name.
    void linkEvents(const BpmnScope& scope, const BpmnObjects& nodes);
    void attachBoundaryEvents(const BpmnScope& scope, const BpmnObjects& nodes);

    const BpmnFile& file;
    const BpmnIdentifiers& identifiers;
    ObjectWriter& writer;
    BpmnNotes& notes;
};

}  // namespace mero
