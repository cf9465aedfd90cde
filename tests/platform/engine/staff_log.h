#pragma once

#include <string>

#include "platform/engine/sim_event.h"
#include "platform/repository/repository.h"

namespace mero {

/// Writes down a run with who works: "17@60 Check Ann+Van" is event 17 on the object Check at 60 seconds, by
/// Ann with the resource Van; instances are told by their keys. Events 22 are left out if they are not
/// wanted.
class StaffLog : public EventSink {
public:
    explicit StaffLog(const Repository& namingRepository) : repository(namingRepository) {}

    void record(const SimEvent& event) override {
        if (event.code == EventObjectReached && !tellsReached) {
            return;
        }
        text += (text.empty() ? "" : ", ") + std::to_string(event.code) + "@" + std::to_string(event.time);
        append(" ", event.objectId);
        append(" ", event.assignedExecutiveId);
        append(" ", event.executiveId);
        append("+", event.resourceId);
        if (event.code == EventProcessStart || event.code == EventProcessEnd ||
            event.code == EventInstanceDropped) {
            text += " #" + std::string(event.key->view());
        }
    }

    std::string text;
    bool tellsReached = false;

private:
    void append(const char* before, MeroId id) {
        if (const Object* object = repository.findObject(id)) {
            text += before + std::string(object->name.view());
        }
    }

    const Repository& repository;
};

}  // namespace mero
