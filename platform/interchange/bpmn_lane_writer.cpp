#include "platform/interchange/bpmn_lane_writer.h"

#include <algorithm>
#include <fmt/format.h>

#include "platform/interchange/environment_model.h"
#include "platform/interchange/name_rules.h"

namespace mero {

void BpmnLaneWriter::write(const BpmnScope& process) {
    for (std::size_t index = 0; index < process.lanes.size(); ++index) {
        const BpmnLane& lane = process.lanes[index];
        writeLane(process, lane, lane.name.empty() ? fmt::format("Lane {}", index + 1) : lane.name);
    }
}

void BpmnLaneWriter::writePerformers(const BpmnScope& scope, const BpmnFile& file) {
    for (const BpmnNode& node : scope.nodes) {
        writePerformer(node, file);
        for (const BpmnScope& content : node.content) {
            writePerformers(content, file);
        }
    }
}

void BpmnLaneWriter::writePerformer(const BpmnNode& node, const BpmnFile& file) {
    std::string name = node.performer;
    const std::string reference = identifiers.resolved(node.performerResource);
    for (const BpmnElement& resource : file.resources) {
        if (!reference.empty() && resource.id == reference) {
            name = resource.name.empty() ? resource.id : resource.name;
        }
    }
    const bool isExpression = name.find_first_of("{}()$#") != std::string::npos;
    if (isExpression || (name.empty() && !reference.empty())) {
        notes.add(node, fmt::format("the performer \"{}\" isn't used", isExpression ? name : reference));
    } else if (!name.empty()) {
        makeRole(name);
        setPerformer(node, "role " + kilnString(name));
    }
}

void BpmnLaneWriter::makeRole(const std::string& name) {
    const MeroId environment = takeEnvironment(repository, report);
    if (!writer.isNameTaken(environment, name)) {
        (void)writer.addObject(environment, "Role", name);
    }
}

void BpmnLaneWriter::writeLane(const BpmnScope& process, const BpmnLane& lane, const std::string& name) {
    makeRole(name);
    const std::string rule = "role " + kilnString(name);
    for (const std::string& member : lane.members) {
        const std::string id = identifiers.resolved(member);
        const auto node = std::find_if(process.nodes.begin(), process.nodes.end(),
                                       [&id](const BpmnNode& candidate) { return candidate.id == id; });
        if (node != process.nodes.end()) {
            setPerformer(*node, rule);
        } else if (nodes.contains(id)) {
            setPerformer(nodes.at(id), rule);
        } else if (!identifiers.contains(id)) {
            notes.add(lane, fmt::format("names \"{}\", which isn't there", member));
        }
    }
}

void BpmnLaneWriter::setPerformer(const BpmnNode& node, const std::string& rule) {
    if (const auto object = nodes.find(node.id); object != nodes.end()) {
        setPerformer(object->second, rule);
    }
    for (const BpmnScope& content : node.content) {
        for (const BpmnNode& inner : content.nodes) {
            setPerformer(inner, rule);
        }
    }
}

void BpmnLaneWriter::setPerformer(MeroId object, const std::string& rule) {
    if (writer.hasAttribute(object, "Performer")) {
        writer.set(object, "Performer", SV::String(rule));
    }
}

}  // namespace mero
