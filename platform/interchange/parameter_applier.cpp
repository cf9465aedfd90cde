#include "platform/interchange/parameter_applier.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <unordered_map>

#include "platform/engine/distribution.h"
#include "platform/interchange/calendar_periods.h"
#include "platform/interchange/name_rules.h"
#include "platform/interchange/object_writer.h"
#include "platform/interchange/run_parameters.h"
#include "platform/interchange/staff_writer.h"

namespace mero {

namespace {

class ParameterApplier {
public:
    ParameterApplier(const SimulationParameters& readParameters, Repository& target,
                     ImportReport& importReport)
        : parameters(readParameters),
          repository(target),
          writer(target),
          report(importReport),
          staff(target, importReport) {}

    void apply() {
        report.notes.insert(report.notes.end(), parameters.notes.begin(), parameters.notes.end());
        report.runOptions = runOptionsOf(parameters.run);
        findElements();
        checkNodes();
        for (const ProbabilityParameters& probability : parameters.probabilities) {
            applyProbability(probability);
        }
        staff.write(parameters);
        for (const NodeParameters& node : parameters.nodes) {
            applyNode(node);
        }
        staff.storeDurations();
        for (const MeroId event : impossible) {
            writer.set(event, "Duration", SV::String());
        }
        for (const ArrivalParameters& arrival : parameters.arrivals) {
            applyArrival(arrival);
        }
    }

private:
    void note(const std::string& place, std::string_view done) {
        report.notes.push_back({place, "parameters", std::string(done)});
    }

    void findElements() {
        for (const MeroId modelId : report.models) {
            const Model& model = *repository.findModel(modelId);
            for (const MeroId id : model.objects) {
                const SV::String element = repository.textOf(*repository.findObject(id), "BPMN identifier");
                if (!element.IsEmpty()) {
                    nodes.emplace(element.view(), id);
                }
            }
            for (const MeroId id : model.relations) {
                const Relation& relation = *repository.findRelation(id);
                const SV::String element = repository.textOf(relation, "BPMN identifier");
                if (!element.IsEmpty()) {
                    flows.emplace(element.view(), id);
                }
            }
        }
    }

    /// Parameters of another process are a mistake of the user; a few unknown elements are not.
    void checkNodes() const {
        const bool fits =
            std::any_of(parameters.nodes.begin(), parameters.nodes.end(),
                        [this](const NodeParameters& node) { return nodes.contains(node.element); });
        if (!fits && !parameters.nodes.empty()) {
            throw DocumentRefused(fmt::format("{}: none of the tasks is in the imported process",
                                              parameters.nodes.front().place));
        }
    }

    void applyProbability(const ProbabilityParameters& probability) {
        if (const auto flow = flows.find(probability.element); flow != flows.end()) {
            writer.setRelation(flow->second, "Probability", probability.value);
            return;
        }
        const auto node = nodes.find(probability.element);
        if (node == nodes.end()) {
            note(probability.place, fmt::format("there is no sequence flow \"{}\"", probability.element));
            return;
        }
        if (!writer.hasAttribute(node->second, "Probability")) {
            note(probability.place, fmt::format("the probability of \"{}\" is left out: its kind has none",
                                                nameOf(node->second)));
            return;
        }
        writer.set(node->second, "Probability", probability.value);
        const bool attached =
            repository.textOf(*repository.findObject(node->second), "BPMN element") == "boundaryEvent";
        if (attached && probability.value == 0.0) {
            impossible.push_back(node->second);
            note(probability.place, fmt::format("\"{}\" never happens", nameOf(node->second)));
        }
    }

    void applyNode(const NodeParameters& node) {
        const auto found = nodes.find(node.element);
        if (found == nodes.end()) {
            note(node.place, fmt::format("there is no element \"{}\"", node.element));
            return;
        }
        const MeroId object = found->second;
        setFor(node, object, "Duration", SV::String(durationOf(node)), !durationOf(node).empty());
        setExecutionTime(object, durationOf(node));
        if (!sharesDuration(node)) {
            for (const CrewDuration& duration : node.crewDurations) {
                staff.addDuration(duration, *repository.findObject(object));
            }
        }
        if (!node.performers.empty()) {
            const bool performed = writer.hasAttribute(object, "Performer");
            setFor(node, object, "Performer",
                   performed ? SV::String("role " + kilnString(staff.roleOf(node.performers, nameOf(object))))
                             : SV::String(),
                   true);
        }
        setFor(node, object, "Costs", node.costs.value_or(0.0), node.costs.has_value());
        setFor(node, object, "Priority", node.priority.value_or(0), node.priority.has_value());
        setFor(node, object, "Waiting time", timeTextOf(node.waitingSeconds.value_or(0.0)),
               node.waitingSeconds.has_value());
        setFor(node, object, "Transport time", timeTextOf(node.transportSeconds.value_or(0.0)),
               node.transportSeconds.has_value());
    }

    /// Strain, costs and sums know times that don't vary: they take the mean of the duration.
    void setExecutionTime(MeroId object, const std::string& duration) {
        if (duration.empty() || !writer.hasAttribute(object, "Execution time")) {
            return;
        }
        if (const Result<Distribution> distribution = Distribution::parse(duration)) {
            writer.set(object, "Execution time", timeTextOf(std::round(distribution.value().meanDuration())));
        }
    }

    void setFor(const NodeParameters& node, MeroId object, std::string_view attribute,
                const AttributeValue& value, bool given) {
        if (!given) {
            return;
        }
        if (writer.hasAttribute(object, attribute)) {
            writer.set(object, attribute, value);
        } else {
            note(node.place, fmt::format("{} of \"{}\": left out, its kind has no such thing",
                                         wordOf(attribute), nameOf(object)));
        }
    }

    /// "the duration" of "Duration"
    static std::string wordOf(std::string_view attribute) {
        std::string word = fmt::format("the {}", attribute);
        constexpr std::size_t First = 4;
        word[First] = static_cast<char>(word[First] - 'A' + 'a');
        return word;
    }

    static bool sharesDuration(const NodeParameters& node) {
        return std::all_of(node.crewDurations.begin(), node.crewDurations.end(),
                           [&node](const CrewDuration& duration) {
                               return duration.distribution == node.crewDurations.front().distribution;
                           });
    }

    static std::string durationOf(const NodeParameters& node) {
        if (node.crewDurations.empty()) {
            return node.duration;
        }
        if (sharesDuration(node)) {
            return node.crewDurations.front().distribution;
        }
        std::string mixture;
        for (const CrewDuration& duration : node.crewDurations) {
            mixture += (mixture.empty() ? "" : "; ") + duration.distribution;
        }
        return fmt::format("mixture({})", mixture);
    }

    [[nodiscard]] std::string nameOf(MeroId object) const {
        return std::string(repository.findObject(object)->name.view());
    }

    void applyArrival(const ArrivalParameters& arrival) {
        const MeroId start = startEventOf(arrival);
        if (start == MeroNoId) {
            return;
        }
        if (!arrival.distribution.empty()) {
            writer.set(start, "Arrival", SV::String(arrival.distribution));
        }
        if (!arrival.calendar.empty()) {
            writer.set(start, "Arrival calendar", SV::String(arrival.calendar));
        }
    }

    MeroId startEventOf(const ArrivalParameters& arrival) {
        if (!arrival.startEvent.empty()) {
            const auto node = nodes.find(arrival.startEvent);
            if (node != nodes.end() && writer.hasAttribute(node->second, "Arrival")) {
                return node->second;
            }
            note(arrival.place, fmt::format("there is no start event \"{}\"", arrival.startEvent));
            return MeroNoId;
        }
        const std::vector<MeroId> starts = startEvents();
        if (starts.empty()) {
            note(arrival.place, "not used, the process has no start event");
            return MeroNoId;
        }
        if (starts.size() > 1) {
            note(arrival.place, fmt::format("given to \"{}\", the first of {} start events",
                                            nameOf(starts.front()), starts.size()));
        }
        return starts.front();
    }

    /// Those of the process that the first known node belongs to; the first model where no node is known.
    [[nodiscard]] std::vector<MeroId> startEvents() const {
        MeroId model = report.models.front();
        for (const NodeParameters& parameter : parameters.nodes) {
            if (const auto node = nodes.find(parameter.element); node != nodes.end()) {
                model = repository.findObject(node->second)->modelId;
                break;
            }
        }
        const Library::Class* startClass =
            repository.library().findClass(ClassCodeProcessLibrary, "Start event");
        const auto found = repository.objectsOfClass(model, startClass->id);
        return {found.begin(), found.end()};
    }

    const SimulationParameters& parameters;
    Repository& repository;
    ObjectWriter writer;
    ImportReport& report;
    StaffWriter staff;
    /// Boundary events with a chance of 0: they keep no time, since a time alone makes them happen for sure.
    std::vector<MeroId> impossible;
    std::unordered_map<std::string, MeroId> nodes;
    std::unordered_map<std::string, MeroId> flows;
};

/// Weekdays are those of the year in which the run starts, where the parameters tell it.
void dateCalendars(SimulationParameters& parameters) {
    constexpr std::size_t YearDigits = 4;
    const std::string year = parameters.run.start.substr(0, YearDigits);
    if (year.size() < YearDigits) {
        return;
    }
    for (CrewParameters& crew : parameters.crews) {
        for (WorkerParameters& worker : crew.workers) {
            worker.calendar = withYear(worker.calendar, year);
        }
    }
    for (ArrivalParameters& arrival : parameters.arrivals) {
        arrival.calendar = withYear(arrival.calendar, year);
    }
}

}  // namespace

void applyParameters(const SimulationParameters& parameters, Repository& repository, ImportReport& report) {
    SimulationParameters dated = parameters;
    dateCalendars(dated);
    ParameterApplier(dated, repository, report).apply();
}

}  // namespace mero
