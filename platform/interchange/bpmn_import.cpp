#include "platform/interchange/bpmn_import.h"

#include <algorithm>
#include <deque>
#include <fmt/format.h>
#include <map>
#include <set>
#include <unordered_map>

#include "platform/interchange/bpmn_flow_writer.h"
#include "platform/interchange/bpmn_kinds.h"
#include "platform/interchange/bpmn_lane_writer.h"
#include "platform/interchange/bpmn_node_names.h"
#include "platform/interchange/bpmn_node_writer.h"
#include "platform/interchange/bpmn_notes.h"
#include "platform/interchange/bpmn_reader.h"
#include "platform/interchange/bpmn_swimlane_writer.h"
#include "platform/interchange/document_refused.h"
#include "platform/interchange/embedded_parameters.h"
#include "platform/interchange/name_rules.h"
#include "platform/interchange/object_writer.h"
#include "platform/interchange/parameter_applier.h"
#include "platform/interchange/parameter_files.h"
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
    BpmnImporter(const BpmnFile& readFile, const XmlDocument& document, Repository& target,
                 ImportReport& importReport)
        : file(readFile),
          repository(target),
          report(importReport),
          writer(target),
          notes(document, importReport),
          identifiers(readFile, notes),
          nodeWriter(readFile, target, writer, notes),
          flowWriter(readFile, identifiers, writer, notes),
          swimlaneWriter(readFile, identifiers, writer) {}

    void import() {
        findCallTargets();
        for (const BpmnScope& process : file.processes) {
            importProcess(process);
        }
        if (report.models.empty()) {
            throw DocumentRefused(
                fmt::format("{}: there is no process with flow nodes in this file", notes.sourceName()));
        }
        connectCalls();
        importPerformers();
        flowWriter.writeMessageFlows(objectOfNode);
        noteWhatIsLeft();
    }

    void noteEvents() const { nodeWriter.noteEvents(); }

private:
    struct PendingScope {
        const BpmnScope* scope;
        std::string name;
    };
    struct PendingCall {
        MeroId object;
        std::string model;
    };

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
                identifiers.resolved(participant.process) == process.id) {
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
        BpmnObjects nodes;
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
        flowWriter.writeFlows(*scope.scope, nodes);
        swimlaneWriter.write(*scope.scope, model);
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
        if (const auto own = modelOfProcess.find(identifiers.resolved(call.calledElement));
            own != modelOfProcess.end()) {
            return own->second;
        }
        const Model* stored = repository.findModel(call.calledElement);
        const bool isProcess = stored != nullptr && repository.library().modelTypes()[stored->type].classId ==
                                                        ClassCodeProcessModel;
        return isProcess ? std::optional(call.calledElement) : std::nullopt;
    }

    void connectCalls() {
        for (const PendingCall& call : calls) {
            writer.set(call.object, "Referenced model", SV::String(call.model));
        }
    }

    void importPerformers() {
        BpmnLaneWriter lanes(identifiers, objectOfNode, repository, notes, report);
        for (const BpmnScope* process : lanesToImport) {
            lanes.write(*process);
        }
        for (const BpmnScope& process : file.processes) {
            lanes.writePerformers(process, file);
        }
    }

    /// Drawings have many annotations: elements of one kind share a note.
    void noteOthers(const BpmnScope& scope) {
        std::map<std::string_view, std::vector<const BpmnElement*>> kinds;
        for (const BpmnElement& element : scope.others) {
            kinds[element.kind].push_back(&element);
        }
        for (const auto& [kind, elements] : kinds) {
            notes.add(*elements.front(),
                      elements.size() == 1
                          ? std::string("not imported")
                          : fmt::format("not imported, like {} more of its kind", elements.size() - 1));
        }
    }

    void noteWhatIsLeft() {
        for (const BpmnParticipant& participant : file.participants) {
            const bool known =
                std::any_of(file.processes.begin(), file.processes.end(), [&](const BpmnScope& process) {
                    return !process.id.empty() && process.id == identifiers.resolved(participant.process);
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
    ImportReport& report;
    ObjectWriter writer;
    BpmnNotes notes;
    BpmnIdentifiers identifiers;
    BpmnNodeWriter nodeWriter;
    BpmnFlowWriter flowWriter;
    BpmnSwimlaneWriter swimlaneWriter;
    std::set<std::string> reservedNames;
    std::vector<std::pair<const BpmnScope*, std::string>> processNames;
    std::unordered_map<std::string, std::string> modelOfProcess;
    BpmnObjects objectOfNode;
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

Result<ImportReport> importBpmn(const ImportFile& file, Repository& repository,
                                const std::vector<ImportFile>& parameterFiles) {
    const Result<std::string> text = decodeXml(file.bytes, file.name);
    if (!text) {
        return text.error();
    }
    ImportReport report;
    try {
        const XmlDocument document(text.value(), file.name);
        BpmnFile read = readBpmn(document);
        SimulationParameters parameters;
        if (parameterFiles.empty()) {
            parameters = readEmbeddedParameters(document);
            std::erase_if(read.extensionCounts,
                          [](const auto& entry) { return isParameterNamespace(entry.first); });
        } else {
            parameters = readParameterFiles(parameterFiles);
        }
        BpmnImporter importer(read, document, repository, report);
        importer.import();
        applyParameters(parameters, repository, report);
        importer.noteEvents();
        return report;
    } catch (const DocumentRefused& refused) {
        takeBack(report, repository);
        return Error{refused.what()};
    }
}

}  // namespace mero
