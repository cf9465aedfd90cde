#include "platform/interchange/bpmn_diagram_reader.h"

#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <initializer_list>
#include <optional>

namespace mero {

namespace {

/// The named coordinates with `separator` between them; none if one is missing or no number.
std::optional<std::string> coordinates(const XmlElement& element, std::initializer_list<const char*> names,
                                       char separator) {
    std::string line;
    for (const char* name : names) {
        const std::string text = element.attribute(name);
        double number = 0.0;
        const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (status != std::errc{} || end != text.data() + text.size() || !std::isfinite(number)) {
            return std::nullopt;
        }
        line += fmt::format("{}{}", line.empty() ? "" : std::string(1, separator), number);
    }
    return line;
}

void readBounds(const XmlElement& shape, const std::string& element, BpmnFile& file) {
    for (const XmlElement& child : shape.children()) {
        if (child.kind() != "Bounds") {
            continue;
        }
        if (const auto bounds = coordinates(child, {"x", "y", "width", "height"}, ' ')) {
            file.bounds.emplace(element, *bounds);
        }
    }
}

void readWaypoints(const XmlElement& edge, const std::string& element, BpmnFile& file) {
    std::string points;
    for (const XmlElement& child : edge.children()) {
        if (child.kind() != "waypoint") {
            continue;
        }
        if (const auto point = coordinates(child, {"x", "y"}, ',')) {
            points += (points.empty() ? "" : " ") + *point;
        }
    }
    if (!points.empty()) {
        file.waypoints.emplace(element, points);
    }
}

}  // namespace

void readBpmnDiagram(const XmlElement& diagram, BpmnFile& file) {
    diagram.forEachBelow([&file](const XmlElement& part) {
        const std::string element = part.attribute("bpmnElement");
        if (element.empty()) {
            return;
        }
        if (part.kind() == "BPMNShape") {
            readBounds(part, element, file);
        } else if (part.kind() == "BPMNEdge") {
            readWaypoints(part, element, file);
        }
    });
}

}  // namespace mero
