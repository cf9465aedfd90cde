#include <fmt/format.h>

#include "platform/engine/process_runner.h"

namespace mero {

// What happens to a token inside an activity or a call: the part of `ProcessRunner` that knows passes, loops
// and boundary events.

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

void ProcessRunner::startActivity(std::uint32_t scope, std::uint32_t node, bool hasMessage) {
    const std::uint32_t token = makeToken(scope, node);
    tokens[token].hasMessage = hasMessage;
    const ProcessNode& activity = modelOf(scope).nodes[node];
    const std::uint32_t atOnce = activity.loop == LoopKind::Parallel ? std::max(1U, activity.loopMaximum) : 1;
    const Handle handle = tokens.handle(token);
    for (std::uint32_t pass = 0; pass < atOnce && tokens.holds(handle) && countStep(scopes[scope].instance);
         ++pass) {
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
    pass.absentHolders = 0;
    pass.workPlan = 0;
    pass.holders = {};
    if (next != None) {
        passes[next].previous = index;
    }
    tokens[token].firstPass = index;
    ++tokens[token].openPasses;
    const bool isFirst = ++tokens[token].startedPasses == 1;

    const ProcessNode& activity = nodeOf(tokens[token]);
    if (activity.kind == NodeKind::Call) {
        if (isFirst) {
            armBoundaries(token, workforce == nullptr ? Arming::All : Arming::ByThemselves, 0.0);
        }
        startCall(index);
        return;
    }
    pass.key = numberedKey("p", ++lastPass);
    sendPass(EventObjectReached, index);
    const std::uint32_t scope = tokens[token].scope;
    if (workforce == nullptr) {
        pass.workTime = sampleWork(scope, tokens[token].node);
    }
    if (isFirst) {
        armBoundaries(token, workforce == nullptr ? Arming::All : Arming::ByThemselves,
                      activity.waitingTime + pass.workTime);
    }
    const Plan ready{Action::BeReady, passes.handle(index)};
    if (awaitsMessage(activity) && isFirst && !tokens[token].hasMessage) {
        await(scope, tokens[token].node, ready);
    } else if (activity.waitingTime > 0.0) {
        queue.push(now + activity.waitingTime, ready);
    } else {
        beReady(index);
    }
}

void ProcessRunner::startCall(std::uint32_t pass) {
    const Token& token = tokens[passes[pass].token];
    const std::uint32_t calledModel = nodeOf(token).calledModel;
    const std::uint32_t instance = scopes[token.scope].instance;
    if (scopes[token.scope].depth >= CallDepthLimit) {
        giveUp(instance,
               fmt::format("an instance of model \"{}\" calls sub-processes more than {} levels deep, last "
                           "model \"{}\"",
                           graph.models()[instances[instance].model].name, CallDepthLimit,
                           graph.models()[calledModel].name));
        return;
    }
    passes[pass].state = PassState::Calling;
    const std::uint32_t scope = openScope(calledModel, pass, instance);
    passes[pass].calledScope = scope;
    sendCall(pass);
    startScope(scope, None);
}

/// A timer, and any event with a duration, races against the activity; a message event waits for its message.
/// An event with a chance alone fires at some time during the first pass; on a call, whose time isn't known,
/// when the called process has ended.
void ProcessRunner::armBoundaries(std::uint32_t token, Arming arming, double passTime) {
    const std::uint32_t scope = tokens[token].scope;
    const ProcessModel& model = modelOf(scope);
    const bool isCall = nodeOf(tokens[token]).kind == NodeKind::Call;
    for (const std::uint32_t node : model.boundariesOf(nodeOf(tokens[token]))) {
        const ProcessNode& boundary = model.nodes[node];
        const Plan fire{Action::Boundary, tokens.handle(token), node};
        const bool timed = !boundary.work.isZero();
        const bool waits = awaitsMessage(boundary);
        if (arming != Arming::All && (timed || waits) != (arming == Arming::ByThemselves)) {
            continue;
        }
        if (waits) {
            ++tokens[token].armedBoundaries;
            await(scope, node, fire);
            continue;
        }
        const bool armed = boundary.chance > 0.0 ? branches(scope, node).nextChance(boundary.chance) : timed;
        if (!armed || (!timed && isCall)) {
            continue;
        }
        const double due = timed ? sampleWork(scope, node) : branches(scope, node).nextUnit() * passTime;
        ++tokens[token].armedBoundaries;
        queue.push(now + due, fire);
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
        if (countStep(scopes[tokens[token].scope].instance)) {
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
        throwMessages(scope, model.nodes[node]);
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
    --tokens[token].armedBoundaries;
    if (modelOf(scope).nodes[boundary].interrupting) {
        breakOffToken(token);
    } else {
        ++scopes[scope].live;
    }
    touch(scope);
    leave(scope, boundary);
}

bool ProcessRunner::isValid(const Plan& plan) const {
    switch (plan.action) {
        case Action::LeaveEvent:
        case Action::Boundary:
        case Action::WinRace:
            return tokens.holds(plan.target);
        case Action::BeReady:
        case Action::EndPass:
            return passes.holds(plan.target);
        case Action::EndWork:
            return passes.holds(plan.target) && passes[plan.target.index].workPlan == plan.detail;
    }
    return false;
}

/// What has been given up in the meantime doesn't move the clock.
void ProcessRunner::carryOut(double time, const Plan& plan) {
    if (!isValid(plan)) {
        return;
    }
    now = time;
    const std::uint32_t target = plan.target.index;
    switch (plan.action) {
        case Action::BeReady:
            beReady(target);
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
            fireBoundary(target, plan.detail);
            break;
        case Action::WinRace:
            winRace(target, plan.detail);
            break;
    }
}

}  // namespace mero
