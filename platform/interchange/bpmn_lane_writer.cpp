#include "platform/interchange/bpmn_lane_writer.h"

#include <fmt/format.h>

#include "platform/interchange/environment_model.h"
#include "platform/interchange/name_rules.h"

namespace mero {

void BpmnLaneWriter::write(const BpmnScope& process) {
    for (std::size_t index = 0; index < process.lanes.size(); ++index) {
        const BpmnLane& lane = process.lanes[index];
        writeLane(lane, lane.name.empty() ? fmt::format("Lane {}", index + 1) : lane.name);
    }
}

void BpmnLaneWriter::writeLane(const BpmnLane& lane, const std::string& name) {
    const MeroId environment = takeEnvironment(repository, report);
    if (!writer.isNameTaken(environment, name)) {
        (void)writer.addObject(environment, "Role", name);
    }
    for (const std::string& member : lane.members) {
        const auto object = nodes.find(identifiers.resolved(member));
        if (object == nodes.end()) {
            if (!identifiers.contains(identifiers.resolved(member))) {
                notes.add(lane, fmt::format("names \"{}\", which isn't there", member));
            }
        } else if (writer.hasAttribute(object->second, "Performer")) {
            writer.set(object->second, "Performer", SV::String("role " + kilnString(name)));
        }
    }
}

}  // namespace mero
