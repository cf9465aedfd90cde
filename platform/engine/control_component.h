#pragma once

#include <cstdint>
#include <vector>

#include "platform/engine/sim_event.h"

namespace mero {

/// Hands the events of a run to the attached components, in the order in which they were attached, and keeps
/// count of them. Neither the counts nor the fingerprint depend on who is attached.
class ControlComponent final : public MeroControlComponent {
public:
    /// Number of a class of objects, for `sendFiltered`.
    using ClassSlot = std::uint32_t;
    /// Slot of events without an object: they go to every component.
    static constexpr ClassSlot NoClassSlot = 0;

    ControlComponent();

    /// 0 for a component that is null or attached already.
    int AttachPassiveComponent(MeroPassiveComponent* component) override;
    /// Allowed from within an event: the component hears no more.
    int DetachPassiveComponent(MeroPassiveComponent* component) override;

    /// `sink`, which isn't owned, hears every event from now on; null for none.
    void setSink(EventSink* sink) { eventSink = sink; }

    /// Tells every component that the event comes soon.
    void announce(const SimEvent& event) const;
    /// To every component.
    void send(SimEvent& event);
    /// The same with the event's digest, for those who know it.
    void send(SimEvent& event, std::uint64_t digest);
    /// To the components that observe the class or one of its super classes. Who that is, is looked up once
    /// for each class, so that a class that nobody observes costs nothing but the counting.
    void sendFiltered(SimEvent& event, ClassSlot slot);
    /// The same class has the same slot.
    ClassSlot slotOf(MeroId classId);

    [[nodiscard]] std::uint64_t eventCount() const { return events; }
    /// Events that a component refused because of their time.
    [[nodiscard]] std::uint64_t refusalCount() const { return refusals; }
    /// 64 bits over the order, codes, times, identifiers and keys of all events so far.
    [[nodiscard]] std::uint64_t fingerprint() const { return fingerprintState; }

private:
    struct Audience {
        MeroId classId;
        std::vector<MeroPassiveComponent*> members;
    };

    void count(const SimEvent& event, std::uint64_t digest);
    void updateAudiences();
    void sendTo(const std::vector<MeroPassiveComponent*>& members, SimEvent& event);
    void forgetDetached();

    std::vector<MeroPassiveComponent*> components;  ///< null where one was detached during an event
    std::vector<Audience> audiences;
    EventSink* eventSink = nullptr;
    std::uint64_t events = 0;
    std::uint64_t refusals = 0;
    std::uint64_t fingerprintState = 0;
    bool audiencesValid = false;
    bool sending = false;
    bool detachedWhileSending = false;
};

}  // namespace mero
