#pragma once

#include <map>
#include <string>

#include "component/host/core_variables.h"
#include "component/host/simulation.h"

#include "platform/repository/repository.h"

namespace mero {

/// Writes down what it hears of a run: "17@60 Check" is event 17 on the object Check at 60 seconds; the run's
/// own events are left out. `text` has the whole run, blanks between the events; `counts` how often each
/// event was heard, by "17 Check".
class EventLog : public MeroPassiveComponent {
public:
    explicit EventLog(const Repository& namingRepository) : repository(namingRepository) {
        observedClassSet.insert(Mero_GetCoreVar(CoreFlowNode));
    }

    int processEvent(MeroSimEvent* event) override {
        if (event->code == EventRunStart || event->code == EventRunEnd) {
            return EventHandled;
        }
        std::int64_t time = 0;
        MeroId objectId = MeroNoId;
        event->getTime(&time);
        if (event->code == EventSubProcessStart) {
            event->getCallingObjectId(&objectId);
        } else {
            event->getObjectId(&objectId);
        }
        const Object* object = repository.findObject(objectId);
        const std::string code = std::to_string(event->code);
        const std::string name = object != nullptr ? " " + std::string(object->name.view()) : "";
        if (keepsText) {
            text += (text.empty() ? "" : ", ") + code + "@" + std::to_string(time) + name;
        }
        ++counts[code + name];
        return EventHandled;
    }

    std::string text;
    std::map<std::string, int> counts;
    bool keepsText = true;

private:
    const Repository& repository;
};

}  // namespace mero
