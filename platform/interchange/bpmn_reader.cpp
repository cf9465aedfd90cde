#include "platform/interchange/bpmn_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fmt/format.h>
#include <optional>
#include <pugixml.hpp>

#include "platform/interchange/document_refused.h"
#include "platform/interchange/text_place.h"

namespace mero {

namespace {

constexpr int DepthLimit = 256;
/// Line breaks in attributes are kept, since blanks beside them go with them.
constexpr unsigned ParseOptions = (pugi::parse_default | pugi::parse_doctype) & ~pugi::parse_wconv_attribute;
constexpr std::string_view ModelNamespace = "http://www.omg.org/spec/BPMN/20100524/MODEL";
constexpr std::string_view DiagramNamespace = "http://www.omg.org/spec/BPMN/20100524/DI";
constexpr std::array DrawingNamespaces{DiagramNamespace,
                                       std::string_view("http://www.omg.org/spec/DD/20100524/DI"),
                                       std::string_view("http://www.omg.org/spec/DD/20100524/DC")};

constexpr std::array NodeElements{
    std::string_view("task"),
    std::string_view("userTask"),
    std::string_view("serviceTask"),
    std::string_view("manualTask"),
    std::string_view("scriptTask"),
    std::string_view("businessRuleTask"),
    std::string_view("sendTask"),
    std::string_view("receiveTask"),
    std::string_view("callActivity"),
    std::string_view("subProcess"),
    std::string_view("transaction"),
    std::string_view("adHocSubProcess"),
    std::string_view("startEvent"),
    std::string_view("endEvent"),
    std::string_view("intermediateCatchEvent"),
    std::string_view("intermediateThrowEvent"),
    std::string_view("boundaryEvent"),
    std::string_view("exclusiveGateway"),
    std::string_view("inclusiveGateway"),
    std::string_view("parallelGateway"),
    std::string_view("eventBasedGateway"),
    std::string_view("complexGateway"),
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

std::string_view localName(const char* name) {
    const char* colon = std::strchr(name, ':');
    return colon == nullptr ? name : colon + 1;
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view White = " \t\r\n";
    const std::size_t first = text.find_first_not_of(White);
    return first == std::string_view::npos
               ? std::string()
               : std::string(text.substr(first, text.find_last_not_of(White) - first + 1));
}

std::string textOf(const pugi::xml_node& node) {
    std::string text;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    return trimmed(text);
}

/// A name in one line: a line break, with the blanks around it, becomes one blank.
std::string nameOf(const pugi::xml_node& node) {
    std::string line;
    bool afterBreak = false;
    for (const char character : std::string_view(node.attribute("name").value())) {
        const bool isBreak = character == '\n' || character == '\r' || character == '\t';
        if (isBreak) {
            line.erase(line.find_last_not_of(' ') + 1);
            line += ' ';
        } else if (character != ' ' || !afterBreak) {
            line += character;
        }
        afterBreak = isBreak || (afterBreak && character == ' ');
    }
    return trimmed(line);
}

bool flagOf(const pugi::xml_node& node, const char* attribute, bool whenMissing) {
    const std::string text = trimmed(node.attribute(attribute).value());
    return text.empty() ? whenMissing : text == "true" || text == "1";
}

int countOf(std::string_view text) {
    int count = 0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), count);
    return status == std::errc{} && end == text.data() + text.size() && count > 0 ? count : 0;
}

/// The named coordinates, blanks or commas between them; none if one is missing or no number.
std::optional<std::string> coordinates(const pugi::xml_node& node, std::initializer_list<const char*> names,
                                       char separator) {
    std::string line;
    for (const char* name : names) {
        const std::string text = trimmed(node.attribute(name).value());
        double number = 0.0;
        const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (status != std::errc{} || end != text.data() + text.size() || !std::isfinite(number)) {
            return std::nullopt;
        }
        line += fmt::format("{}{}", line.empty() ? "" : std::string(1, separator), number);
    }
    return line;
}

/// The next node in document order below `root`, null behind the last; `depth` follows.
pugi::xml_node nextNode(pugi::xml_node node, const pugi::xml_node& root, int& depth) {
    if (node.first_child()) {
        ++depth;
        return node.first_child();
    }
    while (node != root) {
        if (node.next_sibling()) {
            return node.next_sibling();
        }
        node = node.parent();
        --depth;
    }
    return {};
}

class BpmnXmlReader {
public:
    BpmnXmlReader(std::string_view decodedText, std::string_view sourceName)
        : text(decodedText), source(sourceName) {}

    BpmnFile read() {
        parse();
        root = document.document_element();
        checkStructure();
        rememberNamespaces();
        if (localName(root.name()) != "definitions" || namespaceOf(root) != ModelNamespace) {
            refuse(offsetOf(root), "this is no BPMN 2.0 file: its root isn't `definitions`");
        }
        countExtensions();
        readRoot();
        return std::move(file);
    }

private:
    [[noreturn]] void refuse(std::size_t offset, std::string_view reason) const {
        const TextPlace place = placeOf(text, offset);
        throw DocumentRefused(fmt::format("{}:{}:{}: {}", source, place.line, place.column, reason));
    }

    void parse() {
        if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos) {
            refuse(zero, "zero character");
        }
        const pugi::xml_parse_result result =
            document.load_buffer(text.data(), text.size(), ParseOptions, pugi::encoding_utf8);
        if (!result) {
            refuse(static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0)),
                   fmt::format("the XML is broken: {}", result.description()));
        }
    }

    void checkStructure() const {
        for (const pugi::xml_node& node : document.children()) {
            if (node.type() == pugi::node_doctype && std::strstr(node.value(), "<!ENTITY") != nullptr) {
                refuse(text.find("<!ENTITY"), "declared entities aren't read");
            }
            if (node.type() == pugi::node_element && node != root) {
                refuse(offsetOf(node), "a second root element");
            }
        }
        int depth = 1;
        for (pugi::xml_node node = root; node; node = nextNode(node, root, depth)) {
            if (depth > DepthLimit) {
                refuse(offsetOf(node.type() == pugi::node_element ? node : node.parent()),
                       fmt::format("nested deeper than {} levels", DepthLimit));
            }
        }
    }

    static std::size_t offsetOf(const pugi::xml_node& node) {
        return static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug() - 1, 0));
    }

    void rememberNamespaces() {
        for (const pugi::xml_attribute& attribute : root.attributes()) {
            const std::string_view name = attribute.name();
            if (name == "xmlns" || name.starts_with("xmlns:")) {
                rootNamespaces.emplace(name, attribute.value());
            }
        }
    }

    [[nodiscard]] std::string_view namespaceOf(const pugi::xml_node& element) const {
        const std::string_view name = element.name();
        const std::size_t colon = name.find(':');
        const std::string key =
            colon == std::string_view::npos ? "xmlns" : fmt::format("xmlns:{}", name.substr(0, colon));
        for (pugi::xml_node node = element; node && node != root; node = node.parent()) {
            if (const pugi::xml_attribute attribute = node.attribute(key.c_str())) {
                return attribute.value();
            }
        }
        const auto found = rootNamespaces.find(key);
        return found == rootNamespaces.end() ? std::string_view{} : std::string_view(found->second);
    }

    void countExtensions() {
        int depth = 1;
        for (pugi::xml_node node = root; node; node = nextNode(node, root, depth)) {
            if (node.type() != pugi::node_element) {
                continue;
            }
            const std::string_view uri = namespaceOf(node);
            if (uri != ModelNamespace && !holds(DrawingNamespaces, uri)) {
                ++file.extensionCounts[std::string(uri)];
            }
        }
    }

    /// Calls `visit(element, local name)` for the elements of the model's namespace right below `parent`.
    template <class Visit>
    void forEachElement(const pugi::xml_node& parent, const Visit& visit) const {
        for (const pugi::xml_node& child : parent.children()) {
            if (child.type() == pugi::node_element && namespaceOf(child) == ModelNamespace) {
                visit(child, localName(child.name()));
            }
        }
    }

    template <class Element>
    [[nodiscard]] Element elementOf(const pugi::xml_node& node) const {
        Element element;
        element.kind = localName(node.name());
        element.id = trimmed(node.attribute("id").value());
        element.name = nameOf(node);
        element.offset = offsetOf(node);
        return element;
    }

    void readRoot() {
        forEachElement(root, [this](const pugi::xml_node& child, std::string_view kind) {
            if (kind == "process") {
                file.processes.push_back(scopeOf(child));
            } else if (kind == "collaboration") {
                readCollaboration(child);
            } else if (!holds(DefiningElements, kind)) {
                file.others.push_back(elementOf<BpmnElement>(child));
            }
        });
        for (const pugi::xml_node& child : root.children()) {
            if (localName(child.name()) == "BPMNDiagram" && namespaceOf(child) == DiagramNamespace) {
                readDiagram(child);
            }
        }
    }

    void readCollaboration(const pugi::xml_node& node) {
        forEachElement(node, [this](const pugi::xml_node& child, std::string_view kind) {
            if (kind == "participant") {
                auto participant = elementOf<BpmnParticipant>(child);
                participant.process = trimmed(child.attribute("processRef").value());
                file.participants.push_back(std::move(participant));
            } else if (kind == "messageFlow") {
                file.messageFlows.push_back(flowOf(child));
            } else if (!holds(DescribingElements, kind)) {
                file.others.push_back(elementOf<BpmnElement>(child));
            }
        });
    }

    [[nodiscard]] BpmnFlow flowOf(const pugi::xml_node& node) const {
        auto flow = elementOf<BpmnFlow>(node);
        flow.source = trimmed(node.attribute("sourceRef").value());
        flow.target = trimmed(node.attribute("targetRef").value());
        forEachElement(node, [&flow](const pugi::xml_node& child, std::string_view kind) {
            if (kind == "conditionExpression") {
                flow.condition = textOf(child);
            }
        });
        return flow;
    }

    /// Recursion is bounded by the limit of depth.
    [[nodiscard]] BpmnScope scopeOf(const pugi::xml_node& node) const {
        auto scope = elementOf<BpmnScope>(node);
        forEachElement(node, [this, &scope](const pugi::xml_node& child, std::string_view kind) {
            if (holds(NodeElements, kind)) {
                scope.nodes.push_back(nodeOf(child));
            } else if (kind == "sequenceFlow") {
                scope.flows.push_back(flowOf(child));
            } else if (kind == "laneSet") {
                readLanes(child, scope.lanes);
            } else if (!holds(DescribingElements, kind)) {
                scope.others.push_back(elementOf<BpmnElement>(child));
            }
        });
        return scope;
    }

    void readLanes(const pugi::xml_node& laneSet, std::vector<BpmnLane>& lanes) const {
        forEachElement(laneSet, [this, &lanes](const pugi::xml_node& child, std::string_view kind) {
            if (kind != "lane") {
                return;
            }
            const std::size_t index = lanes.size();
            lanes.push_back(elementOf<BpmnLane>(child));
            forEachElement(child, [&](const pugi::xml_node& part, std::string_view partKind) {
                if (partKind == "flowNodeRef") {
                    lanes[index].members.push_back(textOf(part));
                } else if (partKind == "childLaneSet") {
                    readLanes(part, lanes);
                }
            });
        });
    }

    [[nodiscard]] BpmnNode nodeOf(const pugi::xml_node& xml) const {
        auto node = elementOf<BpmnNode>(xml);
        node.attachedTo = trimmed(xml.attribute("attachedToRef").value());
        node.interrupting = flagOf(xml, "cancelActivity", true) && flagOf(xml, "isInterrupting", true);
        node.calledElement = trimmed(xml.attribute("calledElement").value());
        node.defaultFlow = trimmed(xml.attribute("default").value());
        node.triggeredByEvent = flagOf(xml, "triggeredByEvent", false);
        node.forCompensation = flagOf(xml, "isForCompensation", false);
        forEachElement(xml, [this, &node](const pugi::xml_node& child, std::string_view kind) {
            readNodePart(child, kind, node);
        });
        if (node.kind == "subProcess" || node.kind == "transaction" || node.kind == "adHocSubProcess") {
            node.content.push_back(scopeOf(xml));
        }
        return node;
    }

    void readNodePart(const pugi::xml_node& part, std::string_view kind, BpmnNode& node) const {
        const auto* event = std::find_if(EventWords.begin(), EventWords.end(),
                                         [kind](const EventWord& word) { return word.element == kind; });
        if (event != EventWords.end()) {
            node.eventKinds.emplace_back(event->word);
            if (event->word == "link") {
                node.linkName = nameOf(part);
            }
            forEachElement(part, [&node](const pugi::xml_node& child, std::string_view childKind) {
                if (childKind == "timeDuration") {
                    node.timerText = textOf(child);
                }
            });
        } else if (kind == "standardLoopCharacteristics") {
            node.loop = "standard";
            node.loopMaximum = countOf(trimmed(part.attribute("loopMaximum").value()));
        } else if (kind == "multiInstanceLoopCharacteristics") {
            node.loop = flagOf(part, "isSequential", false) ? "sequential" : "parallel";
            forEachElement(part, [&node](const pugi::xml_node& child, std::string_view childKind) {
                if (childKind == "loopCardinality") {
                    node.loopMaximum = countOf(textOf(child));
                }
            });
        }
    }

    void readDiagram(const pugi::xml_node& diagram) {
        int depth = 1;
        for (pugi::xml_node node = diagram; node; node = nextNode(node, diagram, depth)) {
            const std::string_view kind = localName(node.name());
            const std::string element = trimmed(node.attribute("bpmnElement").value());
            if (kind == "BPMNShape" && !element.empty()) {
                readBounds(node, element);
            } else if (kind == "BPMNEdge" && !element.empty()) {
                readWaypoints(node, element);
            }
        }
    }

    void readBounds(const pugi::xml_node& shape, const std::string& element) {
        for (const pugi::xml_node& child : shape.children()) {
            if (localName(child.name()) != "Bounds") {
                continue;
            }
            if (const auto bounds = coordinates(child, {"x", "y", "width", "height"}, ' ')) {
                file.bounds.emplace(element, *bounds);
            }
        }
    }

    void readWaypoints(const pugi::xml_node& edge, const std::string& element) {
        std::string points;
        for (const pugi::xml_node& child : edge.children()) {
            if (localName(child.name()) != "waypoint") {
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

    std::string_view text;
    std::string_view source;
    pugi::xml_document document;
    pugi::xml_node root;
    std::map<std::string, std::string, std::less<>> rootNamespaces;
    BpmnFile file;
};

}  // namespace

Result<BpmnFile> readBpmn(std::string_view text, std::string_view source) {
    try {
        return BpmnXmlReader(text, source).read();
    } catch (const DocumentRefused& refused) {
        return Error{refused.what()};
    }
}

}  // namespace mero
