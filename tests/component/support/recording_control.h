#pragma once

#include <algorithm>
#include <vector>

#include "component/host/simulation.h"

namespace mero::test {

/// An engine's end of the door that remembers who is attached, and can refuse to let go.
class RecordingControl final : public MeroControlComponent {
public:
    int AttachPassiveComponent(MeroPassiveComponent* component) override {
        attached.push_back(component);
        ++attachments;
        return 1;
    }
    int DetachPassiveComponent(MeroPassiveComponent* component) override {
        const auto place = std::find(attached.begin(), attached.end(), component);
        if (place == attached.end() || refusesToDetach) {
            return 0;
        }
        attached.erase(place);
        return 1;
    }

    std::vector<MeroPassiveComponent*> attached;
    int attachments = 0;
    bool refusesToDetach = false;
};

}  // namespace mero::test
