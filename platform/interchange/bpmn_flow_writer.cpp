#include "platform/interchange/bpmn_flow_writer.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>

#include "platform/interchange/bpmn_kinds.h"

namespace mero {

void BpmnFlowWriter::writeFlows(const BpmnScope& scope, const BpmnObjects& nodes) {
    std::set<std::string> defaults;
    for (const BpmnNode& node : scope.nodes) {
        defaults.insert(identifiers.resolved(node.defaultFlow));
    }
    for (const BpmnFlow& flow : scope.flows) {
        const auto from = nodes.find(identifiers.resolved(flow.source));
        const auto to = nodes.find(identifiers.resolved(flow.target));
        if (from == nodes.end() || to == nodes.end()) {
            noteOddFlow(flow, from == nodes.end() ? flow.source : flow.target);
            continue;
        }
        const MeroId relation = writer.relate("Sequence flow", from->second, to->second);
        describeFlow(flow, relation);
        if (!flow.id.empty() && defaults.contains(flow.id)) {
            writer.setRelation(relation, "Default", 1);
        }
    }
    linkEvents(scope, nodes);
    attachBoundaryEvents(scope, nodes);
}

void BpmnFlowWriter::noteOddFlow(const BpmnFlow& flow, const std::string& end) {
    if (end.empty() || !identifiers.contains(identifiers.resolved(end))) {
        notes.refuse(flow, fmt::format("there is no flow node \"{}\"", end));
    }
    notes.add(flow, fmt::format("left out, \"{}\" isn't an object of the same model", end));
}

void BpmnFlowWriter::describeFlow(const BpmnFlow& flow, MeroId relation) {
    const std::string& condition = flow.condition.empty() ? flow.name : flow.condition;
    const auto set = [&](std::string_view attribute, const std::string& value) {
        if (!value.empty()) {
            writer.setRelation(relation, attribute, SV::String(value));
        }
    };
    set("BPMN identifier", flow.id);
    set("Condition", condition);
    set("Label", flow.name);
    if (const auto points = file.waypoints.find(flow.id); points != file.waypoints.end()) {
        set("Waypoints", points->second);
    }
}

void BpmnFlowWriter::linkEvents(const BpmnScope& scope, const BpmnObjects& nodes) {
    const auto isLink = [](const BpmnNode& node, std::string_view kind) {
        return node.kind == kind && eventKindOf(node) == "link";
    };
    for (const BpmnNode& from : scope.nodes) {
        if (!isLink(from, "intermediateThrowEvent")) {
            continue;
        }
        const auto to = std::find_if(scope.nodes.begin(), scope.nodes.end(), [&](const BpmnNode& node) {
            return isLink(node, "intermediateCatchEvent") && node.linkName == from.linkName &&
                   nodes.contains(node.id);
        });
        if (to == scope.nodes.end() || !nodes.contains(from.id)) {
            notes.add(from, fmt::format("{} (no link of this name to go on at)", NotExecuted));
            continue;
        }
        writer.relate("Sequence flow", nodes.at(from.id), nodes.at(to->id));
    }
}

void BpmnFlowWriter::attachBoundaryEvents(const BpmnScope& scope, const BpmnObjects& nodes) {
    for (const BpmnNode& node : scope.nodes) {
        if (node.kind != "boundaryEvent") {
            continue;
        }
        const auto host = nodes.find(identifiers.resolved(node.attachedTo));
        const auto event = nodes.find(node.id);
        if (host == nodes.end() || event == nodes.end()) {
            notes.add(node, fmt::format("{} (attached to nothing)", NotExecuted));
            continue;
        }
        writer.relate("Attached to", event->second, host->second);
    }
}

void BpmnFlowWriter::writeMessageFlows(const BpmnObjects& nodes) {
    for (const BpmnFlow& flow : file.messageFlows) {
        const auto from = nodes.find(identifiers.resolved(flow.source));
        const auto to = nodes.find(identifiers.resolved(flow.target));
        if (from == nodes.end() || to == nodes.end()) {
            notes.add(flow, "left out, one end isn't a flow node");
            continue;
        }
        writer.relate("Message flow", from->second, to->second);
    }
}

}  // namespace mero
