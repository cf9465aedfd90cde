#include "platform/interchange/bpmn_import.h"

#include <algorithm>
#include <deque>
#include <fmt/format.h>
#include <set>
#include <unordered_map>

#include "platform/interchange/bpmn_kinds.h"
#include "platform/interchange/bpmn_node_names.h"
#include "platform/interchange/bpmn_node_writer.h"
#include "platform/interchange/bpmn_notes.h"
#include "platform/interchange/bpmn_reader.h"
#include "platform/interchange/document_refused.h"
#include "platform/interchange/name_rules.h"
#include "platform/interchange/object_writer.h"
#include "platform/interchange/prosimos_parameters.h"
#include "platform/interchange/xml_text.h"

namespace mero {

namespace {

std::string stemOf(std::string_view fileName) {
    const std::size_t slash = fileName.find_last_of("/\\");
    std::string_view stem = slash == std::string_view::npos ? fileName : fileName.substr(slash + 1);
    stem = stem.substr(0, stem.rfind('.'));
    return stem.empty() ? "Process" : std::string(stem);
}

/// One import of one file.
class BpmnImporter {
public:
    BpmnImporter(const BpmnFile& readFile, std::string_view decodedText, std::string_view sourceName,
                 Repository& target)
        : file(readFile),
          repository(target),
          writer(target),
          notes(decodedText, sourceName, report),
          nodeWriter(readFile, writer, notes) {}

    ImportReport import() {
        checkIdentifiers();
        findCallTargets();
        for (const BpmnScope& process : file.processes) {
            importProcess(process);
        }
        if (report.models.empty()) {
            throw DocumentRefused(
                fmt::format("{}: there is no process with flow nodes in this file", notes.sourceName()));
        }
        connectCalls();
        importLanes();
        importMessageFlows();
        noteWhatIsLeft();
        return report;
    }

    [[nodiscard]] const ImportReport& made() const { return report; }

private:
    struct PendingScope {
        const BpmnScope* scope;
        std::string name;
    };
    struct PendingCall {
        MeroId object;
        std::string model;
    };

    void checkIdentifiers() {
        for (const BpmnScope& process : file.processes) {
            checkIdentifier(process);
            checkIdentifiersIn(process);
        }
    }

    void checkIdentifiersIn(const BpmnScope& scope) {
        for (const BpmnNode& node : scope.nodes) {
            checkIdentifier(node);
            for (const BpmnScope& content : node.content) {
                checkIdentifiersIn(content);
            }
        }
        for (const BpmnFlow& flow : scope.flows) {
            checkIdentifier(flow);
        }
    }

    void checkIdentifier(const BpmnElement& element) {
        if (!element.id.empty() && !identifiers.insert(element.id).second) {
            notes.refuse(element, "another element has this identifier");
        }
    }

    /// A reference may be written with the prefix of a namespace.
    [[nodiscard]] std::string resolved(const std::string& reference) const {
        const std::size_t colon = reference.find(':');
        return colon == std::string::npos || identifiers.contains(reference) ? reference
                                                                             : reference.substr(colon + 1);
    }

    [[nodiscard]] std::string freeModelName(const std::string& wanted) const {
        return freeName(wanted, [this](const std::string& name) {
            return repository.findModel(name) != nullptr || reservedNames.contains(name);
        });
    }

    /// Names of the models that processes become, before any is made: calls may lead forward.
    void findCallTargets() {
        for (const BpmnScope& process : file.processes) {
            if (process.nodes.empty()) {
                continue;
            }
            const std::string name = freeModelName(wantedName(process));
            reservedNames.insert(name);
            processNames.emplace_back(&process, name);
            if (!process.id.empty()) {
                modelOfProcess.emplace(process.id, name);
            }
        }
    }

    [[nodiscard]] std::string wantedName(const BpmnScope& process) const {
        if (!process.name.empty()) {
            return process.name;
        }
        for (const BpmnParticipant& participant : file.participants) {
            if (!participant.name.empty() && !process.id.empty() &&
                resolved(participant.process) == process.id) {
                return participant.name;
            }
        }
        return stemOf(notes.sourceName());
    }

    void importProcess(const BpmnScope& process) {
        const auto name = std::find_if(processNames.begin(), processNames.end(),
                                       [&process](const auto& entry) { return entry.first == &process; });
        if (name == processNames.end()) {
            notes.add(process, "left out, it is empty");
            noteOthers(process);
            return;
        }
        std::deque<PendingScope> pending{{&process, name->second}};
        while (!pending.empty()) {
            const PendingScope next = pending.front();
            pending.pop_front();
            importScope(next, pending);
        }
        if (!process.lanes.empty()) {
            lanesToImport.push_back(&process);
        }
    }

    void importScope(const PendingScope& scope, std::deque<PendingScope>& pending) {
        const MeroId model = writer.addModel(scope.name, "Business process");
        report.models.push_back(model);
        std::unordered_map<std::string, MeroId> nodes;
        BpmnNodeNames names(*scope.scope);
        for (const BpmnNode& node : scope.scope->nodes) {
            const std::string_view className = classOf(node);
            if (node.triggeredByEvent && !node.content.empty()) {
                importUncalled(node, scope.name, pending);
                continue;
            }
            const std::string name = names.take(node, className);
            const MeroId object = writer.addObject(model, className, name);
            nodeWriter.describe(node, className, object);
            if (className == "Sub-process") {
                const std::string modelName = freeModelName(fmt::format("{} / {}", scope.name, name));
                reservedNames.insert(modelName);
                calls.push_back({object, modelName});
                pending.push_back({&node.content.front(), modelName});
            } else if (className == "Call activity") {
                calls.push_back({object, *targetOf(node)});
            }
            if (!node.id.empty()) {
                nodes.emplace(node.id, object);
                objectOfNode.emplace(node.id, object);
            }
        }
        importFlows(*scope.scope, nodes);
        attachBoundaryEvents(*scope.scope, nodes);
        noteOthers(*scope.scope);
    }

    void importUncalled(const BpmnNode& node, const std::string& parentName,
                        std::deque<PendingScope>& pending) {
        if (node.content.front().nodes.empty()) {
            notes.add(node, "left out, it is empty");
            return;
        }
        const std::string own = node.name.empty() ? "Event sub-process" : node.name;
        const std::string modelName = freeModelName(fmt::format("{} / {}", parentName, own));
        reservedNames.insert(modelName);
        pending.push_back({&node.content.front(), modelName});
        notes.add(node,
                  fmt::format("imported as the model \"{}\", not executed: nothing calls it", modelName));
    }

    /// The class of the object that a node becomes.
    [[nodiscard]] std::string_view classOf(const BpmnNode& node) const {
        const std::string_view className = classOfKind(node.kind);
        const bool hollow = className == "Sub-process" && node.content.front().nodes.empty();
        const bool open = className == "Call activity" && !targetOf(node);
        return hollow || open ? "Task" : className;
    }

    [[nodiscard]] std::optional<std::string> targetOf(const BpmnNode& call) const {
        if (call.calledElement.empty()) {
            return std::nullopt;
        }
        if (const auto own = modelOfProcess.find(resolved(call.calledElement)); own != modelOfProcess.end()) {
            return own->second;
        }
        const Model* stored = repository.findModel(call.calledElement);
        const bool isProcess = stored != nullptr && repository.library().modelTypes()[stored->type].classId ==
                                                        ClassCodeProcessModel;
        return isProcess ? std::optional(call.calledElement) : std::nullopt;
    }

    void importFlows(const BpmnScope& scope, const std::unordered_map<std::string, MeroId>& nodes) {
        std::set<std::string> defaults;
        for (const BpmnNode& node : scope.nodes) {
            defaults.insert(resolved(node.defaultFlow));
        }
        for (const BpmnFlow& flow : scope.flows) {
            const auto from = nodes.find(resolved(flow.source));
            const auto to = nodes.find(resolved(flow.target));
            if (from == nodes.end() || to == nodes.end()) {
                importOddFlow(flow, from == nodes.end() ? flow.source : flow.target);
                continue;
            }
            const MeroId relation = writer.relate("Sequence flow", from->second, to->second);
            describeFlow(flow, relation);
            if (!flow.id.empty() && defaults.contains(flow.id)) {
                writer.setRelation(relation, "Default", 1);
            }
        }
        linkEvents(scope, nodes);
    }

    /// A flow to something that is there but isn't an object of this model can be done without; one to
    /// nothing shows that the file is broken.
    void importOddFlow(const BpmnFlow& flow, const std::string& end) {
        if (end.empty() || !identifiers.contains(resolved(end))) {
            notes.refuse(flow, fmt::format("there is no flow node \"{}\"", end));
        }
        notes.add(flow, fmt::format("left out, \"{}\" isn't an object of the same model", end));
    }

    void describeFlow(const BpmnFlow& flow, MeroId relation) {
        const std::string& condition = flow.condition.empty() ? flow.name : flow.condition;
        const auto set = [&](std::string_view attribute, const std::string& value) {
            if (!value.empty()) {
                writer.setRelation(relation, attribute, SV::String(value));
            }
        };
        set("BPMN identifier", flow.id);
        set("Condition", condition);
        if (const auto points = file.waypoints.find(flow.id); points != file.waypoints.end()) {
            set("Waypoints", points->second);
        }
    }

    /// A throwing link goes on at the catching link of its name.
    void linkEvents(const BpmnScope& scope, const std::unordered_map<std::string, MeroId>& nodes) {
        const auto isLink = [](const BpmnNode& node, std::string_view kind) {
            return node.kind == kind && eventKindOf(node) == "link";
        };
        for (const BpmnNode& from : scope.nodes) {
            if (!isLink(from, "intermediateThrowEvent")) {
                continue;
            }
            const auto to = std::find_if(scope.nodes.begin(), scope.nodes.end(), [&](const BpmnNode& node) {
                return isLink(node, "intermediateCatchEvent") && node.linkName == from.linkName &&
                       nodes.contains(node.id);
            });
            if (to == scope.nodes.end() || !nodes.contains(from.id)) {
                notes.add(from, fmt::format("{} (no link of this name to go on at)", NotExecuted));
                continue;
            }
            writer.relate("Sequence flow", nodes.at(from.id), nodes.at(to->id));
        }
    }

    void attachBoundaryEvents(const BpmnScope& scope, const std::unordered_map<std::string, MeroId>& nodes) {
        for (const BpmnNode& node : scope.nodes) {
            if (node.kind != "boundaryEvent") {
                continue;
            }
            const auto host = nodes.find(resolved(node.attachedTo));
            const auto event = nodes.find(node.id);
            if (host == nodes.end() || event == nodes.end()) {
                notes.add(node, fmt::format("{} (attached to nothing)", NotExecuted));
                continue;
            }
            writer.relate("Attached to", event->second, host->second);
        }
    }

    void connectCalls() {
        for (const PendingCall& call : calls) {
            writer.set(call.object, "Referenced model", SV::String(call.model));
        }
    }

    void importLanes() {
        for (const BpmnScope* scope : lanesToImport) {
            for (std::size_t index = 0; index < scope->lanes.size(); ++index) {
                const BpmnLane& lane = scope->lanes[index];
                importLane(lane, lane.name.empty() ? fmt::format("Lane {}", index + 1) : lane.name);
            }
        }
    }

    void importLane(const BpmnLane& lane, const std::string& name) {
        if (report.environment == MeroNoId) {
            const std::string first = std::string(repository.findModel(report.models.front())->name.view());
            report.environment = writer.addModel(freeModelName(first + " staff"), "Working environment");
        }
        if (!writer.isNameTaken(report.environment, name)) {
            (void)writer.addObject(report.environment, "Role", name);
        }
        for (const std::string& member : lane.members) {
            const auto object = objectOfNode.find(resolved(member));
            if (object == objectOfNode.end()) {
                if (!identifiers.contains(resolved(member))) {
                    notes.add(lane, fmt::format("names \"{}\", which isn't there", member));
                }
            } else if (writer.hasAttribute(object->second, "Performer")) {
                writer.set(object->second, "Performer", SV::String("role " + kilnString(name)));
            }
        }
    }

    void importMessageFlows() {
        for (const BpmnFlow& flow : file.messageFlows) {
            const auto from = objectOfNode.find(resolved(flow.source));
            const auto to = objectOfNode.find(resolved(flow.target));
            if (from == objectOfNode.end() || to == objectOfNode.end()) {
                notes.add(flow, "left out, one end isn't a flow node");
                continue;
            }
            writer.relate("Message flow", from->second, to->second);
        }
    }

    void noteOthers(const BpmnScope& scope) {
        for (const BpmnElement& element : scope.others) {
            notes.add(element, "not imported");
        }
    }

    void noteWhatIsLeft() {
        for (const BpmnParticipant& participant : file.participants) {
            const bool known =
                std::any_of(file.processes.begin(), file.processes.end(), [&](const BpmnScope& process) {
                    return !process.id.empty() && process.id == resolved(participant.process);
                });
            if (!known) {
                notes.add(participant, "left out, the pool is empty");
            }
        }
        for (const BpmnElement& element : file.others) {
            notes.add(element, "not imported");
        }
        for (const auto& [uri, count] : file.extensionCounts) {
            report.notes.push_back({std::string(notes.sourceName()),
                                    fmt::format("{} extension elements of \"{}\"", count, uri),
                                    "passed over"});
        }
    }

    const BpmnFile& file;
    Repository& repository;
    ObjectWriter writer;
    ImportReport report;
    BpmnNotes notes;
    BpmnNodeWriter nodeWriter;
    std::set<std::string, std::less<>> identifiers;
    std::set<std::string> reservedNames;
    std::vector<std::pair<const BpmnScope*, std::string>> processNames;
    std::unordered_map<std::string, std::string> modelOfProcess;
    std::unordered_map<std::string, MeroId> objectOfNode;
    std::vector<PendingCall> calls;
    std::vector<const BpmnScope*> lanesToImport;
};

void takeBack(const ImportReport& made, Repository& repository) {
    if (made.environment != MeroNoId) {
        (void)repository.removeModel(made.environment);
    }
    for (auto model = made.models.rbegin(); model != made.models.rend(); ++model) {
        (void)repository.removeModel(*model);
    }
}

}  // namespace

std::string noteText(const ImportNote& note) {
    return fmt::format("{}: {}: {}", note.place, note.element, note.done);
}

Result<ImportReport> importBpmn(const ImportFile& file, Repository& repository,
                                const std::optional<ImportFile>& parameters) {
    const Result<std::string> text = decodeXml(file.bytes, file.name);
    if (!text) {
        return text.error();
    }
    const Result<BpmnFile> read = readBpmn(text.value(), file.name);
    if (!read) {
        return read.error();
    }
    BpmnImporter importer(read.value(), text.value(), file.name, repository);
    try {
        ImportReport report = importer.import();
        const Result<void> applied =
            parameters ? applySimulationParameters(*parameters, repository, report) : Result<void>();
        if (!applied) {
            takeBack(report, repository);
            return applied.error();
        }
        return report;
    } catch (const DocumentRefused& refused) {
        takeBack(importer.made(), repository);
        return Error{refused.what()};
    }
}

}  // namespace mero
