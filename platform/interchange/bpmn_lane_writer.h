#pragma once

#include <string>

#include "platform/interchange/bpmn_flow_writer.h"
#include "platform/interchange/import_report.h"

namespace mero {

/// Makes roles of the lanes of a process, which perform the activities in them, and of the performers that
/// activities name.
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
    /// To be called after the lanes, since a performer says more than a lane.
    void writePerformers(const BpmnScope& scope, const BpmnFile& file);

private:
    void writeLane(const BpmnScope& process, const BpmnLane& lane, const std::string& name);
    void writePerformer(const BpmnNode& node, const BpmnFile& file);
    void makeRole(const std::string& name);
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
