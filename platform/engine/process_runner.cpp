#include "platform/engine/process_runner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <utility>

namespace mero {

std::int64_t wholeSeconds(double time) {
    constexpr double Latest = 0x1p62;
    return static_cast<std::int64_t>(std::floor(std::min(time, Latest) + 0.5));
}

SV::String ProcessRunner::numberedKey(std::string_view prefix, std::uint64_t number) {
    std::array<char, 24> text{};
    char* const digits = std::copy(prefix.begin(), prefix.end(), text.data());
    const auto end = std::to_chars(digits, text.data() + text.size(), number).ptr;
    return SV::String(std::string_view(text.data(), static_cast<std::size_t>(end - text.data())));
}

ProcessRunner::ProcessRunner(const ProcessGraph& processGraph, std::uint64_t runSeed,
                             ControlComponent& controlComponent, EventGate& eventGate)
    : graph(processGraph), control(controlComponent), gate(eventGate) {
    branchStreams.reserve(graph.nodeCount());
    workStreams.reserve(graph.nodeCount());
    classSlots.reserve(graph.nodeCount());
    for (const ProcessModel& model : graph.models()) {
        for (const ProcessNode& node : model.nodes) {
            branchStreams.emplace_back(runSeed, "branch/" + node.streamName);
            workStreams.emplace_back(runSeed, "duration/" + node.streamName);
            classSlots.push_back(control.slotOf(node.classId));
        }
    }
}

void ProcessRunner::contendFor(Workforce& force) {
    workforce = &force;
    if (graph.hasMessages()) {
        messages = std::make_unique<MessageExchange<Plan>>();
    }
}

void ProcessRunner::start(std::uint32_t mainModel, std::uint32_t startNode) {
    startInstance(mainModel, startNode, messages != nullptr ? messages->newConversation() : 0, 0);
    settleAll();
}

void ProcessRunner::startInstance(std::uint32_t mainModel, std::uint32_t startNode,
                                  std::uint64_t conversation, std::uint64_t generation) {
    const std::uint32_t index = instances.take();
    Instance& instance = instances[index];
    instance.alive = true;
    instance.mayBeStuck = false;
    instance.model = mainModel;
    instance.steps = 0;
    instance.conversation = conversation;
    instance.generation = generation;
    instance.reason.clear();
    const std::uint32_t scope = openScope(mainModel, None, index);
    instances[index].rootScope = scope;
    if (messages != nullptr) {
        messages->join(conversation, mainModel);
    }
    sendScopeEvent(EventProcessStart, scope, false);
    if (!stopped) {
        instances[index].number = ++instanceCounts.started;
    }
    startScope(scope, startNode);
}

/// Its root scope holds nothing any more.
void ProcessRunner::endInstance(std::uint32_t index) {
    Instance& instance = instances[index];
    if (messages != nullptr) {
        messages->leave(instance.conversation, instance.model);
    }
    scopes.giveBack(instance.rootScope);
    instance.alive = false;
    instances.giveBack(index);
}

void ProcessRunner::step() {
    const double time = queue.nextTime();
    carryOut(time, queue.pop());
    settleAll();
}

/// Tokens first; then who became free serves those who wait.
void ProcessRunner::settleAll() {
    settle();
    dropStuck();
    while (!messageStarts.empty() && !stopped) {
        const MessageStart first = messageStarts.front();
        messageStarts.pop_front();
        startByMessage(first);
        settle();
        dropStuck();
    }
    if (workforce != nullptr) {
        assignFreed();
    }
}

void ProcessRunner::startByMessage(const MessageStart& messageStart) {
    instanceCounts.startedAtOnce = now > messageStartTime ? 1 : instanceCounts.startedAtOnce + 1;
    instanceCounts.generations = std::max(instanceCounts.generations, messageStart.generation);
    messageStartTime = now;
    startInstance(messageStart.target.model, messageStart.target.node, messageStart.conversation,
                  messageStart.generation);
}

void ProcessRunner::dropStuck() {
    for (std::size_t index = 0; index < suspects.size(); ++index) {
        const Handle suspect = suspects[index];
        if (instances.holds(suspect) && isStuck(instances[suspect.index].rootScope)) {
            giveUp(
                suspect.index,
                fmt::format("an instance of model \"{}\" is stuck: a join waits for tokens that never come",
                            graph.models()[instances[suspect.index].model].name));
        }
    }
    suspects.clear();
    for (std::size_t index = 0; index < doomed.size() && !stopped; ++index) {
        const Handle handle = doomed[index];
        const std::uint32_t root = instances[handle.index].rootScope;
        breakOffContent(root);
        sendScopeEvent(EventInstanceDropped, root, false);
        if (!stopped) {
            ++instanceCounts.dropped;
            ++instanceCounts.dropReasons[instances[handle.index].reason];
        }
        endInstance(handle.index);
    }
    doomed.clear();
}

/// True if nothing in the scope goes on by itself: all tokens wait in front of joins, or in calls of which
/// that is true.
bool ProcessRunner::isStuck(std::uint32_t scope) {
    for (std::uint32_t token = scopes[scope].firstToken; token != None; token = tokens[token].next) {
        if (tokens[token].armedBoundaries != 0 || tokens[token].firstPass == None) {
            return false;
        }
        for (std::uint32_t pass = tokens[token].firstPass; pass != None; pass = passes[pass].next) {
            if (passes[pass].state != PassState::Calling || !isStuck(passes[pass].calledScope)) {
                return false;
            }
        }
    }
    return true;
}

bool ProcessRunner::countStep(std::uint32_t index) {
    Instance& instance = instances[index];
    if (instance.reason.empty() && ++instance.steps > StepLimit) {
        giveUp(index, fmt::format("an instance of model \"{}\" takes more than {} steps",
                                  graph.models()[instance.model].name, StepLimit));
    }
    return instance.reason.empty();
}

void ProcessRunner::giveUp(std::uint32_t index, std::string why) {
    if (instances[index].reason.empty()) {
        instances[index].reason = std::move(why);
        doomed.push_back(instances.handle(index));
    }
}

}  // namespace mero
