#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/engine/control_component.h"
#include "platform/engine/event_queue.h"
#include "platform/engine/pool.h"
#include "platform/engine/process_graph.h"
#include "platform/engine/random.h"

namespace mero {

/// Time of an event: halves are rounded up.
[[nodiscard]] std::int64_t wholeSeconds(double time);

/// Plays the token game of BPMN 2.0 (chapter 13) for process instances on one clock and sends their events.
/// It knows neither arrivals nor the end of the run; that is the business of `Simulation`.
class ProcessRunner {
public:
    /// Asked before every event, whose time may be anything up to infinity; false stops the run for good, and
    /// the event isn't sent.
    using Gate = std::function<bool(double time)>;

    enum class Outcome { Finished, Dropped, Stopped };

    /// What one instance may cost before it is dropped.
    static constexpr std::uint64_t StepLimit = 1'000'000;
    static constexpr std::uint32_t CallDepthLimit = 1'000;

    ProcessRunner(const ProcessGraph& processGraph, std::uint64_t seed, ControlComponent& controlComponent,
                  Gate eventGate);

    /// Runs one instance of a main model from `clock()` to its end, which moves the clock.
    Outcome run(std::uint32_t mainModel);
    [[nodiscard]] double clock() const { return now; }
    /// Why the last instance was dropped.
    [[nodiscard]] const std::string& dropReason() const { return reason; }

private:
    static constexpr std::uint32_t None = UINT32_MAX;

    using Handle = PoolHandle;

    /// A process or sub-process instance.
    struct Scope {
        std::uint32_t serial = 0;
        std::uint32_t model = 0;
        std::uint32_t depth = 0;
        std::uint32_t callingPass = None;
        std::uint32_t firstToken = None;
        std::uint32_t live = 0;     ///< tokens in objects and on their way
        std::uint32_t waiting = 0;  ///< tokens in front of joins
        bool alive = false;
        bool touched = false;
        SV::String key;
        std::vector<std::uint32_t> slots;  ///< tokens in front of joins, by incoming flow
    };
    /// A token inside an object that takes time.
    struct Token {
        std::uint32_t serial = 0;
        std::uint32_t scope = None;
        std::uint32_t node = None;
        std::uint32_t previous = None;
        std::uint32_t next = None;
        std::uint32_t firstPass = None;
        std::uint32_t openPasses = 0;
        std::uint32_t startedPasses = 0;
    };
    enum class PassState : std::uint8_t { Reached, Working, Resting, Calling };
    /// One pass through an activity, or one call.
    struct Pass {
        std::uint32_t serial = 0;
        std::uint32_t token = None;
        std::uint32_t previous = None;
        std::uint32_t next = None;
        std::uint32_t calledScope = None;
        PassState state = PassState::Reached;
        double workTime = 0.0;
        SV::String key;
    };
    struct Arrival {
        Handle scope;
        std::uint32_t node;
        std::uint32_t slot;
    };
    enum class Action : std::uint8_t { StartWork, EndWork, EndPass, LeaveEvent, Boundary };
    struct Plan {
        Action action;
        Handle target;  ///< a pass, or a token for `LeaveEvent` and `Boundary`
        std::uint32_t boundary = None;
    };

    [[nodiscard]] const ProcessModel& modelOf(std::uint32_t scope) {
        return graph.models()[scopes[scope].model];
    }
    [[nodiscard]] const ProcessNode& nodeOf(const Token& token) {
        return modelOf(token.scope).nodes[token.node];
    }
    [[nodiscard]] std::uint32_t numberOf(std::uint32_t scope, std::uint32_t node) {
        return modelOf(scope).firstNode + node;
    }
    RandomStream& branches(std::uint32_t scope, std::uint32_t node) {
        return branchStreams[numberOf(scope, node)];
    }
    double sampleWork(std::uint32_t scope, std::uint32_t node);

    static SV::String numberedKey(std::string_view prefix, std::uint64_t number);

    // Flow of tokens.
    std::uint32_t openScope(std::uint32_t model, std::uint32_t callingPass);
    void startScope(std::uint32_t scope);
    std::uint32_t chooseStart(std::uint32_t scope);
    void arriveAt(std::uint32_t scope, std::uint32_t node, std::uint32_t slot);
    void settle();
    void takeArrival(const Arrival& arrival);
    bool joinsAt(std::uint32_t scope, std::uint32_t node, std::uint32_t slot);
    bool fireInclusiveJoins(std::uint32_t scope);
    bool isBlocked(std::uint32_t scope, const ProcessNode& join, std::uint64_t filled);
    void consumeAt(std::uint32_t scope, const ProcessNode& join);
    void enter(std::uint32_t scope, std::uint32_t node);
    void leave(std::uint32_t scope, std::uint32_t node);
    void leaveBySome(std::uint32_t scope, std::uint32_t node);
    void leaveByRace(std::uint32_t scope, std::uint32_t node);
    std::uint32_t chooseFlow(std::uint32_t scope, std::uint32_t node);
    void send(std::uint32_t scope, const ProcessFlow& flow);
    void touch(std::uint32_t scope);
    void endToken(std::uint32_t scope, EventKind kind);
    void completeScope(std::uint32_t scope);
    bool raise(std::uint32_t scope, EventKind kind);

    // Passes.
    std::uint32_t makeToken(std::uint32_t scope, std::uint32_t node);
    void removeToken(std::uint32_t token);
    void removePass(std::uint32_t pass);
    void startActivity(std::uint32_t scope, std::uint32_t node);
    void startPass(std::uint32_t token);
    void startCall(std::uint32_t pass);
    void armBoundaries(std::uint32_t token, double passTime);
    void startWork(std::uint32_t pass);
    void endWork(std::uint32_t pass);
    void endPass(std::uint32_t pass);
    void finishActivity(std::uint32_t token);
    void fireBoundary(std::uint32_t token, std::uint32_t boundary);
    void carryOut(double time, const Plan& plan);

    // Breaking off.
    void breakOffToken(std::uint32_t token);
    void breakOffContent(std::uint32_t scope);
    void breakOffScope(std::uint32_t scope);
    Outcome conclude(std::uint32_t mainModel);
    bool countStep();
    void giveUp(std::string why);

    // Events.
    void sendScopeEvent(MeroEventCode code, std::uint32_t scope, bool withPassKey);
    void sendCall(std::uint32_t pass);
    void sendPass(MeroEventCode code, std::uint32_t pass);
    SimEvent& prepare(MeroEventCode code);
    void emit(SimEvent& simEvent, ControlComponent::ClassSlot slot);

    const ProcessGraph& graph;
    ControlComponent& control;
    Gate gate;
    std::vector<RandomStream> branchStreams;
    std::vector<RandomStream> workStreams;
    std::vector<ControlComponent::ClassSlot> classSlots;

    Pool<Scope> scopes;
    Pool<Token> tokens;
    Pool<Pass> passes;
    EventQueue<Plan> queue;
    std::vector<Arrival> arrivals;
    std::vector<Handle> touchedScopes;
    SimEvent event;
    double now = 0.0;
    std::uint64_t steps = 0;
    std::uint64_t lastKey = 0;
    std::uint64_t lastPass = 0;
    std::uint32_t mainScope = None;
    bool completed = false;
    bool stopped = false;
    std::string reason;
};

}  // namespace mero
