#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/interchange/import_report.h"

namespace mero {

// What the parameters of a simulation say, whatever their file format: distributions, calendars and times are
// already as this system writes them, elements are named by their BPMN identifiers, and each `place` is the
// one in the file for messages.

/// Workers that are told apart by nothing but their names.
struct WorkerParameters {
    std::string name;  ///< with " 1", " 2" … where there are several
    int amount = 1;
    double hourlyWages = 0.0;
    std::string calendar;  ///< calendar text; empty: always there
};

/// Workers that tasks refer to together, by one identifier.
struct CrewParameters {
    std::string id;
    std::vector<WorkerParameters> workers;
};

/// A role of the working environment, and who has it.
struct RoleParameters {
    std::string name;
    std::vector<std::string> crews;
};

/// How long the workers of a crew need for a task.
struct CrewDuration {
    std::string crew;
    std::string distribution;
};

/// What is said of a flow node; empty members say nothing.
struct NodeParameters {
    std::string element;
    std::string place;
    std::string duration;                     ///< distribution, of tasks and events
    std::vector<CrewDuration> crewDurations;  ///< instead of `duration`, where workers differ
    std::vector<std::string> performers;      ///< crews, any worker of which can do it
    std::optional<double> costs;              ///< of one execution
    std::optional<int> priority;              ///< the higher goes first
    std::optional<double> waitingSeconds;
    std::optional<double> transportSeconds;
};

/// The chance of a sequence flow, or of a boundary event.
struct ProbabilityParameters {
    std::string element;
    std::string place;
    double value = 0.0;
};

struct ArrivalParameters {
    std::string startEvent;  ///< empty: the first of the process that the parameters belong to
    std::string place;
    std::string distribution;  ///< of the seconds between arrivals; may be empty
    std::string calendar;      ///< calendar text, may be empty
};

/// What a run is to be started with; it isn't stored, but told as options.
struct RunParameters {
    std::optional<int> instances;
    std::string start;  ///< "2026-01-05T08:00:00"
    std::optional<double> seconds;
    std::optional<double> warmUpSeconds;
    std::optional<long long> seed;
    std::optional<int> replications;
};

struct SimulationParameters {
    std::vector<RoleParameters> roles;
    std::vector<CrewParameters> crews;
    std::vector<NodeParameters> nodes;
    std::vector<ProbabilityParameters> probabilities;
    std::vector<ArrivalParameters> arrivals;
    RunParameters run;
    std::vector<ImportNote> notes;  ///< what isn't used

    void note(std::string place, std::string element, std::string said) {
        notes.push_back({std::move(place), std::move(element), std::move(said)});
    }
};

}  // namespace mero
