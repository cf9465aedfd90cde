#include "platform/engine/process_runner.h"

#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <utility>

namespace mero {

std::int64_t wholeSeconds(double time) {
    return static_cast<std::int64_t>(std::floor(time + 0.5));
}

SV::String ProcessRunner::numberedKey(std::string_view prefix, std::uint64_t number) {
    std::array<char, 24> text{};
    char* const digits = std::copy(prefix.begin(), prefix.end(), text.data());
    const auto end = std::to_chars(digits, text.data() + text.size(), number).ptr;
    return SV::String(std::string_view(text.data(), static_cast<std::size_t>(end - text.data())));
}

ProcessRunner::ProcessRunner(const ProcessGraph& processGraph, std::uint64_t seed,
                             ControlComponent& controlComponent, Gate eventGate)
    : graph(processGraph), control(controlComponent), gate(std::move(eventGate)) {
    branchStreams.reserve(graph.nodeCount());
    workStreams.reserve(graph.nodeCount());
    classSlots.reserve(graph.nodeCount());
    for (const ProcessModel& model : graph.models()) {
        for (const ProcessNode& node : model.nodes) {
            branchStreams.emplace_back(seed, "branch/" + node.streamName);
            workStreams.emplace_back(seed, "duration/" + node.streamName);
            classSlots.push_back(control.slotOf(node.classId));
        }
    }
}

ProcessRunner::Outcome ProcessRunner::run(std::uint32_t mainModel) {
    queue.clear();
    arrivals.clear();
    touchedScopes.clear();
    steps = 0;
    completed = false;
    reason.clear();
    mainScope = openScope(mainModel, None);
    sendScopeEvent(EventProcessStart, mainScope, false);
    startScope(mainScope);
    settle();
    while (!completed && !stopped && reason.empty() && !queue.empty()) {
        const double time = queue.nextTime();
        carryOut(time, queue.pop());
        settle();
    }
    const Outcome outcome = conclude(mainModel);
    scopes.giveBack(mainScope);
    return outcome;
}

ProcessRunner::Outcome ProcessRunner::conclude(std::uint32_t mainModel) {
    if (stopped) {
        return Outcome::Stopped;
    }
    if (completed) {
        return Outcome::Finished;
    }
    if (reason.empty()) {
        giveUp(fmt::format("an instance of model \"{}\" is stuck: a join waits for tokens that never come",
                           graph.models()[mainModel].name));
    }
    breakOffContent(mainScope);
    sendScopeEvent(EventInstanceDropped, mainScope, false);
    return stopped ? Outcome::Stopped : Outcome::Dropped;
}

/// Ends what goes on inside the object; the token leaves it and stays live.
void ProcessRunner::breakOffToken(std::uint32_t token) {
    while (tokens[token].firstPass != None) {
        const std::uint32_t pass = tokens[token].firstPass;
        if (passes[pass].state == PassState::Working) {
            sendPass(EventWorkSuspended, pass);
        } else if (passes[pass].calledScope != None) {
            breakOffScope(passes[pass].calledScope);
        }
        removePass(pass);
    }
    removeToken(token);
}

void ProcessRunner::breakOffContent(std::uint32_t index) {
    while (scopes[index].firstToken != None) {
        breakOffToken(scopes[index].firstToken);
    }
    Scope& scope = scopes[index];
    std::fill(scope.slots.begin(), scope.slots.end(), 0U);
    scope.waiting = 0;
    scope.live = 0;
    // Tokens on their way have the old serial and end.
    ++scope.serial;
    scope.touched = false;
    touch(index);
}

void ProcessRunner::breakOffScope(std::uint32_t scope) {
    breakOffContent(scope);
    sendScopeEvent(EventSubInstanceDropped, scope, false);
    scopes.giveBack(scope);
}

bool ProcessRunner::countStep() {
    if (++steps > StepLimit) {
        giveUp(fmt::format("an instance of model \"{}\" takes more than {} steps", modelOf(mainScope).name,
                           StepLimit));
    }
    return reason.empty();
}

void ProcessRunner::giveUp(std::string why) {
    if (reason.empty()) {
        reason = std::move(why);
    }
}

SimEvent& ProcessRunner::prepare(MeroEventCode code) {
    event.code = code;
    event.mainModelId = modelOf(mainScope).id;
    event.mainKey = &scopes[mainScope].key;
    event.calledModelId = MeroNoId;
    event.calledKey = &NoKey;
    event.callingObjectId = MeroNoId;
    event.objectId = MeroNoId;
    event.passKey = &NoKey;
    return event;
}

void ProcessRunner::sendScopeEvent(MeroEventCode code, std::uint32_t scope, bool withPassKey) {
    SimEvent& scopeEvent = prepare(code);
    scopeEvent.modelId = modelOf(scope).id;
    scopeEvent.key = &scopes[scope].key;
    if (withPassKey) {
        scopeEvent.passKey = &scopes[scope].key;
    }
    emit(scopeEvent, ControlComponent::NoClassSlot);
}

void ProcessRunner::sendCall(std::uint32_t pass) {
    const Token& token = tokens[passes[pass].token];
    const std::uint32_t called = passes[pass].calledScope;
    SimEvent& call = prepare(EventSubProcessStart);
    call.modelId = modelOf(token.scope).id;
    call.key = &scopes[token.scope].key;
    call.calledModelId = modelOf(called).id;
    call.calledKey = &scopes[called].key;
    call.callingObjectId = nodeOf(token).objectId;
    emit(call, ControlComponent::NoClassSlot);
}

void ProcessRunner::sendPass(MeroEventCode code, std::uint32_t pass) {
    const Token& token = tokens[passes[pass].token];
    SimEvent& passEvent = prepare(code);
    passEvent.modelId = modelOf(token.scope).id;
    passEvent.key = &scopes[token.scope].key;
    passEvent.objectId = nodeOf(token).objectId;
    passEvent.passKey = &passes[pass].key;
    emit(passEvent, classSlots[numberOf(token.scope, token.node)]);
}

void ProcessRunner::emit(SimEvent& simEvent, ControlComponent::ClassSlot slot) {
    if (stopped || !gate(now)) {
        stopped = true;
        return;
    }
    simEvent.time = wholeSeconds(now);
    control.sendFiltered(simEvent, slot);
}

}  // namespace mero
