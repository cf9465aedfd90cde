#pragma once

#include <string>

#include "platform/interchange/bpmn_flow_writer.h"
#include "platform/interchange/import_report.h"

namespace mero {

/// Makes the lanes of a process roles, which perform the activities in them.
class BpmnLaneWriter {
public:
    BpmnLaneWriter(const BpmnIdentifiers& knownIdentifiers, const BpmnObjects& knownNodes, Repository& target,
                   BpmnNotes& importNotes, ImportReport& importReport)
        : identifiers(knownIdentifiers),
          nodes(knownNodes),
          repository(target),
          writer(target),
          notes(importNotes),
          report(importReport) {}

    void write(const BpmnScope& process);

private:
    void writeLane(const BpmnScope& process, const BpmnLane& lane, const std::string& name);
    /// Who performs a sub-process performs the activities inside of it, too.
    void setPerformer(const BpmnNode& node, const std::string& rule);
    void setPerformer(MeroId object, const std::string& rule);

    const BpmnIdentifiers& identifiers;
    const BpmnObjects& nodes;
    Repository& repository;
    ObjectWriter writer;
    BpmnNotes& notes;
    ImportReport& report;
};

}  // namespace mero
