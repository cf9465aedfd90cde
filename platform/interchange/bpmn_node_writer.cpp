#include "platform/interchange/bpmn_node_writer.h"

#include <fmt/format.h>
#include <optional>

#include "platform/interchange/bpmn_kinds.h"

namespace mero {

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
    }
    describeEvent(node, object);
    noteOddities(node, className);
}

void BpmnNodeWriter::describeEvent(const BpmnNode& node, MeroId object) {
    if (node.kind == "boundaryEvent" && !node.interrupting) {
        writer.set(object, "Interrupting", 0);
    }
    const bool waits = node.kind == "boundaryEvent" || node.kind == "intermediateCatchEvent";
    if (!waits || node.timerText.empty()) {
        return;
    }
    if (const std::optional<double> seconds = secondsOfDuration(node.timerText)) {
        setText(object, "Duration", fmt::format("fixed({})", *seconds));
    } else {
        notes.add(node, fmt::format("the duration \"{}\" isn't used", node.timerText));
    }
}

void BpmnNodeWriter::noteOddities(const BpmnNode& node, std::string_view className) {
    const bool isEvent = node.kind.ends_with("Event");
    if (isEvent && !isExecutedEvent(node)) {
        notes.add(node, fmt::format("{} ({} event)", NotExecuted, eventKindOf(node)));
    } else if (node.kind == "complexGateway") {
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

void BpmnNodeWriter::setText(MeroId object, std::string_view attribute, const std::string& value) {
    if (!value.empty()) {
        writer.set(object, attribute, SV::String(value));
    }
}

}  // namespace mero
