#include "platform/interchange/bpmn_kinds.h"

#include <algorithm>
#include <array>

namespace mero {

namespace {

struct NodeClass {
    std::string_view kind;
    std::string_view className;
};
constexpr std::array NodeClasses{
    NodeClass{"task", "Task"},
    NodeClass{"userTask", "User task"},
    NodeClass{"serviceTask", "Service task"},
    NodeClass{"manualTask", "Manual task"},
    NodeClass{"scriptTask", "Script task"},
    NodeClass{"businessRuleTask", "Business rule task"},
    NodeClass{"sendTask", "Send task"},
    NodeClass{"receiveTask", "Receive task"},
    NodeClass{"callActivity", "Call activity"},
    NodeClass{"subProcess", "Sub-process"},
    NodeClass{"transaction", "Sub-process"},
    NodeClass{"adHocSubProcess", "Sub-process"},
    NodeClass{"startEvent", "Start event"},
    NodeClass{"endEvent", "End event"},
    NodeClass{"intermediateCatchEvent", "Intermediate event"},
    NodeClass{"intermediateThrowEvent", "Intermediate event"},
    NodeClass{"boundaryEvent", "Intermediate event"},
    NodeClass{"exclusiveGateway", "Exclusive gateway"},
    NodeClass{"inclusiveGateway", "Inclusive gateway"},
    NodeClass{"parallelGateway", "Parallel gateway"},
    NodeClass{"eventBasedGateway", "Event-based gateway"},
    NodeClass{"complexGateway", "Exclusive gateway"},
};

/// Parts of a scope that describe it and need no word in a report.
constexpr std::array DescribingElements{
    std::string_view("documentation"),
    std::string_view("extensionElements"),
    std::string_view("incoming"),
    std::string_view("outgoing"),
    std::string_view("ioSpecification"),
    std::string_view("ioBinding"),
    std::string_view("property"),
    std::string_view("dataInputAssociation"),
    std::string_view("dataOutputAssociation"),
    std::string_view("completionCondition"),
    std::string_view("standardLoopCharacteristics"),
    std::string_view("multiInstanceLoopCharacteristics"),
    std::string_view("supports"),
};

/// Roots that others refer to and that do nothing by themselves.
constexpr std::array DefiningElements{
    std::string_view("documentation"),  std::string_view("extensionElements"),
    std::string_view("extension"),      std::string_view("import"),
    std::string_view("itemDefinition"), std::string_view("message"),
    std::string_view("signal"),         std::string_view("error"),
    std::string_view("escalation"),     std::string_view("resource"),
    std::string_view("interface"),      std::string_view("category"),
    std::string_view("dataStore"),      std::string_view("relationship"),
    std::string_view("endPoint"),       std::string_view("partnerEntity"),
    std::string_view("partnerRole"),    std::string_view("correlationProperty"),
};

struct EventWord {
    std::string_view element;
    std::string_view word;
};
constexpr std::array EventWords{
    EventWord{"timerEventDefinition", "timer"},
    EventWord{"messageEventDefinition", "message"},
    EventWord{"signalEventDefinition", "signal"},
    EventWord{"errorEventDefinition", "error"},
    EventWord{"escalationEventDefinition", "escalation"},
    EventWord{"conditionalEventDefinition", "conditional"},
    EventWord{"linkEventDefinition", "link"},
    EventWord{"compensateEventDefinition", "compensation"},
    EventWord{"cancelEventDefinition", "cancel"},
    EventWord{"terminateEventDefinition", "terminate"},
};

template <class List>
bool holds(const List& list, std::string_view word) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

}  // namespace

std::string_view classOfKind(std::string_view kind) {
    const auto* found = std::find_if(NodeClasses.begin(), NodeClasses.end(),
                                     [kind](const NodeClass& entry) { return entry.kind == kind; });
    return found == NodeClasses.end() ? std::string_view{} : found->className;
}

std::string eventKindOf(const BpmnNode& node) {
    if (node.eventKinds.empty()) {
        return "none";
    }
    return node.eventKinds.size() == 1 ? node.eventKinds.front() : "multiple";
}

bool isExecutedEvent(const BpmnNode& node) {
    const std::string kind = eventKindOf(node);
    const auto isOneOf = [&kind](std::initializer_list<std::string_view> words) {
        return holds(words, kind);
    };
    if (node.kind == "startEvent") {
        return isOneOf({"none", "timer", "message"});
    }
    if (node.kind == "endEvent") {
        return isOneOf({"none", "terminate", "error"});
    }
    if (node.kind == "boundaryEvent") {
        return isOneOf({"timer", "error"});
    }
    return isOneOf({"none", "timer", "message", "link"});
}

bool isDescription(std::string_view kind) {
    return holds(DescribingElements, kind) || isResourceRole(kind);
}

bool isResourceRole(std::string_view kind) {
    return kind == "performer" || kind == "humanPerformer" || kind == "potentialOwner" ||
           kind == "resourceRole";
}

bool isDefinition(std::string_view kind) {
    return holds(DefiningElements, kind) || kind.ends_with("EventDefinition");
}

std::string_view eventWordOf(std::string_view kind) {
    const auto* found = std::find_if(EventWords.begin(), EventWords.end(),
                                     [kind](const EventWord& entry) { return entry.element == kind; });
    return found == EventWords.end() ? std::string_view{} : found->word;
}

}  // namespace mero
