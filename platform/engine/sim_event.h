#pragma once

#include "component/host/simulation.h"

namespace mero {

/// Target of key pointers that don't apply.
inline const SV::String NoKey;

/// The engine's event: plain fields that the engine sets before it hands the event over. Fields that don't
/// apply to the code are 0 or `NoKey`. The keys aren't owned: whoever fills the event (trace, reader, process
/// instance) keeps them alive until the call that hands it over has returned, so that an event costs no
/// reference count.
struct SimEvent final : MeroSimEvent {
    std::int64_t time = 0;  ///< whole seconds since the start of the run
    MeroId mainModelId = MeroNoId;
    MeroId modelId = MeroNoId;
    MeroId calledModelId = MeroNoId;
    MeroId callingObjectId = MeroNoId;
    MeroId objectId = MeroNoId;
    MeroId executiveId = MeroNoId;
    MeroId assignedExecutiveId = MeroNoId;
    MeroId resourceId = MeroNoId;
    const SV::String* mainKey = &NoKey;  // key pointers are never null
    const SV::String* key = &NoKey;
    const SV::String* calledKey = &NoKey;
    const SV::String* passKey = &NoKey;

    void getTime(std::int64_t* result) const override { *result = time; }
    void getMainModelId(MeroId* result) const override { *result = mainModelId; }
    void getMainInstanceKey(SV::String* result) const override { *result = *mainKey; }
    void getModelId(MeroId* result) const override { *result = modelId; }
    void getInstanceKey(SV::String* result) const override { *result = *key; }
    void getCalledModelId(MeroId* result) const override { *result = calledModelId; }
    void getCalledInstanceKey(SV::String* result) const override { *result = *calledKey; }
    void getCallingObjectId(MeroId* result) const override { *result = callingObjectId; }
    void getObjectId(MeroId* result) const override { *result = objectId; }
    void getExecutionKey(SV::String* result) const override { *result = *passKey; }
    void getExecutiveId(MeroId* result) const override { *result = executiveId; }
    void getAssignedExecutiveId(MeroId* result) const override { *result = assignedExecutiveId; }
    void getResourceId(MeroId* result) const override { *result = resourceId; }
};

/// What the event adds to the fingerprint of a run: a sum of its fields, each times an odd constant of its
/// own, so that no field's change is lost. Keys count by the hash that they remember.
[[nodiscard]] std::uint64_t digestOf(const SimEvent& event);

/// Hears every event of a run, before the attached components; a recorder.
class EventSink {
public:
    EventSink() = default;
    EventSink(const EventSink&) = delete;
    EventSink& operator=(const EventSink&) = delete;
    virtual ~EventSink() = default;

    /// A sink that fails remembers it and reports it when it is finished; the run goes on.
    virtual void record(const SimEvent& event) = 0;
};

}  // namespace mero
