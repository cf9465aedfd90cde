#include "platform/engine/process_runner.h"

namespace mero {

// Messages between instances: the part of `ProcessRunner` that knows message flows.

/// The plan is carried out as soon as a message for the node comes.
void ProcessRunner::await(std::uint32_t scope, std::uint32_t node, const Plan& plan) {
    const bool isThere =
        messages->takeOrWait(instances[scopes[scope].instance].conversation, numberOf(scope, node), plan,
                             [this](const Plan& each) { return isValid(each); });
    if (isThere) {
        queue.push(now, plan);
    }
}

void ProcessRunner::throwMessages(std::uint32_t scope, const ProcessNode& node) {
    if (messages == nullptr || node.messageCount == 0) {
        return;
    }
    const Instance& sender = instances[scopes[scope].instance];
    const std::uint64_t conversation = sender.conversation;
    for (const MessageTarget& target : graph.messagesOf(node)) {
        const ProcessModel& model = graph.models()[target.model];
        if (model.nodes[target.node].kind == NodeKind::Start) {
            messageStarts.push_back({target, conversation, sender.generation + 1});
            continue;
        }
        const auto receiver = messages->deliver(conversation, target.model, model.firstNode + target.node,
                                                [this](const Plan& plan) { return isValid(plan); });
        if (receiver) {
            queue.push(now, *receiver);
        }
    }
}

/// The token stays at the gateway until the first message comes or the first time has passed. False if no
/// target awaits a message.
bool ProcessRunner::startsMessageRace(std::uint32_t scope, std::uint32_t node) {
    const ProcessModel& model = modelOf(scope);
    bool races = false;
    for (const ProcessFlow& flow : model.flowsOf(model.nodes[node])) {
        races |= awaitsMessage(model.nodes[flow.target]);
    }
    if (!races) {
        return false;
    }
    const std::uint32_t token = makeToken(scope, node);
    for (const ProcessFlow& flow : model.flowsOf(model.nodes[node])) {
        const Plan win{Action::WinRace, tokens.handle(token), flow.target};
        if (awaitsMessage(model.nodes[flow.target])) {
            await(scope, flow.target, win);
        } else {
            queue.push(now + sampleWork(scope, flow.target), win);
        }
    }
    return true;
}

void ProcessRunner::winRace(std::uint32_t token, std::uint32_t node) {
    const std::uint32_t scope = tokens[token].scope;
    const ProcessNode& winner = modelOf(scope).nodes[node];
    removeToken(token);
    touch(scope);
    if (winner.kind == NodeKind::Activity) {
        startActivity(scope, node, awaitsMessage(winner));
    } else {
        leave(scope, node);
    }
}

}  // namespace mero
