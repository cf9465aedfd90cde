#pragma once

#include <cstdint>

#include "component/host/containers.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

/// Codes of simulation events, in the order of a run: 3, then instances, then 6. A pass through an object is
/// 22 reached, 8 resource bound, 1 executive assigned, 17 work start, any number of 18 suspended and 19
/// resumed, 20 work end, 9 resource freed.
enum MeroEventCode : std::int32_t {
    EventExecutiveAssigned = 1,    ///< an executive is given the object
    EventRunStart = 3,             ///< the run begins
    EventRunEnd = 6,               ///< the run ends
    EventResourceBound = 8,        ///< a resource is taken for the object
    EventResourceFreed = 9,        ///< the resource is given back
    EventProcessStart = 11,        ///< a new main process instance begins
    EventSubProcessStart = 12,     ///< a sub-process instance begins, called from an object
    EventProcessEnd = 13,          ///< a main process instance ends
    EventSubProcessEnd = 14,       ///< a sub-process instance ends
    EventInstanceDropped = 15,     ///< a main process instance will send no more events
    EventSubInstanceDropped = 16,  ///< a sub-process instance will send no more events
    EventWorkStart = 17,           ///< work on the object begins
    EventWorkSuspended = 18,       ///< work stops without being finished
    EventWorkResumed = 19,         ///< work goes on
    EventWorkEnd = 20,             ///< the pass through the object is finished
    EventObjectReached = 22,       ///< the process has reached the object, before any waiting
    EventRestart = 28,             ///< the run begins anew
};

/// One event, owned by the engine and valid only during the call that hands it over. Which accessors mean
/// something depends on `code`; the others aren't called.
class MeroSimEvent {
public:
    virtual ~MeroSimEvent() = default;

    std::int32_t code = 0;

    /// Whole seconds since the start of the run; never goes backward.
    virtual void getTime(std::int64_t* time) const = 0;
    /// Model of the process at the top of the call chain.
    virtual void getMainModelId(MeroId* modelId) const = 0;
    /// Key of the process instance at the top of the call chain.
    virtual void getMainInstanceKey(SV::String* key) const = 0;
    /// Model in which the event happens; on 13 and 14 that of the process that ends.
    virtual void getModelId(MeroId* modelId) const = 0;
    /// Key of the process or sub-process instance in which the event happens.
    virtual void getInstanceKey(SV::String* key) const = 0;
    /// On 12: model of the sub-process that starts.
    virtual void getCalledModelId(MeroId* modelId) const = 0;
    /// On 12: key of the sub-process instance that starts.
    virtual void getCalledInstanceKey(SV::String* key) const = 0;
    /// On 12: object of the calling model from which the sub-process starts.
    virtual void getCallingObjectId(MeroId* objectId) const = 0;
    /// Object that the event is about.
    virtual void getObjectId(MeroId* objectId) const = 0;
    /// Key of this one pass through the object: unique among the passes alive, the same on opening and
    /// closing event.
    virtual void getExecutionKey(SV::String* key) const = 0;
    /// Executive that works on the object.
    virtual void getExecutiveId(MeroId* executiveId) const = 0;
    /// On 1: executive that gets the object.
    virtual void getAssignedExecutiveId(MeroId* executiveId) const = 0;
    /// Resource bound to the object.
    virtual void getResourceId(MeroId* resourceId) const = 0;
};

/// Result of `processEvent`.
enum MeroEventStatus : int { EventHandled = 0, EventTimeOutOfRange = 0x89 };

/// Root of all components of a simulation.
class MeroSimulationComponent {
public:
    MeroSimulationComponent() = default;
    MeroSimulationComponent(const MeroSimulationComponent&) = delete;
    MeroSimulationComponent& operator=(const MeroSimulationComponent&) = delete;
    virtual ~MeroSimulationComponent() = default;
};

/// A component that is told of events and doesn't act on the run.
class MeroPassiveComponent : public MeroSimulationComponent {
public:
    /// Called for one event after the other. `event` is the engine's.
    virtual int processEvent(MeroSimEvent* event) = 0;

    /// A host that knows what comes may tell so some events ahead, in the order of sending, for the component
    /// to ask the memory for what the event will need. Nothing else comes of it, and the event needn't be
    /// sent after all.
    virtual void expectEvent([[maybe_unused]] const MeroSimEvent& event) {}

    /// Classes whose objects the component wants to hear of; the engine reads it.
    [[nodiscard]] const ISortedSet<MeroId>& getObservedClassSet() const { return observedClassSet; }

protected:
    ISortedSet<MeroId> observedClassSet;
};

/// The engine's end of the door.
class MeroControlComponent : public MeroSimulationComponent {
public:
    /// From now on `component`, which isn't owned, gets events. Non-zero on success.
    virtual int AttachPassiveComponent(MeroPassiveComponent* component) = 0;
    /// Non-zero on success; 0 if it isn't attached.
    virtual int DetachPassiveComponent(MeroPassiveComponent* component) = 0;
};

/// What an expression may reach.
enum MeroOSEScope : int { OseScopeModel = 1 };

/// Evaluates an object expression in a model; replaces the content of `objects`. 0 on success; on a failure
/// the set is empty. The agents always pass `OseScopeModel`, true and true.
int aEvaluateExpression(MeroId modelId, const SV::String& expression, ISortedSet<MeroId>& objects,
                        MeroOSEScope scope, bool withSubClasses, bool loadedOnly);
