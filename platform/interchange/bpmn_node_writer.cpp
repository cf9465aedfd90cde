#include "platform/interchange/bpmn_node_writer.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>

#include "platform/interchange/bpmn_kinds.h"
#include "platform/interchange/iso_duration.h"

namespace mero {

namespace {

/// Seconds of a duration, or between the times of a cycle "R3/PT1H"; a start event needs a cycle.
std::optional<double> secondsOfTimer(const BpmnNode& node) {
    if (node.timerKind == "timeCycle" && node.timerText.starts_with("R")) {
        const std::size_t slash = node.timerText.rfind('/');
        return slash == std::string::npos
                   ? std::nullopt
                   : secondsOfDuration(std::string_view(node.timerText).substr(slash + 1));
    }
    const bool once = node.timerKind == "timeDuration" && node.kind != "startEvent";
    return once ? secondsOfDuration(node.timerText) : std::nullopt;
}

}  // namespace

void BpmnNodeWriter::describe(const BpmnNode& node, std::string_view className, MeroId object) {
    setText(object, "BPMN element", node.kind);
    setText(object, "BPMN identifier", node.id);
    if (const auto bounds = file.bounds.find(node.id); bounds != file.bounds.end()) {
        setText(object, "Bounds", bounds->second);
    }
    if (writer.hasAttribute(object, "Event kind")) {
        setText(object, "Event kind", eventKindOf(node));
    }
    if (node.loop != "none" && writer.hasAttribute(object, "Loop")) {
        setText(object, "Loop", node.loop);
        writer.set(object, "Loop maximum", node.loopMaximum);
        if (!node.loopText.empty() && node.loopMaximum == 0) {
            notes.add(node, fmt::format("the number of passes \"{}\" isn't used", node.loopText));
        }
    }
    describeEvent(node, object);
    if (node.kind.ends_with("Event") && !isExecutedEvent(node)) {
        oddEvents.emplace_back(&node, object);
    }
    noteOddities(node, className);
}

void BpmnNodeWriter::describeEvent(const BpmnNode& node, MeroId object) {
    if (node.kind == "boundaryEvent" && !node.interrupting) {
        writer.set(object, "Interrupting", 0);
    }
    if (!node.timerText.empty()) {
        describeTimer(node, object);
    }
}

void BpmnNodeWriter::describeTimer(const BpmnNode& node, MeroId object) {
    const std::optional<double> seconds = secondsOfTimer(node);
    if (!seconds) {
        notes.add(node, fmt::format("the time \"{}\" isn't used", node.timerText));
    } else if (node.kind == "startEvent") {
        setText(object, "Arrival", fmt::format("fixed({})", *seconds));
    } else {
        setText(object, "Duration", fmt::format("fixed({})", *seconds));
    }
}

void BpmnNodeWriter::noteOddities(const BpmnNode& node, std::string_view className) {
    if (node.kind == "complexGateway") {
        notes.add(node, "imported as an exclusive gateway");
    } else if (node.kind == "callActivity" && className == "Task") {
        notes.add(node, "imported as a task, what it calls isn't there");
    } else if (!node.content.empty() && className == "Task") {
        notes.add(node, "imported as a task, it is empty");
    } else if (node.kind == "transaction" || node.kind == "adHocSubProcess") {
        notes.add(node, "imported as a plain sub-process");
    }
    if (node.forCompensation) {
        notes.add(node, fmt::format("{} (compensation)", NotExecuted));
    }
}

void BpmnNodeWriter::noteEvents() const {
    for (const auto& [node, object] : oddEvents) {
        if (eventKindOf(*node) == "message" && receivesMessages(object)) {
            continue;
        }
        const Object& event = *repository.findObject(object);
        const bool acts = !repository.textOf(event, "Duration").IsEmpty() ||
                          repository.numberOf(event, "Probability") > 0.0;
        notes.add(*node,
                  acts ? fmt::format("acts by its time and chance, not as a {} event", eventKindOf(*node))
                       : fmt::format("{} ({} event)", NotExecuted, eventKindOf(*node)));
    }
}

bool BpmnNodeWriter::receivesMessages(MeroId object) const {
    const auto relations = repository.relationsTo(object);
    return std::any_of(relations.begin(), relations.end(), [this](MeroId relation) {
        const MeroId classId = repository.findRelation(relation)->classId;
        return repository.library().findRelationClass(classId)->name == "Message flow";
    });
}

void BpmnNodeWriter::setText(MeroId object, std::string_view attribute, const std::string& value) {
    if (!value.empty()) {
        writer.set(object, attribute, SV::String(value));
    }
}

}  // namespace mero
