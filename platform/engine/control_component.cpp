#include "platform/engine/control_component.h"

#include <algorithm>

#include "platform/repository/library.h"
#include "platform/toolkit/mixing.h"

namespace mero {

namespace {

bool observes(const MeroPassiveComponent& component, MeroId classId) {
    const auto& observed = component.getObservedClassSet();
    return std::any_of(observed.begin(), observed.end(), [&](MeroId superClassId) {
        return Library::standard().isSubClassOf(superClassId, classId);
    });
}

}  // namespace

ControlComponent::ControlComponent() {
    audiences.push_back({MeroNoId, {}});
}

int ControlComponent::AttachPassiveComponent(MeroPassiveComponent* component) {
    if (component == nullptr ||
        std::find(components.begin(), components.end(), component) != components.end()) {
        return 0;
    }
    components.push_back(component);
    audiencesValid = false;
    return 1;
}

int ControlComponent::DetachPassiveComponent(MeroPassiveComponent* component) {
    const auto place = std::find(components.begin(), components.end(), component);
    if (component == nullptr || place == components.end()) {
        return 0;
    }
    if (!sending) {
        components.erase(place);
        audiencesValid = false;
        return 1;
    }
    *place = nullptr;
    detachedWhileSending = true;
    for (Audience& audience : audiences) {
        std::replace(audience.members.begin(), audience.members.end(), component,
                     static_cast<MeroPassiveComponent*>(nullptr));
    }
    return 1;
}

void ControlComponent::announce(const SimEvent& event) const {
    for (MeroPassiveComponent* const component : components) {
        if (component != nullptr) {
            component->expectEvent(event);
        }
    }
}

void ControlComponent::send(SimEvent& event) {
    send(event, digestOf(event));
}

void ControlComponent::send(SimEvent& event, std::uint64_t digest) {
    count(event, digest);
    sendTo(components, event);
}

void ControlComponent::sendFiltered(SimEvent& event, ClassSlot slot) {
    if (slot == NoClassSlot) {
        send(event);
        return;
    }
    count(event, digestOf(event));
    if (!audiencesValid) {
        updateAudiences();
    }
    sendTo(audiences[slot].members, event);
}

ControlComponent::ClassSlot ControlComponent::slotOf(MeroId classId) {
    for (ClassSlot slot = 1; slot < audiences.size(); ++slot) {
        if (audiences[slot].classId == classId) {
            return slot;
        }
    }
    audiences.push_back({classId, {}});
    audiencesValid = false;
    return static_cast<ClassSlot>(audiences.size() - 1);
}

void ControlComponent::count(const SimEvent& event, std::uint64_t digest) {
    ++events;
    fingerprintState = mixBits(fingerprintState + digest);
    if (eventSink != nullptr) {
        eventSink->record(event);
    }
}

void ControlComponent::updateAudiences() {
    for (Audience& audience : audiences) {
        audience.members.clear();
        std::copy_if(
            components.begin(), components.end(), std::back_inserter(audience.members),
            [&](const MeroPassiveComponent* component) { return observes(*component, audience.classId); });
    }
    audiencesValid = true;
}

/// By index, since a component may attach or detach others; one attached now hears the next event.
void ControlComponent::sendTo(const std::vector<MeroPassiveComponent*>& members, SimEvent& event) {
    sending = true;
    const std::size_t count = members.size();
    for (std::size_t index = 0; index < count; ++index) {
        if (members[index] != nullptr && members[index]->processEvent(&event) != EventHandled) {
            ++refusals;
        }
    }
    sending = false;
    if (detachedWhileSending) {
        forgetDetached();
    }
}

void ControlComponent::forgetDetached() {
    std::erase(components, nullptr);
    audiencesValid = false;
    detachedWhileSending = false;
}

}  // namespace mero
