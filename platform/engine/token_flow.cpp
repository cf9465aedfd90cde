#include "platform/engine/process_runner.h"

namespace mero {

// How tokens move: the part of `ProcessRunner` that knows gateways, joins and ends.

std::uint32_t ProcessRunner::openScope(std::uint32_t model, std::uint32_t callingPass,
                                       std::uint32_t instance) {
    const std::uint32_t index = scopes.take();
    Scope& scope = scopes[index];
    scope.model = model;
    scope.instance = instance;
    scope.callingPass = callingPass;
    scope.depth = callingPass == None ? 0 : scopes[tokens[passes[callingPass].token].scope].depth + 1;
    scope.firstToken = None;
    scope.live = 0;
    scope.waiting = 0;
    scope.touched = false;
    scope.key = numberedKey({}, ++lastKey);
    scope.slots.assign(graph.models()[model].slotCount, 0);
    return index;
}

void ProcessRunner::startScope(std::uint32_t scope, std::uint32_t startNode) {
    const ProcessModel& model = modelOf(scope);
    if (startNode != None) {
        arriveAt(scope, startNode, None);
    } else if (model.startsEverywhere) {
        for (const std::uint32_t node : model.startNodes) {
            arriveAt(scope, node, None);
        }
    } else {
        arriveAt(scope, chooseStart(scope), None);
    }
    touch(scope);
}

/// Each start event begins instances of its own; without quantities they are equally frequent.
std::uint32_t ProcessRunner::chooseStart(std::uint32_t scope) {
    const ProcessModel& model = modelOf(scope);
    if (model.startNodes.size() == 1) {
        return model.startNodes.front();
    }
    double sum = 0.0;
    for (const std::uint32_t node : model.startNodes) {
        sum += model.nodes[node].chance;
    }
    const auto weightOf = [&](std::uint32_t node) { return sum > 0.0 ? model.nodes[node].chance : 1.0; };
    const double total = sum > 0.0 ? sum : static_cast<double>(model.startNodes.size());
    double left = branches(scope, model.startNodes.front()).nextUnit() * total;
    for (const std::uint32_t node : model.startNodes) {
        left -= weightOf(node);
        if (left < 0.0) {
            return node;
        }
    }
    return model.startNodes.back();
}

void ProcessRunner::arriveAt(std::uint32_t scope, std::uint32_t node, std::uint32_t slot) {
    ++scopes[scope].live;
    arrivals.push_back({scopes.handle(scope), node, slot});
}

/// Moves tokens until all of them are inside objects or wait at joins.
void ProcessRunner::settle() {
    while (!stopped) {
        for (std::size_t index = 0; index < arrivals.size() && !stopped; ++index) {
            takeArrival(Arrival(arrivals[index]));
        }
        arrivals.clear();
        if (touchedScopes.empty()) {
            return;
        }
        const Handle handle = touchedScopes.back();
        if (!scopes.holds(handle) || !instances[scopes[handle.index].instance].reason.empty()) {
            touchedScopes.pop_back();
            continue;
        }
        Scope& scope = scopes[handle.index];
        if (scope.waiting != 0 && fireInclusiveJoins(handle.index)) {
            continue;
        }
        scope.touched = false;
        touchedScopes.pop_back();
        Instance& instance = instances[scope.instance];
        instance.mayBeStuck |= scope.live == 0 && scope.waiting != 0;
        if (instance.mayBeStuck) {
            suspects.push_back(instances.handle(scope.instance));
        }
        if (scope.live == 0 && scope.waiting == 0) {
            completeScope(handle.index);
        }
    }
}

void ProcessRunner::takeArrival(const Arrival& arrival) {
    if (!scopes.holds(arrival.scope) || !countStep(scopes[arrival.scope.index].instance)) {
        return;
    }
    const std::uint32_t scope = arrival.scope.index;
    touch(scope);
    if (arrival.slot == None || joinsAt(scope, arrival.node, arrival.slot)) {
        enter(scope, arrival.node);
    }
}

/// True if the token may enter now; else it waits and isn't live.
bool ProcessRunner::joinsAt(std::uint32_t scopeIndex, std::uint32_t node, std::uint32_t slot) {
    const ProcessNode& join = modelOf(scopeIndex).nodes[node];
    if (join.join == JoinRule::Merge) {
        return true;
    }
    Scope& scope = scopes[scopeIndex];
    ++scope.slots[slot];
    ++scope.waiting;
    --scope.live;
    if (join.join == JoinRule::Inclusive) {
        return false;
    }
    for (std::uint32_t each = 0; each < join.slotCount; ++each) {
        if (scope.slots[join.firstSlot + each] == 0) {
            return false;
        }
    }
    consumeAt(scopeIndex, join);
    return true;
}

/// One token of each incoming flow that has one becomes a single live token.
void ProcessRunner::consumeAt(std::uint32_t scopeIndex, const ProcessNode& join) {
    Scope& scope = scopes[scopeIndex];
    for (std::uint32_t each = 0; each < join.slotCount; ++each) {
        std::uint32_t& slot = scope.slots[join.firstSlot + each];
        if (slot != 0) {
            --slot;
            --scope.waiting;
        }
    }
    ++scope.live;
}

bool ProcessRunner::fireInclusiveJoins(std::uint32_t scope) {
    const ProcessModel& model = modelOf(scope);
    for (const std::uint32_t node : model.inclusiveJoins) {
        const ProcessNode& join = model.nodes[node];
        std::uint64_t filled = 0;
        for (std::uint32_t each = 0; each < join.slotCount; ++each) {
            filled |= std::uint64_t{scopes[scope].slots[join.firstSlot + each] != 0} << each;
        }
        if (filled != 0 && !isBlocked(scope, join, filled)) {
            consumeAt(scope, join);
            enter(scope, node);
            return true;
        }
    }
    return false;
}

/// BPMN 2.0, 13.4.3: the join waits for a token elsewhere that can reach an empty incoming flow, unless that
/// token can reach a filled one as well. All paths leave out the join itself.
bool ProcessRunner::isBlocked(std::uint32_t scopeIndex, const ProcessNode& join, std::uint64_t filled) {
    const ProcessModel& model = modelOf(scopeIndex);
    const std::vector<std::uint64_t>& reach = model.reach[join.reach];
    const auto blocks = [&](std::uint32_t node) {
        return (reach[node] & ~filled) != 0 && (reach[node] & filled) == 0;
    };
    const Scope& scope = scopes[scopeIndex];
    for (std::uint32_t token = scope.firstToken; token != None; token = tokens[token].next) {
        if (blocks(tokens[token].node)) {
            return true;
        }
    }
    for (std::uint32_t node = 0; node < model.nodes.size(); ++node) {
        const ProcessNode& other = model.nodes[node];
        if (&other == &join || other.join == JoinRule::Merge || !blocks(node)) {
            continue;
        }
        for (std::uint32_t each = 0; each < other.slotCount; ++each) {
            if (scope.slots[other.firstSlot + each] != 0) {
                return true;
            }
        }
    }
    return false;
}

void ProcessRunner::enter(std::uint32_t scope, std::uint32_t node) {
    const ProcessNode& entered = modelOf(scope).nodes[node];
    switch (entered.kind) {
        case NodeKind::End:
            throwMessages(scope, entered);
            if (entered.flowCount == 0 || entered.event != EventKind::Plain) {
                endToken(scope, entered.event);
                return;
            }
            break;
        case NodeKind::Activity:
        case NodeKind::Call:
            startActivity(scope, node);
            return;
        case NodeKind::Intermediate:
            throwMessages(scope, entered);
            if (awaitsMessage(entered)) {
                const std::uint32_t token = makeToken(scope, node);
                await(scope, node, {Action::LeaveEvent, tokens.handle(token)});
                return;
            }
            if (!entered.work.isZero()) {
                const std::uint32_t token = makeToken(scope, node);
                queue.push(now + sampleWork(scope, node), {Action::LeaveEvent, tokens.handle(token)});
                return;
            }
            break;
        case NodeKind::Start:
        case NodeKind::Boundary:
        case NodeKind::Gateway:
            break;
    }
    leave(scope, node);
}

/// The live token goes on by the outgoing flows; without any it ends.
void ProcessRunner::leave(std::uint32_t scope, std::uint32_t node) {
    const ProcessModel& model = modelOf(scope);
    const ProcessNode& left = model.nodes[node];
    if (left.flowCount == 0) {
        endToken(scope, EventKind::Plain);
        return;
    }
    switch (left.flowCount == 1 ? SplitRule::All : left.split) {
        case SplitRule::All:
            for (const ProcessFlow& flow : model.flowsOf(left)) {
                send(scope, flow);
            }
            break;
        case SplitRule::One:
            send(scope, model.flowsOf(left)[chooseFlow(scope, node)]);
            break;
        case SplitRule::Some:
            leaveBySome(scope, node);
            break;
        case SplitRule::Race:
            leaveByRace(scope, node);
            return;
    }
    --scopes[scope].live;
}

void ProcessRunner::leaveBySome(std::uint32_t scope, std::uint32_t node) {
    const ProcessModel& model = modelOf(scope);
    const ProcessFlow* defaultFlow = nullptr;
    bool taken = false;
    for (const ProcessFlow& flow : model.flowsOf(model.nodes[node])) {
        if (flow.isDefault) {
            defaultFlow = &flow;
        } else if (branches(scope, node).nextChance(flow.probability)) {
            send(scope, flow);
            taken = true;
        }
    }
    if (!taken) {
        send(scope, defaultFlow != nullptr ? *defaultFlow
                                           : model.flowsOf(model.nodes[node])[chooseFlow(scope, node)]);
    }
}

/// The target that is due first gets the token at once, and keeps it for the time that was drawn.
void ProcessRunner::leaveByRace(std::uint32_t scope, std::uint32_t node) {
    if (messages != nullptr && startsMessageRace(scope, node)) {
        return;
    }
    const ProcessModel& model = modelOf(scope);
    const auto flows = model.flowsOf(model.nodes[node]);
    const ProcessFlow* winner = &flows.front();
    double least = sampleWork(scope, winner->target);
    for (const ProcessFlow& flow : flows.subspan(1)) {
        const double due = sampleWork(scope, flow.target);
        if (due < least) {
            winner = &flow;
            least = due;
        }
    }
    if (model.nodes[winner->target].kind != NodeKind::Intermediate) {
        send(scope, *winner);
        --scopes[scope].live;
        return;
    }
    const std::uint32_t token = makeToken(scope, winner->target);
    queue.push(now + least, {Action::LeaveEvent, tokens.handle(token)});
}

/// In proportion to the probabilities.
std::uint32_t ProcessRunner::chooseFlow(std::uint32_t scope, std::uint32_t node) {
    const ProcessModel& model = modelOf(scope);
    const auto flows = model.flowsOf(model.nodes[node]);
    double sum = 0.0;
    for (const ProcessFlow& flow : flows) {
        sum += flow.probability;
    }
    double left = branches(scope, node).nextUnit() * sum;
    std::uint32_t chosen = 0;
    for (std::uint32_t index = 0; index < flows.size(); ++index) {
        if (flows[index].probability > 0.0) {
            chosen = index;
            left -= flows[index].probability;
            if (left < 0.0) {
                break;
            }
        }
    }
    return chosen;
}

void ProcessRunner::send(std::uint32_t scope, const ProcessFlow& flow) {
    arriveAt(scope, flow.target, flow.slot);
}

/// Marks a scope for a look at its joins and its end.
void ProcessRunner::touch(std::uint32_t scope) {
    if (!scopes[scope].touched) {
        scopes[scope].touched = true;
        touchedScopes.push_back(scopes.handle(scope));
    }
}

void ProcessRunner::endToken(std::uint32_t scope, EventKind kind) {
    --scopes[scope].live;
    touch(scope);
    if (kind == EventKind::Terminate) {
        breakOffContent(scope);
    } else if (kind == EventKind::Error || kind == EventKind::Cancel) {
        if (!raise(scope, kind)) {
            breakOffContent(scope);
        }
    }
}

/// Looks outward for a call whose boundary event catches the error; what runs below that call is broken off.
bool ProcessRunner::raise(std::uint32_t scope, EventKind kind) {
    std::uint32_t pass = scopes[scope].callingPass;
    while (pass != None) {
        const std::uint32_t token = passes[pass].token;
        const ProcessModel& model = modelOf(tokens[token].scope);
        for (const std::uint32_t boundary : model.boundariesOf(nodeOf(tokens[token]))) {
            if (model.nodes[boundary].event == kind) {
                const std::uint32_t outer = tokens[token].scope;
                breakOffToken(token);
                touch(outer);
                leave(outer, boundary);
                return true;
            }
        }
        pass = scopes[tokens[token].scope].callingPass;
    }
    return false;
}

void ProcessRunner::completeScope(std::uint32_t scope) {
    const std::uint32_t pass = scopes[scope].callingPass;
    if (pass == None) {
        sendScopeEvent(EventProcessEnd, scope, false);
        if (!stopped) {
            ++instanceCounts.finished;
            endInstance(scopes[scope].instance);
        }
        return;
    }
    sendScopeEvent(EventSubProcessEnd, scope, true);
    scopes.giveBack(scope);
    passes[pass].calledScope = None;
    endPass(pass);
}

}  // namespace mero
