#include <algorithm>
#include <utility>

#include "platform/engine/process_runner.h"

namespace mero {

// What the runner tells of itself.

SimEvent& ProcessRunner::prepare(MeroEventCode code, std::uint32_t scope) {
    const Instance& instance = instances[scopes[scope].instance];
    event.code = code;
    event.mainModelId = graph.models()[instance.model].id;
    event.mainKey = &scopes[instance.rootScope].key;
    event.modelId = modelOf(scope).id;
    event.key = &scopes[scope].key;
    event.calledModelId = MeroNoId;
    event.calledKey = &NoKey;
    event.callingObjectId = MeroNoId;
    event.objectId = MeroNoId;
    event.passKey = &NoKey;
    event.executiveId = MeroNoId;
    event.assignedExecutiveId = MeroNoId;
    event.resourceId = MeroNoId;
    return event;
}

void ProcessRunner::sendScopeEvent(MeroEventCode code, std::uint32_t scope, bool withPassKey) {
    SimEvent& scopeEvent = prepare(code, scope);
    if (withPassKey) {
        scopeEvent.passKey = &scopes[scope].key;
    }
    emit(scopeEvent, ControlComponent::NoClassSlot);
}

void ProcessRunner::sendCall(std::uint32_t pass) {
    const Token& token = tokens[passes[pass].token];
    const std::uint32_t called = passes[pass].calledScope;
    SimEvent& call = prepare(EventSubProcessStart, token.scope);
    call.calledModelId = modelOf(called).id;
    call.calledKey = &scopes[called].key;
    call.callingObjectId = nodeOf(token).objectId;
    emit(call, ControlComponent::NoClassSlot);
}

SimEvent& ProcessRunner::preparePass(MeroEventCode code, std::uint32_t pass) {
    const Token& token = tokens[passes[pass].token];
    SimEvent& passEvent = prepare(code, token.scope);
    passEvent.objectId = nodeOf(token).objectId;
    passEvent.passKey = &passes[pass].key;
    return passEvent;
}

/// With who holds the pass.
void ProcessRunner::sendPass(MeroEventCode code, std::uint32_t pass) {
    SimEvent& passEvent = preparePass(code, pass);
    if (namedStaff != nullptr || workforce != nullptr) {
        const StaffPlan& plan = namedStaff != nullptr ? namedStaff->plan() : workforce->plan();
        const Holders& holders = passes[pass].holders;
        passEvent.executiveId = holders.worker != None ? plan.workers().members[holders.worker].id : MeroNoId;
        passEvent.resourceId =
            holders.resource != None ? plan.resources().members[holders.resource].id : MeroNoId;
    }
    const Token& token = tokens[passes[pass].token];
    emit(passEvent, classSlots[numberOf(token.scope, token.node)]);
}

/// That the pass has been given to who holds it now.
void ProcessRunner::sendAssigned(std::uint32_t pass) {
    const Holders& holders = passes[pass].holders;
    if (holders.worker != None) {
        const StaffPlan& plan = namedStaff != nullptr ? namedStaff->plan() : workforce->plan();
        SimEvent& assigned = preparePass(EventExecutiveAssigned, pass);
        assigned.assignedExecutiveId = plan.workers().members[holders.worker].id;
        const Token& token = tokens[passes[pass].token];
        emit(assigned, classSlots[numberOf(token.scope, token.node)]);
    }
    if (holders.resource != None) {
        sendPass(EventResourceBound, pass);
    }
}

void ProcessRunner::emit(SimEvent& simEvent, ControlComponent::ClassSlot slot) {
    if (stopped || !gate.mayGoOn(now)) {
        stopped = true;
        return;
    }
    if (silent) {
        return;
    }
    simEvent.time = wholeSeconds(now);
    control.sendFiltered(simEvent, slot);
}

void ProcessRunner::announceLive() {
    silent = false;
    std::vector<std::pair<std::uint64_t, std::uint32_t>> live;
    for (std::uint32_t index = 0; index < instances.size(); ++index) {
        if (instances[index].alive) {
            live.emplace_back(instances[index].number, instances[index].rootScope);
        }
    }
    std::sort(live.begin(), live.end());
    for (const auto& [number, scope] : live) {
        sendScopeEvent(EventProcessStart, scope, false);
        announce(scope);
    }
}

void ProcessRunner::announce(std::uint32_t scope) {
    for (std::uint32_t token = scopes[scope].firstToken; token != None; token = tokens[token].next) {
        for (std::uint32_t pass = tokens[token].firstPass; pass != None; pass = passes[pass].next) {
            if (passes[pass].state == PassState::Calling) {
                sendCall(pass);
                announce(passes[pass].calledScope);
            } else if (passes[pass].state != PassState::Resting) {
                announcePass(pass);
            }
        }
    }
}

void ProcessRunner::announcePass(std::uint32_t pass) {
    const PassState state = passes[pass].state;
    const Holders holders = std::exchange(passes[pass].holders, {});
    sendPass(EventObjectReached, pass);
    passes[pass].holders = holders;
    if (state != PassState::Working && state != PassState::Suspended) {
        return;
    }
    sendAssigned(pass);
    sendPass(EventWorkStart, pass);
    if (state == PassState::Suspended) {
        sendPass(EventWorkSuspended, pass);
    }
}

}  // namespace mero
