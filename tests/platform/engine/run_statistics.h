#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/engine/sim_event.h"
#include "platform/repository/repository.h"

namespace mero {

/// Means of what a run sends: waiting from reaching an object to the start of work on it, seconds of work by
/// worker, length of the finished instances.
class RunStatistics : public EventSink {
public:
    struct Mean {
        double sum = 0.0;
        double count = 0.0;
        void add(double value) {
            sum += value;
            count += 1.0;
        }
        [[nodiscard]] double value() const { return count > 0.0 ? sum / count : 0.0; }
    };

    explicit RunStatistics(const Repository& namingRepository) : repository(namingRepository) {}

    void record(const SimEvent& event) override {
        const std::string key(event.passKey->view());
        switch (event.code) {
            case EventRunStart:
                runStart = static_cast<double>(event.time);
                break;
            case EventProcessStart:
                cases.try_emplace(std::string(event.mainKey->view()), Case{event.time});
                firstArrival = firstArrival < 0 ? event.time : firstArrival;
                break;
            case EventObjectReached:
                passes[key].reached = event.time;
                cases[std::string(event.mainKey->view())].reach(event.time);
                break;
            case EventWorkStart:
                waitings[nameOf(event.objectId)].add(static_cast<double>(event.time - passes[key].reached));
                allWaitings.add(static_cast<double>(event.time - passes[key].reached));
                passes[key].started = event.time;
                passes[key].workedSince = event.time;
                break;
            case EventWorkResumed:
                passes[key].workedSince = event.time;
                break;
            case EventWorkSuspended:
            case EventWorkEnd:
                worked[nameOf(event.executiveId)] +=
                    static_cast<double>(event.time - passes[key].workedSince);
                if (event.code == EventWorkEnd) {
                    lastWorkEnd = event.time;
                    cases[std::string(event.mainKey->view())].end = event.time;
                    spans[nameOf(event.objectId)].add(static_cast<double>(event.time - passes[key].started));
                    passes.erase(key);
                }
                break;
            case EventProcessEnd: {
                const auto place = cases.find(std::string(event.mainKey->view()));
                const Case& ended = place->second;
                lengths.add(static_cast<double>(event.time - ended.begin));
                if (ended.firstReached >= 0) {
                    workLengths.add(static_cast<double>(ended.end - ended.firstReached));
                }
                cases.erase(place);
                break;
            }
            case EventRunEnd:
                runEnd = static_cast<double>(event.time);
                break;
            default:
                break;
        }
    }

    std::map<std::string, Mean> waitings;  ///< by object
    std::map<std::string, Mean> spans;     ///< from work start to work end, by object
    std::map<std::string, double> worked;  ///< seconds, by worker
    Mean allWaitings;
    Mean lengths;      ///< of finished instances
    Mean workLengths;  ///< from reaching the first object to the end of the last work
    std::int64_t firstArrival = -1;
    std::int64_t lastWorkEnd = 0;
    double runStart = 0.0;
    double runEnd = 0.0;

private:
    struct Case {
        std::int64_t begin = 0;
        std::int64_t firstReached = -1;
        std::int64_t end = 0;
        void reach(std::int64_t time) { firstReached = firstReached < 0 ? time : firstReached; }
    };
    struct PassTimes {
        std::int64_t reached = 0;
        std::int64_t started = 0;
        std::int64_t workedSince = 0;
    };

    [[nodiscard]] std::string nameOf(MeroId id) const {
        const Object* object = repository.findObject(id);
        return object != nullptr ? std::string(object->name.view()) : std::string();
    }

    const Repository& repository;
    std::unordered_map<std::string, PassTimes> passes;
    std::unordered_map<std::string, Case> cases;
};

}  // namespace mero
