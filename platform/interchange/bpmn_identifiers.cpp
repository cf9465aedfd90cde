#include "platform/interchange/bpmn_identifiers.h"

namespace mero {

BpmnIdentifiers::BpmnIdentifiers(const BpmnFile& file, const BpmnNotes& notes) {
    for (const BpmnScope& process : file.processes) {
        take(process, notes);
        takeContent(process, notes);
    }
}

std::string BpmnIdentifiers::resolved(const std::string& reference) const {
    const std::size_t colon = reference.find(':');
    return colon == std::string::npos || contains(reference) ? reference : reference.substr(colon + 1);
}

void BpmnIdentifiers::takeContent(const BpmnScope& scope, const BpmnNotes& notes) {
    for (const BpmnNode& node : scope.nodes) {
        take(node, notes);
        for (const BpmnScope& content : node.content) {
            takeContent(content, notes);
        }
    }
    for (const BpmnFlow& flow : scope.flows) {
        take(flow, notes);
    }
}

void BpmnIdentifiers::take(const BpmnElement& element, const BpmnNotes& notes) {
    if (!element.id.empty() && !identifiers.insert(element.id).second) {
        notes.refuse(element, "another element has this identifier");
    }
}

}  // namespace mero
