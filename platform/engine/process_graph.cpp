#include "platform/engine/process_graph.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <unordered_map>
#include <utility>

#include "component/host/core_time.h"

#include "platform/engine/flow_split.h"

namespace mero {

namespace {

struct FlowClasses {
    MeroId sequence = MeroNoId;
    MeroId attachment = MeroNoId;
};

MeroId relationClassId(const Library& library, std::string_view name) {
    const Library::RelationClass* found = library.findRelationClass(ClassCodeProcessLibrary, name);
    return found != nullptr ? found->id : MeroNoId;
}

LoopKind loopKindOf(std::string_view word) {
    constexpr std::array Words = {std::pair{std::string_view("standard"), LoopKind::Standard},
                                  std::pair{std::string_view("parallel"), LoopKind::Parallel},
                                  std::pair{std::string_view("sequential"), LoopKind::Sequential}};
    const auto* const found =
        std::find_if(Words.begin(), Words.end(), [&](const auto& each) { return each.first == word; });
    return found != Words.end() ? found->second : LoopKind::None;
}

EventKind eventKindOf(std::string_view word) {
    constexpr std::array Words = {std::pair{std::string_view("timer"), EventKind::Timer},
                                  std::pair{std::string_view("error"), EventKind::Error},
                                  std::pair{std::string_view("cancel"), EventKind::Cancel},
                                  std::pair{std::string_view("terminate"), EventKind::Terminate}};
    const auto* const found =
        std::find_if(Words.begin(), Words.end(), [&](const auto& each) { return each.first == word; });
    return found != Words.end() ? found->second : EventKind::Plain;
}

}  // namespace

class GraphCompiler {
public:
    GraphCompiler(const Repository& compiledRepository, TimeBase base, MessageUse use)
        : repository(compiledRepository),
          library(compiledRepository.library()),
          timeBase(base),
          messageUse(use) {
        flowClasses = {relationClassId(library, "Sequence flow"), relationClassId(library, "Attached to")};
        flowProbability = library.findRelationAttribute(flowClasses.sequence, "Probability")->id;
    }

    Result<ProcessGraph> compile(std::span<const MeroId> mainModels) {
        for (const MeroId id : mainModels) {
            const Model* model = repository.findModel(id);
            if (model == nullptr || !isSimulatable(*model)) {
                return Error{model == nullptr
                                 ? fmt::format("there is no model #{}", id)
                                 : fmt::format("model \"{}\" isn't a process that can be simulated",
                                               model->name.view())};
            }
            graph.mains.push_back(indexOf(*model));
        }
        while (waiting.size() > graph.compiled.size()) {
            compileModel(*waiting[graph.compiled.size()]);
        }
        if (messageUse == MessageUse::Act) {
            addMessages();
        }
        addSplits();
        if (failure) {
            return *failure;
        }
        return std::move(graph);
    }

private:
    [[nodiscard]] bool isSimulatable(const Model& model) const {
        const Library::ModelType& type = library.modelTypes()[model.type];
        return type.simulatable && type.classId == ClassCodeProcessModel;
    }

    [[nodiscard]] bool isOf(const Object& object, MeroCoreVarType core) const {
        return library.isSubClassOf(library.coreVariable(core), object.classId);
    }

    /// Index that the model has or will have.
    std::uint32_t indexOf(const Model& model) {
        const auto [place, added] = indices.try_emplace(model.id, static_cast<std::uint32_t>(waiting.size()));
        if (added) {
            waiting.push_back(&model);
        }
        return place->second;
    }

    void compileModel(const Model& source) {
        ProcessModel model;
        model.id = source.id;
        model.name = source.name.view();
        model.firstNode = graph.nodes;
        nodeOfObject.clear();
        for (const MeroId id : source.objects) {
            const Object* object = repository.findObject(id);
            if (isOf(*object, CoreFlowNode)) {
                nodeOfObject.emplace(id, static_cast<std::uint32_t>(model.nodes.size()));
                model.nodes.push_back(makeNode(model, *object));
            }
        }
        addFlows(model);
        addBoundaries(model);
        addJoins(model);
        addStarts(model);
        addReaches(model);
        for (const auto& [object, node] : nodeOfObject) {
            placeOfObject[object] = {static_cast<std::uint32_t>(graph.compiled.size()), node};
        }
        graph.nodes += static_cast<std::uint32_t>(model.nodes.size());
        graph.compiled.push_back(std::move(model));
    }

    ProcessNode makeNode(const ProcessModel& model, const Object& object) {
        ProcessNode node;
        node.objectId = object.id;
        node.classId = object.classId;
        node.streamName =
            fmt::format("{}/{}/{}", model.name, library.findClass(object.classId)->name, object.name.view());
        if (isOf(object, CoreActivity)) {
            makeActivity(model, object, node);
        } else if (isOf(object, CoreCall)) {
            makeCall(model, object, node);
        } else if (isOf(object, CoreStartEvent)) {
            node.kind = NodeKind::Start;
            node.chance = std::max(0.0, repository.numberOf(object, "Quantity"));
        } else if (isOf(object, CoreEndEvent)) {
            node.kind = NodeKind::End;
        } else if (isOf(object, CoreIntermediateEvent)) {
            node.kind = NodeKind::Intermediate;
            node.work = readDuration(model, object, {});
            node.interrupting = repository.numberOf(object, "Interrupting") != 0.0;
            node.chance = repository.numberOf(object, "Probability");
        }
        node.event = eventKindOf(repository.textOf(object, "Event kind").view());
        return node;
    }

    void makeActivity(const ProcessModel& model, const Object& object, ProcessNode& node) {
        node.kind = NodeKind::Activity;
        node.work = readDuration(model, object, "Execution time");
        node.waitingTime = readTime(model, object, "Waiting time");
        node.priority = static_cast<std::int32_t>(repository.numberOf(object, "Priority"));
        node.timeAfterwards =
            readTime(model, object, "Resting time") + readTime(model, object, "Transport time");
        readLoop(object, node);
    }

    void makeCall(const ProcessModel& model, const Object& object, ProcessNode& node) {
        const SV::String target = repository.textOf(object, "Referenced model");
        const Model* called = target.IsEmpty() ? nullptr : repository.findModel(target.view());
        readLoop(object, node);
        if (called != nullptr && isSimulatable(*called)) {
            node.kind = NodeKind::Call;
            node.calledModel = indexOf(*called);
            return;
        }
        node.kind = NodeKind::Activity;
        report(model, object,
               called == nullptr ? "calls no model that is there, and counts as a task"
                                 : "calls a model that can't be simulated, and counts as a task");
    }

    void readLoop(const Object& object, ProcessNode& node) {
        node.loop = loopKindOf(repository.textOf(object, "Loop").view());
        node.loopMaximum =
            static_cast<std::uint32_t>(std::max(0.0, repository.numberOf(object, "Loop maximum")));
        node.loopProbability = repository.numberOf(object, "Loop probability");
    }

    Duration readDuration(const ProcessModel& model, const Object& object, std::string_view timeAttribute) {
        const SV::String text = repository.textOf(object, "Duration");
        if (text.IsEmpty()) {
            return {timeAttribute.empty() ? 0.0 : readTime(model, object, timeAttribute), Duration::Fixed};
        }
        Result<Distribution> distribution = Distribution::parse(text.view());
        if (!distribution) {
            refuse(model, object, "Duration", distribution.error().text);
            return {};
        }
        graph.distributions.push_back(std::move(distribution.value()));
        return {0.0, static_cast<std::uint32_t>(graph.distributions.size() - 1)};
    }

    double readTime(const ProcessModel& model, const Object& object, std::string_view attribute) {
        const SV::String text = repository.textOf(object, attribute);
        if (text.IsEmpty()) {
            return 0.0;
        }
        if (!MeroCoreTime::isTime(text)) {
            refuse(model, object, attribute, fmt::format("\"{}\" isn't a time", text.view()));
            return 0.0;
        }
        MeroCoreTime time;
        time.setBase(timeBase.daysPerYear, timeBase.hoursPerDay);
        return time._s2d(text);
    }

    void addFlows(ProcessModel& model) {
        for (ProcessNode& node : model.nodes) {
            node.firstFlow = static_cast<std::uint32_t>(model.flows.size());
            for (const MeroId id : repository.relationsFrom(node.objectId)) {
                const Relation* relation = repository.findRelation(id);
                const auto target = nodeOfObject.find(relation->to);
                if (relation->classId == flowClasses.sequence && target != nodeOfObject.end()) {
                    model.flows.push_back({target->second, model.nodes[target->second].slotCount++,
                                           repository.numberOf(*relation, "Probability"),
                                           findValue(relation->values, flowProbability) != nullptr,
                                           repository.numberOf(*relation, "Default") != 0.0});
                }
            }
            node.flowCount = static_cast<std::uint32_t>(model.flows.size()) - node.firstFlow;
        }
        for (ProcessNode& node : model.nodes) {
            node.firstSlot = model.slotCount;
            model.slotCount += node.slotCount;
        }
        for (ProcessFlow& flow : model.flows) {
            flow.slot += model.nodes[flow.target].firstSlot;
        }
    }

    void addBoundaries(ProcessModel& model) {
        for (ProcessNode& host : model.nodes) {
            host.firstBoundary = static_cast<std::uint32_t>(model.boundaries.size());
            for (const MeroId id : repository.relationsTo(host.objectId)) {
                const Relation* relation = repository.findRelation(id);
                const auto place = nodeOfObject.find(relation->from);
                if (relation->classId != flowClasses.attachment || place == nodeOfObject.end() ||
                    model.nodes[place->second].kind != NodeKind::Intermediate) {
                    continue;
                }
                model.nodes[place->second].kind = NodeKind::Boundary;
                if (host.kind == NodeKind::Activity || host.kind == NodeKind::Call) {
                    model.boundaries.push_back(place->second);
                } else {
                    report(model, *repository.findObject(relation->from),
                           "is attached to an object that isn't an activity, and never fires");
                }
            }
            host.boundaryCount = static_cast<std::uint32_t>(model.boundaries.size()) - host.firstBoundary;
        }
    }

    void addJoins(ProcessModel& model) {
        for (ProcessNode& node : model.nodes) {
            if (node.slotCount > 1) {
                const GatewayKind gateway = gatewayKindOf(*repository.findObject(node.objectId));
                node.join = gateway == GatewayKind::Parallel    ? JoinRule::All
                            : gateway == GatewayKind::Inclusive ? JoinRule::Inclusive
                                                                : JoinRule::Merge;
            }
        }
    }

    void addSplits() {
        for (ProcessModel& model : graph.compiled) {
            for (ProcessNode& node : model.nodes) {
                const Object& object = *repository.findObject(node.objectId);
                for (const std::string& oddity : decideSplit(model, node, gatewayKindOf(object))) {
                    report(model, object, oddity);
                }
            }
        }
    }

    [[nodiscard]] GatewayKind gatewayKindOf(const Object& object) const {
        constexpr std::array Kinds = {std::pair{CoreParallelGateway, GatewayKind::Parallel},
                                      std::pair{CoreInclusiveGateway, GatewayKind::Inclusive},
                                      std::pair{CoreExclusiveGateway, GatewayKind::Exclusive},
                                      std::pair{CoreEventBasedGateway, GatewayKind::EventBased}};
        const auto* const found = std::find_if(Kinds.begin(), Kinds.end(),
                                               [&](const auto& each) { return isOf(object, each.first); });
        return found != Kinds.end() ? found->second : GatewayKind::None;
    }

    void addMessages() {
        const MeroId messageFlow = relationClassId(library, "Message flow");
        for (ProcessModel& model : graph.compiled) {
            for (ProcessNode& node : model.nodes) {
                node.firstMessage = static_cast<std::uint32_t>(graph.messages.size());
                for (const MeroId id : repository.relationsFrom(node.objectId)) {
                    const Relation& relation = *repository.findRelation(id);
                    const auto target = placeOfObject.find(relation.to);
                    if (relation.classId == messageFlow && target != placeOfObject.end()) {
                        addMessage(target->second);
                    }
                }
                node.messageCount = static_cast<std::uint32_t>(graph.messages.size()) - node.firstMessage;
            }
        }
    }

    /// Other tasks than receive tasks take notice of a message, but don't wait for it.
    void addMessage(const MessageTarget& place) {
        ProcessNode& target = graph.compiled[place.model].nodes[place.node];
        const bool waits = target.kind == NodeKind::Intermediate || target.kind == NodeKind::Boundary ||
                           library.isSubClassOf(receiveTask, target.classId);
        const bool starts = target.kind == NodeKind::Start &&
                            std::ranges::find(graph.mains, place.model) != graph.mains.end();
        if (waits || starts) {
            graph.messages.push_back(place);
            target.awaitsMessage = true;
        }
    }

    void addStarts(ProcessModel& model) {
        for (std::uint32_t index = 0; index < model.nodes.size(); ++index) {
            if (model.nodes[index].kind == NodeKind::Start) {
                model.startNodes.push_back(index);
            }
        }
        if (!model.startNodes.empty()) {
            return;
        }
        model.startsEverywhere = true;
        for (std::uint32_t index = 0; index < model.nodes.size(); ++index) {
            if (model.nodes[index].slotCount == 0 && model.nodes[index].kind != NodeKind::Boundary) {
                model.startNodes.push_back(index);
            }
        }
        if (model.nodes.empty()) {
            report(model, "is empty: its instances end as soon as they begin");
        } else if (model.startNodes.empty()) {
            report(model, "has no object at which it could start: its instances end as soon as they begin");
        } else {
            report(model, "has no start event: it starts at all objects that nothing leads to");
        }
    }

    void addReaches(ProcessModel& model) {
        const std::vector<std::vector<std::uint32_t>> predecessors = predecessorsOf(model);
        for (ProcessNode& node : model.nodes) {
            if (node.join == JoinRule::Inclusive) {
                addReach(model, node, predecessors);
            }
        }
    }

    /// Backwards from each incoming flow of the join; the join itself is never passed.
    void addReach(ProcessModel& model, ProcessNode& join,
                  const std::vector<std::vector<std::uint32_t>>& predecessors) {
        if (join.slotCount > 64) {
            report(model, *repository.findObject(join.objectId),
                   "has more than 64 incoming flows, and doesn't wait for them");
            join.join = JoinRule::Merge;
            return;
        }
        const auto joinIndex = static_cast<std::uint32_t>(&join - model.nodes.data());
        std::vector<std::uint64_t> bits(model.nodes.size(), 0);
        std::vector<std::uint32_t> pending;
        for (std::uint32_t source = 0; source < model.nodes.size(); ++source) {
            for (const ProcessFlow& flow : model.flowsOf(model.nodes[source])) {
                if (flow.target == joinIndex && source != joinIndex) {
                    spread(predecessors, std::uint64_t{1} << (flow.slot - join.firstSlot), source, joinIndex,
                           bits, pending);
                }
            }
        }
        join.reach = static_cast<std::uint32_t>(model.reach.size());
        model.reach.push_back(std::move(bits));
        model.inclusiveJoins.push_back(joinIndex);
    }

    static void spread(const std::vector<std::vector<std::uint32_t>>& predecessors, std::uint64_t bit,
                       std::uint32_t from, std::uint32_t joinIndex, std::vector<std::uint64_t>& bits,
                       std::vector<std::uint32_t>& pending) {
        pending.assign(1, from);
        while (!pending.empty()) {
            const std::uint32_t node = pending.back();
            pending.pop_back();
            if (node == joinIndex || (bits[node] & bit) != 0) {
                continue;
            }
            bits[node] |= bit;
            pending.insert(pending.end(), predecessors[node].begin(), predecessors[node].end());
        }
    }

    /// Hosts count as predecessors of their boundary events.
    static std::vector<std::vector<std::uint32_t>> predecessorsOf(const ProcessModel& model) {
        std::vector<std::vector<std::uint32_t>> predecessors(model.nodes.size());
        for (std::uint32_t source = 0; source < model.nodes.size(); ++source) {
            for (const ProcessFlow& flow : model.flowsOf(model.nodes[source])) {
                predecessors[flow.target].push_back(source);
            }
            for (const std::uint32_t boundary : model.boundariesOf(model.nodes[source])) {
                predecessors[boundary].push_back(source);
            }
        }
        return predecessors;
    }

    void refuse(const ProcessModel& model, const Object& object, std::string_view attribute,
                std::string_view reason) {
        if (!failure) {
            failure = Error{fmt::format("model \"{}\", object \"{}\", {}: {}", model.name, object.name.view(),
                                        attribute, reason)};
        }
    }
    void report(const ProcessModel& model, const Object& object, std::string_view what) {
        graph.oddities.push_back(
            fmt::format("model \"{}\": \"{}\" {}", model.name, object.name.view(), what));
    }
    void report(const ProcessModel& model, std::string_view what) {
        graph.oddities.push_back(fmt::format("model \"{}\" {}", model.name, what));
    }

    const Repository& repository;
    const Library& library;
    TimeBase timeBase;
    MessageUse messageUse;
    FlowClasses flowClasses;
    MeroId flowProbability = MeroNoId;
    ProcessGraph graph;
    std::vector<const Model*> waiting;
    std::unordered_map<MeroId, std::uint32_t> indices;
    std::unordered_map<MeroId, std::uint32_t> nodeOfObject;  ///< of the model that is being compiled
    std::unordered_map<MeroId, MessageTarget> placeOfObject;
    MeroId receiveTask = library.findClass(ClassCodeProcessLibrary, "Receive task")->id;
    std::optional<Error> failure;
};

Result<ProcessGraph> ProcessGraph::compile(const Repository& repository, std::span<const MeroId> mainModels,
                                           TimeBase base, MessageUse messageUse) {
    return GraphCompiler(repository, base, messageUse).compile(mainModels);
}

}  // namespace mero
