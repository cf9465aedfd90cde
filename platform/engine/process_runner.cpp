#include "platform/engine/process_runner.h"

#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <utility>

namespace mero {

namespace {

SV::String numberedKey(std::string_view prefix, std::uint64_t number) {
    std::array<char, 24> text{};
    char* const digits = std::copy(prefix.begin(), prefix.end(), text.data());
    const auto end = std::to_chars(digits, text.data() + text.size(), number).ptr;
    return SV::String(std::string_view(text.data(), static_cast<std::size_t>(end - text.data())));
}

}  // namespace

std::int64_t wholeSeconds(double time) {
    return static_cast<std::int64_t>(std::floor(time + 0.5));
}

template <class Item>
std::uint32_t ProcessRunner::Pool<Item>::take() {
    if (free.empty()) {
        items.emplace_back();
        return static_cast<std::uint32_t>(items.size() - 1);
    }
    const std::uint32_t index = free.back();
    free.pop_back();
    return index;
}

template <class Item>
void ProcessRunner::Pool<Item>::giveBack(std::uint32_t index) {
    ++items[index].serial;
    free.push_back(index);
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

// ---------------------------------------------------------------------------------------------- tokens

std::uint32_t ProcessRunner::openScope(std::uint32_t model, std::uint32_t callingPass) {
    const std::uint32_t index = scopes.take();
    Scope& scope = scopes[index];
    scope.model = model;
    scope.callingPass = callingPass;
    scope.depth = callingPass == None ? 0 : scopes[tokens[passes[callingPass].token].scope].depth + 1;
    scope.firstToken = None;
    scope.live = 0;
    scope.waiting = 0;
    scope.alive = true;
    scope.touched = false;
    scope.key = numberedKey({}, ++lastKey);
    scope.slots.assign(graph.models()[model].slotCount, 0);
    return index;
}

void ProcessRunner::startScope(std::uint32_t scope) {
    const ProcessModel& model = modelOf(scope);
    if (model.startsEverywhere) {
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
    while (reason.empty() && !stopped) {
        for (std::size_t index = 0; index < arrivals.size() && reason.empty() && !stopped; ++index) {
            takeArrival(Arrival(arrivals[index]));
        }
        arrivals.clear();
        if (touchedScopes.empty()) {
            return;
        }
        const Handle handle = touchedScopes.back();
        if (!scopes.holds(handle)) {
            touchedScopes.pop_back();
            continue;
        }
        Scope& scope = scopes[handle.index];
        if (scope.waiting != 0 && fireInclusiveJoins(handle.index)) {
            continue;
        }
        scope.touched = false;
        touchedScopes.pop_back();
        if (scope.live == 0 && scope.waiting == 0) {
            completeScope(handle.index);
        }
    }
}

void ProcessRunner::takeArrival(const Arrival& arrival) {
    if (!scopes.holds(arrival.scope) || !countStep()) {
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
    const ProcessModel& model = modelOf(scope);
    const ProcessFlow* winner = nullptr;
    double least = 0.0;
    for (const ProcessFlow& flow : model.flowsOf(model.nodes[node])) {
        const double due = sampleWork(scope, flow.target);
        if (winner == nullptr || due < least) {
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
        completed = true;
        return;
    }
    sendScopeEvent(EventSubProcessEnd, scope, true);
    scopes.giveBack(scope);
    passes[pass].calledScope = None;
    endPass(pass);
}

// ---------------------------------------------------------------------------------------------- passes

double ProcessRunner::sampleWork(std::uint32_t scope, std::uint32_t node) {
    const Duration& work = modelOf(scope).nodes[node].work;
    if (work.distribution == Duration::Fixed) {
        return std::max(0.0, work.seconds);
    }
    return std::max(0.0, graph.distribution(work.distribution).sample(workStreams[numberOf(scope, node)]));
}

std::uint32_t ProcessRunner::makeToken(std::uint32_t scope, std::uint32_t node) {
    const std::uint32_t index = tokens.take();
    const std::uint32_t next = scopes[scope].firstToken;
    const std::uint32_t serial = tokens[index].serial;
    tokens[index] = Token{};
    tokens[index].serial = serial;
    tokens[index].scope = scope;
    tokens[index].node = node;
    tokens[index].next = next;
    if (next != None) {
        tokens[next].previous = index;
    }
    scopes[scope].firstToken = index;
    return index;
}

/// The token leaves its object and stays live.
void ProcessRunner::removeToken(std::uint32_t index) {
    const Token& token = tokens[index];
    (token.previous == None ? scopes[token.scope].firstToken : tokens[token.previous].next) = token.next;
    if (token.next != None) {
        tokens[token.next].previous = token.previous;
    }
    tokens.giveBack(index);
}

void ProcessRunner::removePass(std::uint32_t index) {
    const Pass& pass = passes[index];
    (pass.previous == None ? tokens[pass.token].firstPass : passes[pass.previous].next) = pass.next;
    if (pass.next != None) {
        passes[pass.next].previous = pass.previous;
    }
    passes.giveBack(index);
}

void ProcessRunner::startActivity(std::uint32_t scope, std::uint32_t node) {
    const std::uint32_t token = makeToken(scope, node);
    const ProcessNode& activity = modelOf(scope).nodes[node];
    const std::uint32_t atOnce = activity.loop == LoopKind::Parallel ? std::max(1U, activity.loopMaximum) : 1;
    const Handle handle = tokens.handle(token);
    for (std::uint32_t pass = 0; pass < atOnce && tokens.holds(handle) && countStep(); ++pass) {
        startPass(token);
    }
}

void ProcessRunner::startPass(std::uint32_t token) {
    const std::uint32_t index = passes.take();
    const std::uint32_t next = tokens[token].firstPass;
    Pass& pass = passes[index];
    pass.token = token;
    pass.previous = None;
    pass.next = next;
    pass.calledScope = None;
    pass.state = PassState::Reached;
    if (next != None) {
        passes[next].previous = index;
    }
    tokens[token].firstPass = index;
    ++tokens[token].openPasses;
    const bool isFirst = ++tokens[token].startedPasses == 1;

    const ProcessNode& activity = nodeOf(tokens[token]);
    if (activity.kind == NodeKind::Call) {
        if (isFirst) {
            armBoundaries(token, 0.0);
        }
        startCall(index);
        return;
    }
    pass.key = numberedKey("p", ++lastPass);
    sendPass(EventObjectReached, index);
    const double workTime = sampleWork(tokens[token].scope, tokens[token].node);
    if (isFirst) {
        armBoundaries(token, activity.waitingTime + workTime);
    }
    pass.workTime = workTime;
    if (activity.waitingTime > 0.0) {
        queue.push(now + activity.waitingTime, {Action::StartWork, passes.handle(index)});
    } else {
        startWork(index);
    }
}

void ProcessRunner::startCall(std::uint32_t pass) {
    const Token& token = tokens[passes[pass].token];
    const std::uint32_t calledModel = nodeOf(token).calledModel;
    if (scopes[token.scope].depth >= CallDepthLimit) {
        giveUp(
            fmt::format("an instance of model \"{}\" calls sub-processes more than {} levels deep, last "
                        "model \"{}\"",
                        modelOf(mainScope).name, CallDepthLimit, graph.models()[calledModel].name));
        return;
    }
    passes[pass].state = PassState::Calling;
    const std::uint32_t scope = openScope(calledModel, pass);
    passes[pass].calledScope = scope;
    sendCall(pass);
    startScope(scope);
}

/// A timer, and any event with a duration, races against the activity. An event with a chance alone fires at
/// some time during the first pass; on a call, whose time isn't known, when the called process has ended.
void ProcessRunner::armBoundaries(std::uint32_t token, double passTime) {
    const std::uint32_t scope = tokens[token].scope;
    const ProcessModel& model = modelOf(scope);
    const ProcessNode& host = nodeOf(tokens[token]);
    for (const std::uint32_t node : model.boundariesOf(host)) {
        const ProcessNode& boundary = model.nodes[node];
        const bool timed = !boundary.work.isZero();
        const bool armed = boundary.chance > 0.0 ? branches(scope, node).nextChance(boundary.chance) : timed;
        if (!armed || (!timed && host.kind == NodeKind::Call)) {
            continue;
        }
        const double due = timed ? sampleWork(scope, node) : branches(scope, node).nextUnit() * passTime;
        queue.push(now + due, {Action::Boundary, tokens.handle(token), node});
    }
}

void ProcessRunner::startWork(std::uint32_t pass) {
    passes[pass].state = PassState::Working;
    sendPass(EventWorkStart, pass);
    queue.push(now + passes[pass].workTime, {Action::EndWork, passes.handle(pass)});
}

void ProcessRunner::endWork(std::uint32_t pass) {
    sendPass(EventWorkEnd, pass);
    passes[pass].state = PassState::Resting;
    const double afterwards = nodeOf(tokens[passes[pass].token]).timeAfterwards;
    if (afterwards > 0.0) {
        queue.push(now + afterwards, {Action::EndPass, passes.handle(pass)});
    } else {
        endPass(pass);
    }
}

void ProcessRunner::endPass(std::uint32_t pass) {
    const std::uint32_t token = passes[pass].token;
    removePass(pass);
    --tokens[token].openPasses;
    const ProcessNode& activity = nodeOf(tokens[token]);
    const std::uint32_t started = tokens[token].startedPasses;
    const bool again =
        activity.loop == LoopKind::Sequential
            ? started < activity.loopMaximum
            : activity.loop == LoopKind::Standard &&
                  (activity.loopMaximum == 0 || started < activity.loopMaximum) &&
                  branches(tokens[token].scope, tokens[token].node).nextChance(activity.loopProbability);
    if (again) {
        if (countStep()) {
            startPass(token);
        }
    } else if (tokens[token].openPasses == 0) {
        finishActivity(token);
    }
}

void ProcessRunner::finishActivity(std::uint32_t token) {
    const std::uint32_t scope = tokens[token].scope;
    const std::uint32_t node = tokens[token].node;
    const ProcessModel& model = modelOf(scope);
    touch(scope);
    if (model.nodes[node].kind == NodeKind::Call) {
        for (const std::uint32_t each : model.boundariesOf(model.nodes[node])) {
            const ProcessNode& boundary = model.nodes[each];
            if (boundary.work.isZero() && boundary.chance > 0.0 &&
                branches(scope, each).nextChance(boundary.chance)) {
                if (boundary.interrupting) {
                    removeToken(token);
                    leave(scope, each);
                    return;
                }
                ++scopes[scope].live;
                leave(scope, each);
            }
        }
    }
    removeToken(token);
    leave(scope, node);
}

void ProcessRunner::fireBoundary(std::uint32_t token, std::uint32_t boundary) {
    const std::uint32_t scope = tokens[token].scope;
    if (modelOf(scope).nodes[boundary].interrupting) {
        breakOffToken(token);
    } else {
        ++scopes[scope].live;
    }
    touch(scope);
    leave(scope, boundary);
}

/// What has been given up in the meantime doesn't move the clock.
void ProcessRunner::carryOut(double time, const Plan& plan) {
    const bool ofToken = plan.action == Action::LeaveEvent || plan.action == Action::Boundary;
    if (ofToken ? !tokens.holds(plan.target) : !passes.holds(plan.target)) {
        return;
    }
    now = time;
    const std::uint32_t target = plan.target.index;
    switch (plan.action) {
        case Action::StartWork:
            startWork(target);
            break;
        case Action::EndWork:
            endWork(target);
            break;
        case Action::EndPass:
            endPass(target);
            break;
        case Action::LeaveEvent: {
            const std::uint32_t scope = tokens[target].scope;
            const std::uint32_t node = tokens[target].node;
            removeToken(target);
            touch(scope);
            leave(scope, node);
            break;
        }
        case Action::Boundary:
            fireBoundary(target, plan.boundary);
            break;
    }
}

// ------------------------------------------------------------------------------------------- breaking off

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

// ---------------------------------------------------------------------------------------------- events

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
