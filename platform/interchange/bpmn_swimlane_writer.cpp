#include "platform/interchange/bpmn_swimlane_writer.h"

#include "platform/interchange/name_rules.h"

namespace mero {

void BpmnSwimlaneWriter::write(const BpmnScope& scope, MeroId model) {
    for (const BpmnParticipant& participant : file.participants) {
        if (!scope.id.empty() && identifiers.resolved(participant.process) == scope.id) {
            writeOne(participant, "Pool", model);
        }
    }
    for (const BpmnLane& lane : scope.lanes) {
        writeOne(lane, "Lane", model);
    }
}

void BpmnSwimlaneWriter::writeOne(const BpmnElement& element, std::string_view className, MeroId model) {
    const auto bounds = file.bounds.find(element.id);
    if (bounds == file.bounds.end()) {
        return;
    }
    const std::string name =
        freeName(element.name.empty() ? std::string(className) : element.name,
                 [&](const std::string& wanted) { return writer.isNameTaken(model, wanted); });
    const MeroId object = writer.addObject(model, className, name);
    writer.set(object, "BPMN element", SV::String(element.kind));
    writer.set(object, "BPMN identifier", SV::String(element.id));
    writer.set(object, "Bounds", SV::String(bounds->second));
}

}  // namespace mero
