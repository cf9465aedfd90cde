#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/engine/control_component.h"
#include "platform/engine/event_gate.h"
#include "platform/engine/event_queue.h"
#include "platform/engine/message_exchange.h"
#include "platform/engine/named_staff.h"
#include "platform/engine/pool.h"
#include "platform/engine/process_graph.h"
#include "platform/engine/random.h"
#include "platform/engine/workforce.h"

namespace mero {

/// Time of an event: halves are rounded up, and what is beyond 2^62 is 2^62.
[[nodiscard]] std::int64_t wholeSeconds(double time);

/// How the instances of a `ProcessRunner` went.
struct RunnerCounts {
    std::uint64_t started = 0;
    std::uint64_t finished = 0;
    std::uint64_t dropped = 0;
    std::uint64_t startedAtOnce = 0;  ///< by messages, since the clock moved
    std::uint64_t generations = 0;    ///< longest chain of instances, each started by the one before
    std::map<std::string, std::uint64_t> dropReasons;

    [[nodiscard]] std::uint64_t live() const { return started - finished - dropped; }
};

/// Plays the token game of BPMN 2.0 (chapter 13) for any number of process instances on one clock and sends
/// their events. Who works on a pass, and when, is asked of a `NamedStaff` or a `Workforce`; without either,
/// nobody is named and every pass is worked on at once. It knows neither arrivals nor the end of the run;
/// that is the business of `PathRun` and `WorkLoadRun`.
class ProcessRunner {
public:
    /// What one instance may cost before it is dropped.
    static constexpr std::uint64_t StepLimit = 1'000'000;
    static constexpr std::uint32_t CallDepthLimit = 1'000;
    static constexpr std::uint32_t None = UINT32_MAX;

    ProcessRunner(const ProcessGraph& processGraph, std::uint64_t runSeed, ControlComponent& controlComponent,
                  EventGate& eventGate);

    /// Executives and resources are named, and never busy. Not owned.
    void nameStaff(NamedStaff& staff) { namedStaff = &staff; }
    /// Workers and resources are contended for, and messages between instances act. Not owned.
    void contendFor(Workforce& force);

    /// Starts an instance of a main model now, at the start node or at those that the model chooses.
    void start(std::uint32_t mainModel, std::uint32_t startNode = None);
    /// False when nothing more is going to happen by itself.
    [[nodiscard]] bool hasPlan() const { return !queue.empty(); }
    [[nodiscard]] double nextTime() const { return queue.nextTime(); }
    /// Carries out what is due next, which moves the clock to it unless it has been given up.
    void step();
    /// Forgets what is due; for a runner without live instances.
    void clearPlans() { queue.clear(); }
    /// Crosses the next borders of shifts of the workforce.
    void crossBorders();
    /// Until `announceLive` nothing is sent, while the gate is asked as ever.
    void keepSilent() { silent = true; }
    /// Begins to send: first of each live instance, in the order of their start, what an observer that comes
    /// now has to know so that what is sent later means to it what it always means. The instance and its open
    /// calls begin, a pass that is open is reached and, if work on it has begun, who holds it is named and
    /// work begins. Passes whose work has ended aren't told.
    void announceLive();

    [[nodiscard]] double clock() const { return now; }
    /// To a time that isn't earlier, and not later than that of what is due.
    void setClock(double time) { now = time; }
    [[nodiscard]] const RunnerCounts& counts() const { return instanceCounts; }
    /// True once the gate has closed.
    [[nodiscard]] bool isStopped() const { return stopped; }

private:
    using Handle = PoolHandle;

    struct Instance {
        std::uint32_t serial = 0;
        bool alive = false;
        bool mayBeStuck = false;
        std::uint32_t rootScope = None;
        std::uint32_t model = 0;
        std::uint64_t number = 0;  ///< in order of start
        std::uint64_t steps = 0;
        std::uint64_t conversation = 0;
        std::uint64_t generation = 0;  ///< so many messages led from an arrival to it
        std::string reason;            ///< why it is going to be dropped
    };
    /// A process or sub-process instance.
    struct Scope {
        std::uint32_t serial = 0;
        std::uint32_t model = 0;
        std::uint32_t instance = None;
        std::uint32_t depth = 0;
        std::uint32_t callingPass = None;
        std::uint32_t firstToken = None;
        std::uint32_t live = 0;     ///< tokens in objects and on their way
        std::uint32_t waiting = 0;  ///< tokens in front of joins
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
        std::uint32_t armedBoundaries = 0;  ///< that may still fire by themselves
        bool chancesDrawn = false;          ///< of boundary events without a time
        bool hasMessage = false;            ///< that it would wait for
    };
    enum class PassState : std::uint8_t { Reached, Queued, Working, Suspended, Resting, Calling };
    /// One pass through an activity, or one call.
    struct Pass {
        std::uint32_t serial = 0;
        std::uint32_t token = None;
        std::uint32_t previous = None;
        std::uint32_t next = None;
        std::uint32_t calledScope = None;
        PassState state = PassState::Reached;
        std::uint8_t absentHolders = 0;  ///< off shift
        std::uint32_t workPlan = 0;      ///< tells the valid `EndWork` from earlier ones
        double workTime = 0.0;           ///< that is left when work starts or resumes
        double workedSince = 0.0;
        Holders holders;
        Handle ticket;  ///< while queued
        SV::String key;
    };
    /// Boundary events that act by themselves wait from the time at which the object is reached; those that
    /// fire by chance act while it is worked on, which with contended workers begins later.
    enum class Arming : std::uint8_t { All, ByThemselves, ByChance };
    struct Arrival {
        Handle scope;
        std::uint32_t node;
        std::uint32_t slot;
    };
    enum class Action : std::uint8_t { BeReady, EndWork, EndPass, LeaveEvent, Boundary, WinRace };
    struct Plan {
        Action action = Action::LeaveEvent;
        Handle target;                ///< a token for `LeaveEvent`, `Boundary` and `WinRace`, else a pass
        std::uint32_t detail = None;  ///< node of the boundary or race, number of the `EndWork`
    };
    /// An instance that a message starts.
    struct MessageStart {
        MessageTarget target;
        std::uint64_t conversation;
        std::uint64_t generation;
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

    // Instances.
    void startInstance(std::uint32_t mainModel, std::uint32_t startNode, std::uint64_t conversation,
                       std::uint64_t generation);
    void startByMessage(const MessageStart& messageStart);
    void endInstance(std::uint32_t instance);
    void settleAll();
    void dropStuck();
    [[nodiscard]] bool isStuck(std::uint32_t scope);
    bool countStep(std::uint32_t instance);
    void giveUp(std::uint32_t instance, std::string why);
    void announce(std::uint32_t scope);
    void announcePass(std::uint32_t pass);

    // Flow of tokens.
    std::uint32_t openScope(std::uint32_t model, std::uint32_t callingPass, std::uint32_t instance);
    void startScope(std::uint32_t scope, std::uint32_t startNode);
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
    void startActivity(std::uint32_t scope, std::uint32_t node, bool hasMessage = false);
    void startPass(std::uint32_t token);
    void startCall(std::uint32_t pass);
    void armBoundaries(std::uint32_t token, Arming arming, double passTime);
    void endPass(std::uint32_t pass);
    void finishActivity(std::uint32_t token);
    void fireBoundary(std::uint32_t token, std::uint32_t boundary);
    void carryOut(double time, const Plan& plan);
    [[nodiscard]] bool isValid(const Plan& plan) const;

    // Work.
    void beReady(std::uint32_t pass);
    void assign(std::uint32_t pass, const Holders& holders);
    void startWork(std::uint32_t pass);
    void goOnWorking(std::uint32_t pass);
    void endWork(std::uint32_t pass);
    void suspend(std::uint32_t pass);
    void resume(std::uint32_t pass);
    void freeHolders(std::uint32_t pass);
    void assignFreed();

    // Messages.
    [[nodiscard]] bool awaitsMessage(const ProcessNode& node) const {
        return messages != nullptr && node.awaitsMessage;
    }
    void await(std::uint32_t scope, std::uint32_t node, const Plan& plan);
    void throwMessages(std::uint32_t scope, const ProcessNode& node);
    bool startsMessageRace(std::uint32_t scope, std::uint32_t node);
    void winRace(std::uint32_t token, std::uint32_t node);

    // Breaking off.
    void breakOffToken(std::uint32_t token);
    void breakOffContent(std::uint32_t scope);
    void breakOffScope(std::uint32_t scope);

    // Events.
    void sendScopeEvent(MeroEventCode code, std::uint32_t scope, bool withPassKey);
    void sendCall(std::uint32_t pass);
    void sendPass(MeroEventCode code, std::uint32_t pass);
    void sendAssigned(std::uint32_t pass);
    SimEvent& prepare(MeroEventCode code, std::uint32_t scope);
    SimEvent& preparePass(MeroEventCode code, std::uint32_t pass);
    void emit(SimEvent& simEvent, ControlComponent::ClassSlot slot);

    const ProcessGraph& graph;
    ControlComponent& control;
    EventGate& gate;
    NamedStaff* namedStaff = nullptr;
    Workforce* workforce = nullptr;
    std::unique_ptr<MessageExchange<Plan>> messages;
    std::vector<RandomStream> branchStreams;
    std::vector<RandomStream> workStreams;
    std::vector<ControlComponent::ClassSlot> classSlots;

    Pool<Instance> instances;
    Pool<Scope> scopes;
    Pool<Token> tokens;
    Pool<Pass> passes;
    EventQueue<Plan> queue;
    std::vector<Arrival> arrivals;
    std::vector<Handle> touchedScopes;
    std::vector<Handle> suspects;  ///< instances that may be stuck
    std::vector<Handle> doomed;    ///< instances that are going to be dropped
    std::deque<MessageStart> messageStarts;
    double messageStartTime = 0.0;  ///< of the last one
    std::vector<Handle> leftPasses;
    std::vector<Handle> returnedPasses;
    SimEvent event;
    RunnerCounts instanceCounts;
    double now = 0.0;
    std::uint64_t lastKey = 0;
    std::uint64_t lastPass = 0;
    bool stopped = false;
    bool silent = false;
};

}  // namespace mero
