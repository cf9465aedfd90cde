#include "platform/interchange/bpmn_reader.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/interchange/bpmn_diagram_reader.h"
#include "platform/interchange/bpmn_kinds.h"

namespace mero {

namespace {

constexpr std::string_view ModelNamespace = "http://www.omg.org/spec/BPMN/20100524/MODEL";
constexpr std::array KnownNamespaces{ModelNamespace, BpmnDiagramNamespace,
                                     std::string_view("http://www.omg.org/spec/DD/20100524/DI"),
                                     std::string_view("http://www.omg.org/spec/DD/20100524/DC")};

/// A name in one line: a line break, with the blanks around it, becomes one blank.
std::string nameOf(const XmlElement& element) {
    std::string line;
    bool afterBreak = false;
    for (const char character : element.rawAttribute("name")) {
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

bool flagOf(const XmlElement& element, const char* attribute, bool whenMissing) {
    const std::string text = element.attribute(attribute);
    return text.empty() ? whenMissing : text == "true" || text == "1";
}

/// 0 for a text that is no whole number above 0.
int countOf(std::string_view text) {
    int count = 0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), count);
    return status == std::errc{} && end == text.data() + text.size() && count > 0 ? count : 0;
}

class BpmnXmlReader {
public:
    explicit BpmnXmlReader(const XmlDocument& read) : document(read) {}

    BpmnFile read() {
        const XmlElement root = document.root();
        if (root.kind() != "definitions" || root.space() != ModelNamespace) {
            root.refuse("this is no BPMN 2.0 file: its root isn't `definitions`");
        }
        countExtensions();
        rememberEventDefinitions();
        readRoot();
        return std::move(file);
    }

private:
    void countExtensions() {
        document.root().forEachBelow([this](const XmlElement& element) {
            const std::string_view uri = element.space();
            if (std::find(KnownNamespaces.begin(), KnownNamespaces.end(), uri) == KnownNamespaces.end()) {
                ++file.extensionCounts[std::string(uri)];
            }
        });
    }

    /// Calls `visit(element, local name)` for the elements of the model's namespace right below `parent`.
    template <class Visit>
    static void forEachElement(const XmlElement& parent, const Visit& visit) {
        for (const XmlElement& child : parent.children()) {
            if (child.space() == ModelNamespace) {
                visit(child, child.kind());
            }
        }
    }

    template <class Element>
    [[nodiscard]] static Element elementOf(const XmlElement& xml) {
        Element element;
        element.kind = xml.kind();
        element.id = xml.attribute("id");
        element.name = nameOf(xml);
        element.offset = xml.offset();
        return element;
    }

    void rememberEventDefinitions() {
        forEachElement(document.root(), [this](const XmlElement& child, std::string_view kind) {
            if (!eventWordOf(kind).empty() && child.hasAttribute("id")) {
                eventDefinitions.emplace(child.attribute("id"), child);
            }
        });
    }

    void readRoot() {
        forEachElement(document.root(), [this](const XmlElement& child, std::string_view kind) {
            if (kind == "process") {
                file.processes.push_back(scopeOf(child));
            } else if (kind == "collaboration") {
                readCollaboration(child);
            } else if (kind == "resource") {
                file.resources.push_back(elementOf<BpmnElement>(child));
            } else if (!isDefinition(kind)) {
                file.others.push_back(elementOf<BpmnElement>(child));
            }
        });
        for (const XmlElement& child : document.root().children()) {
            if (child.kind() == "BPMNDiagram" && child.space() == BpmnDiagramNamespace) {
                readBpmnDiagram(child, file);
            }
        }
    }

    void readCollaboration(const XmlElement& collaboration) {
        forEachElement(collaboration, [this](const XmlElement& child, std::string_view kind) {
            if (kind == "participant") {
                auto participant = elementOf<BpmnParticipant>(child);
                participant.process = child.attribute("processRef");
                file.participants.push_back(std::move(participant));
            } else if (kind == "messageFlow") {
                file.messageFlows.push_back(flowOf(child));
            } else if (!isDescription(kind)) {
                file.others.push_back(elementOf<BpmnElement>(child));
            }
        });
    }

    [[nodiscard]] static BpmnFlow flowOf(const XmlElement& xml) {
        auto flow = elementOf<BpmnFlow>(xml);
        flow.source = xml.attribute("sourceRef");
        flow.target = xml.attribute("targetRef");
        forEachElement(xml, [&flow](const XmlElement& child, std::string_view kind) {
            if (kind == "conditionExpression") {
                flow.condition = child.text();
            }
        });
        return flow;
    }

    /// Recursion is bounded by the limit of depth.
    [[nodiscard]] BpmnScope scopeOf(const XmlElement& xml) const {
        auto scope = elementOf<BpmnScope>(xml);
        forEachElement(xml, [this, &scope](const XmlElement& child, std::string_view kind) {
            if (!classOfKind(kind).empty()) {
                scope.nodes.push_back(nodeOf(child));
            } else if (kind == "sequenceFlow") {
                scope.flows.push_back(flowOf(child));
            } else if (kind == "laneSet") {
                readLanes(child, scope.lanes);
            } else if (!isDescription(kind)) {
                scope.others.push_back(elementOf<BpmnElement>(child));
            }
        });
        return scope;
    }

    static void readLanes(const XmlElement& laneSet, std::vector<BpmnLane>& lanes) {
        forEachElement(laneSet, [&lanes](const XmlElement& child, std::string_view kind) {
            if (kind != "lane") {
                return;
            }
            const std::size_t index = lanes.size();
            lanes.push_back(elementOf<BpmnLane>(child));
            forEachElement(child, [&](const XmlElement& part, std::string_view partKind) {
                if (partKind == "flowNodeRef") {
                    lanes[index].members.push_back(part.text());
                } else if (partKind == "childLaneSet") {
                    readLanes(part, lanes);
                }
            });
        });
    }

    [[nodiscard]] BpmnNode nodeOf(const XmlElement& xml) const {
        auto node = elementOf<BpmnNode>(xml);
        node.attachedTo = xml.attribute("attachedToRef");
        node.interrupting = flagOf(xml, "cancelActivity", true) && flagOf(xml, "isInterrupting", true);
        node.calledElement = xml.attribute("calledElement");
        node.defaultFlow = xml.attribute("default");
        node.triggeredByEvent = flagOf(xml, "triggeredByEvent", false);
        node.forCompensation = flagOf(xml, "isForCompensation", false);
        forEachElement(xml, [this, &node](const XmlElement& child, std::string_view kind) {
            readNodePart(child, kind, node);
        });
        if (node.kind == "subProcess" || node.kind == "transaction" || node.kind == "adHocSubProcess") {
            node.content.push_back(scopeOf(xml));
        }
        return node;
    }

    static void readPerformer(const XmlElement& part, BpmnNode& node) {
        part.forEachBelow([&node](const XmlElement& element) {
            if (element.kind() == "resourceRef") {
                node.performerResource = element.text();
            } else if (element.kind() == "formalExpression" || element.kind() == "expression") {
                node.performer = element.text();
            }
        });
    }

    void readNodePart(const XmlElement& part, std::string_view kind, BpmnNode& node) const {
        if (isResourceRole(kind)) {
            readPerformer(part, node);
            return;
        }
        if (!eventWordOf(kind).empty()) {
            readEventDefinition(part, node);
        } else if (kind == "eventDefinitionRef") {
            const std::string reference = part.text();
            const std::size_t colon = reference.find(':');
            auto found = eventDefinitions.find(reference);
            if (found == eventDefinitions.end() && colon != std::string::npos) {
                found = eventDefinitions.find(reference.substr(colon + 1));
            }
            if (found != eventDefinitions.end()) {
                readEventDefinition(found->second, node);
            }
        } else if (kind == "standardLoopCharacteristics") {
            node.loop = "standard";
            node.loopText = part.attribute("loopMaximum");
            node.loopMaximum = countOf(node.loopText);
        } else if (kind == "multiInstanceLoopCharacteristics") {
            node.loop = flagOf(part, "isSequential", false) ? "sequential" : "parallel";
            forEachElement(part, [&node](const XmlElement& child, std::string_view childKind) {
                if (childKind == "loopCardinality") {
                    node.loopText = child.text();
                    node.loopMaximum = countOf(node.loopText);
                }
            });
        }
    }

    static void readEventDefinition(const XmlElement& definition, BpmnNode& node) {
        const std::string_view word = eventWordOf(definition.kind());
        node.eventKinds.emplace_back(word);
        if (word == "link") {
            node.linkName = nameOf(definition);
        }
        forEachElement(definition, [&node](const XmlElement& child, std::string_view kind) {
            if (kind == "timeDuration" || kind == "timeCycle" || kind == "timeDate") {
                node.timerKind = kind;
                node.timerText = child.text();
            }
        });
    }

    const XmlDocument& document;
    std::map<std::string, XmlElement> eventDefinitions;  ///< those below the root, which events refer to
    BpmnFile file;
};

}  // namespace

BpmnFile readBpmn(const XmlDocument& document) {
    return BpmnXmlReader(document).read();
}

}  // namespace mero
