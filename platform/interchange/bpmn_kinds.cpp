#include "platform/interchange/bpmn_kinds.h"

#include <algorithm>
#include <array>
#include <charconv>

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
        return std::find(words.begin(), words.end(), kind) != words.end();
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

std::optional<double> secondsOfDuration(std::string_view text) {
    if (!text.starts_with("P")) {
        return std::nullopt;
    }
    text.remove_prefix(1);
    double seconds = 0.0;
    bool inTime = false;
    bool found = false;
    while (!text.empty()) {
        if (text.front() == 'T' && !inTime) {
            inTime = true;
            text.remove_prefix(1);
            continue;
        }
        double number = 0.0;
        const auto [end, status] =
            std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
        if (status != std::errc{} || end == text.data() + text.size() || number < 0.0) {
            return std::nullopt;
        }
        const std::string_view units = inTime ? "HMS" : "WD";
        constexpr std::array TimeUnits{3600.0, 60.0, 1.0};
        constexpr std::array DateUnits{604800.0, 86400.0};
        const std::size_t unit = units.find(*end);
        if (unit == std::string_view::npos) {
            return std::nullopt;
        }
        seconds += number * (inTime ? TimeUnits[unit] : DateUnits[unit]);
        found = true;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    }
    return found ? std::optional(seconds) : std::nullopt;
}

}  // namespace mero
