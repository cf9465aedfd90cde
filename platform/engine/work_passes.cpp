#include <algorithm>

#include "platform/engine/process_runner.h"

namespace mero {

// Who works on a pass, and when: the part of `ProcessRunner` that knows workers and resources.

namespace {

/// Less work than this isn't worth a suspension: it is what rounding leaves at the end of a shift.
constexpr double LeastWork = 1e-6;

}  // namespace

/// Nothing but workers and resources is missing any more.
void ProcessRunner::beReady(std::uint32_t pass) {
    const Token& token = tokens[passes[pass].token];
    const std::uint32_t number = numberOf(token.scope, token.node);
    if (namedStaff != nullptr) {
        assign(pass, namedStaff->choose(number));
        return;
    }
    const std::uint32_t need = workforce != nullptr ? workforce->plan().needOf(number) : None;
    if (need == None) {
        assign(pass, {});
        return;
    }
    PoolHandle ticket;
    const auto holders = workforce->ask(need, nodeOf(token).priority, passes.handle(pass), ticket);
    if (holders) {
        assign(pass, *holders);
    } else {
        passes[pass].state = PassState::Queued;
        passes[pass].ticket = ticket;
    }
}

void ProcessRunner::assign(std::uint32_t pass, const Holders& holders) {
    passes[pass].holders = holders;
    if (workforce != nullptr) {
        const std::uint32_t token = passes[pass].token;
        const std::uint32_t number = numberOf(tokens[token].scope, tokens[token].node);
        const Distribution* own =
            holders.worker != None ? workforce->plan().durationOf(number, holders.worker) : nullptr;
        const double work = own != nullptr ? std::max(0.0, own->sample(workStreams[number]))
                                           : sampleWork(tokens[token].scope, tokens[token].node);
        passes[pass].workTime =
            holders.worker != None ? work * workforce->workers().paceOf(holders.worker) : work;
    }
    sendAssigned(pass);
    startWork(pass);
}

void ProcessRunner::startWork(std::uint32_t pass) {
    sendPass(EventWorkStart, pass);
    goOnWorking(pass);
    const std::uint32_t token = passes[pass].token;
    if (workforce != nullptr && !tokens[token].chancesDrawn) {
        tokens[token].chancesDrawn = true;
        armBoundaries(token, Arming::ByChance, passes[pass].workTime);
    }
}

void ProcessRunner::goOnWorking(std::uint32_t pass) {
    Pass& worked = passes[pass];
    worked.state = PassState::Working;
    worked.workedSince = now;
    queue.push(now + worked.workTime, {Action::EndWork, passes.handle(pass), worked.workPlan});
}

void ProcessRunner::endWork(std::uint32_t pass) {
    sendPass(EventWorkEnd, pass);
    passes[pass].state = PassState::Resting;
    freeHolders(pass);
    const Token& token = tokens[passes[pass].token];
    throwMessages(token.scope, nodeOf(token));
    const double afterwards = nodeOf(token).timeAfterwards;
    if (afterwards > 0.0) {
        queue.push(now + afterwards, {Action::EndPass, passes.handle(pass)});
    } else {
        endPass(pass);
    }
}

void ProcessRunner::freeHolders(std::uint32_t pass) {
    const Holders holders = passes[pass].holders;
    if (holders.resource != None) {
        sendPass(EventResourceFreed, pass);
    }
    if (workforce != nullptr) {
        workforce->release(holders);
    }
    passes[pass].holders = {};
}

void ProcessRunner::suspend(std::uint32_t pass) {
    Pass& worked = passes[pass];
    const double left = worked.workTime - (now - worked.workedSince);
    if (left <= LeastWork) {
        return;
    }
    worked.workTime = left;
    worked.state = PassState::Suspended;
    ++worked.workPlan;
    sendPass(EventWorkSuspended, pass);
}

void ProcessRunner::resume(std::uint32_t pass) {
    sendPass(EventWorkResumed, pass);
    goOnWorking(pass);
}

/// Who goes leaves his work, who comes goes on with it; work needs both worker and resource.
void ProcessRunner::crossBorders() {
    now = workforce->nextBorder();
    leftPasses.clear();
    returnedPasses.clear();
    workforce->crossBorders(leftPasses, returnedPasses);
    for (const Handle& pass : leftPasses) {
        if (++passes[pass.index].absentHolders == 1 && passes[pass.index].state == PassState::Working) {
            suspend(pass.index);
        }
    }
    for (const Handle& pass : returnedPasses) {
        if (--passes[pass.index].absentHolders == 0 && passes[pass.index].state == PassState::Suspended) {
            resume(pass.index);
        }
    }
    assignFreed();
}

void ProcessRunner::assignFreed() {
    while (!stopped) {
        const auto grant = workforce->nextGrant();
        if (!grant) {
            return;
        }
        assign(grant->pass.index, grant->holders);
    }
}

}  // namespace mero
