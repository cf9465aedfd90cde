#include "platform/engine/control_component.h"

#include <algorithm>

#include "platform/engine/mixing.h"
#include "platform/repository/library.h"

namespace mero {

namespace {

std::uint64_t pair(MeroId high, MeroId low) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(high)) << 32) |
           static_cast<std::uint32_t>(low);
}

/// Odd multipliers, so that each field has a weight of its own and the products don't wait for each other.
std::uint64_t digest(const SimEvent& event) {
    const std::uint64_t mainKey = mixText(event.mainKey->view());
    const std::uint64_t key = event.key == event.mainKey ? mainKey : mixText(event.key->view());
    return static_cast<std::uint64_t>(event.time) * 0x9E3779B97F4A7C15ULL +
           static_cast<std::uint64_t>(event.code) * 0xC2B2AE3D27D4EB4FULL +
           mixBits(pair(event.mainModelId, event.modelId)) * 0x165667B19E3779F9ULL +
           mixBits(pair(event.calledModelId, event.callingObjectId)) * 0xD6E8FEB86659FD93ULL +
           mixBits(pair(event.objectId, event.resourceId)) * 0xA0761D6478BD642FULL +
           mixBits(pair(event.executiveId, event.assignedExecutiveId)) * 0xE7037ED1A0B428DBULL +
           mainKey * 0x8EBC6AF09C88C6E3ULL + key * 0x589965CC75374CC3ULL +
           mixText(event.calledKey->view()) * 0x1D8E4E27C47D124FULL +
           mixText(event.passKey->view()) * 0xEB44ACCAB455D165ULL;
}

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

void ControlComponent::send(SimEvent& event) {
    count(event);
    sendTo(components, event);
}

void ControlComponent::sendFiltered(SimEvent& event, ClassSlot slot) {
    if (slot == NoClassSlot) {
        send(event);
        return;
    }
    count(event);
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

void ControlComponent::count(const SimEvent& event) {
    ++events;
    fingerprintState = mixBits(fingerprintState + digest(event));
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
