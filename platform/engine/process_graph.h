#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/engine/distribution.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Base of time texts.
struct TimeBase {
    double daysPerYear = 365.0;
    double hoursPerDay = 24.0;
};

enum class NodeKind : std::uint8_t { Start, End, Activity, Call, Intermediate, Boundary, Gateway };
enum class JoinRule : std::uint8_t { Merge, All, Inclusive };
/// Which of its outgoing flows a node takes: all, one by probability, each by its own probability but at
/// least one, or the one whose target is due first, by its time or its message.
enum class SplitRule : std::uint8_t { All, One, Some, Race };
enum class LoopKind : std::uint8_t { None, Standard, Parallel, Sequential };
/// What the events of BPMN 2.0 mean to the engine; all other kinds are passed through.
enum class EventKind : std::uint8_t { Plain, Timer, Error, Cancel, Terminate };

/// Whether message flows act, or what they lead to goes on without them.
enum class MessageUse : std::uint8_t { Act, PassBy };

/// Time that something takes: fixed seconds, or a distribution of the graph.
struct Duration {
    static constexpr std::uint32_t Fixed = UINT32_MAX;
    double seconds = 0.0;
    std::uint32_t distribution = Fixed;

    [[nodiscard]] bool isZero() const { return distribution == Fixed && seconds <= 0.0; }
};

struct ProcessFlow {
    std::uint32_t target = 0;  ///< node
    std::uint32_t slot = 0;    ///< of the target's incoming flow in its model
    double probability = 0.0;
    bool isGiven = false;  ///< the model has the probability; a given 0 is never taken
    bool isDefault = false;
};

struct ProcessNode {
    static constexpr std::uint32_t None = UINT32_MAX;

    MeroId objectId = MeroNoId;
    MeroId classId = MeroNoId;
    std::string streamName;  ///< stable name for streams of random numbers: model, class, object
    NodeKind kind = NodeKind::Gateway;
    JoinRule join = JoinRule::Merge;
    SplitRule split = SplitRule::All;
    LoopKind loop = LoopKind::None;
    EventKind event = EventKind::Plain;
    bool interrupting = true;     ///< of a boundary event
    std::uint32_t firstFlow = 0;  ///< outgoing ones
    std::uint32_t flowCount = 0;
    std::uint32_t firstSlot = 0;  ///< incoming ones
    std::uint32_t slotCount = 0;
    std::uint32_t firstBoundary = 0;  ///< in `ProcessModel::boundaries`
    std::uint32_t boundaryCount = 0;
    std::uint32_t calledModel = None;  ///< index in the graph
    std::uint32_t reach = None;        ///< of an inclusive join, in `ProcessModel::reach`
    std::uint32_t loopMaximum = 0;     ///< 0 for none
    double loopProbability = 0.0;
    double chance = 0.0;             ///< of a boundary event to fire; weight of a start event
    Duration work;                   ///< of an activity; waiting of an intermediate event
    std::int32_t priority = 0;       ///< of an activity in a queue; the highest goes first
    double waitingTime = 0.0;        ///< between reaching an activity and starting work
    double timeAfterwards = 0.0;     ///< resting and transport, before the process goes on
    std::uint32_t firstMessage = 0;  ///< outgoing message flows, in `ProcessGraph::messagesOf`
    std::uint32_t messageCount = 0;
    bool awaitsMessage = false;  ///< catches the messages of a flow from another object of the graph
};

/// Where a message flow leads to.
struct MessageTarget {
    std::uint32_t model = 0;
    std::uint32_t node = 0;
};

struct ProcessModel {
    MeroId id = MeroNoId;
    std::string name;
    std::vector<ProcessNode> nodes;
    std::vector<ProcessFlow> flows;         ///< by source
    std::vector<std::uint32_t> boundaries;  ///< nodes of boundary events, by host
    std::vector<std::uint32_t> startNodes;
    std::vector<std::uint32_t> inclusiveJoins;
    /// For each inclusive join and node: bits of those incoming flows of the join that can be reached from
    /// the node without passing the join.
    std::vector<std::vector<std::uint64_t>> reach;
    std::uint32_t slotCount = 0;
    std::uint32_t firstNode = 0;  ///< number of its first node, counted over the whole graph
    /// Without start events all start nodes get a token, else one of them, by weight.
    bool startsEverywhere = false;

    [[nodiscard]] std::span<const ProcessFlow> flowsOf(const ProcessNode& node) const {
        return std::span(flows).subspan(node.firstFlow, node.flowCount);
    }
    [[nodiscard]] std::span<const std::uint32_t> boundariesOf(const ProcessNode& node) const {
        return std::span(boundaries).subspan(node.firstBoundary, node.boundaryCount);
    }
};

/// The models of a run and all that they call, as dense arrays. The meaning of nodes and flows is that of
/// BPMN 2.0, chapter 13. Where probabilities are missing, the flows without one share what the others leave
/// of 1, which is told, and a default flow takes what is left when all have one. A node that isn't a gateway
/// takes all its outgoing flows, unless some have probabilities: then one of them if these make up 1 at most,
/// else each by its own. An event-based gateway waits for what comes first where each of its targets has a
/// time or awaits a message, and else chooses by probability.
class ProcessGraph {
public:
    /// Refused: unknown models, models that can't be simulated, times and distributions that can't be read.
    /// Everything else that is odd is told in `problems` and handled as said there.
    static Result<ProcessGraph> compile(const Repository& repository, std::span<const MeroId> mainModels,
                                        TimeBase base, MessageUse messageUse = MessageUse::Act);

    [[nodiscard]] const std::vector<ProcessModel>& models() const { return compiled; }
    /// Indices of the main models, in the order given.
    [[nodiscard]] const std::vector<std::uint32_t>& mainModels() const { return mains; }
    [[nodiscard]] const Distribution& distribution(std::uint32_t number) const {
        return distributions[number];
    }
    [[nodiscard]] std::uint32_t nodeCount() const { return nodes; }
    /// Message flows between objects of the graph that end at start events, other catching events and receive
    /// tasks.
    [[nodiscard]] std::span<const MessageTarget> messagesOf(const ProcessNode& node) const {
        return std::span(messages).subspan(node.firstMessage, node.messageCount);
    }
    [[nodiscard]] bool hasMessages() const { return !messages.empty(); }
    /// One sentence each.
    [[nodiscard]] const std::vector<std::string>& problems() const { return oddities; }

private:
    friend class GraphCompiler;

    std::vector<ProcessModel> compiled;
    std::vector<std::uint32_t> mains;
    std::vector<Distribution> distributions;
    std::vector<MessageTarget> messages;
    std::vector<std::string> oddities;
    std::uint32_t nodes = 0;
};

}  // namespace mero
