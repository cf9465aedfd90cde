#include "platform/interchange/scylla_simulation.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <set>

#include "platform/interchange/iso_time.h"
#include "platform/interchange/run_parameters.h"
#include "platform/interchange/scylla_values.h"
#include "platform/interchange/xml_values.h"

namespace mero {

namespace {

bool endsWith(std::string_view kind, std::string_view end) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    };
    return kind.size() >= end.size() &&
           std::equal(end.begin(), end.end(), kind.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [&lower](char left, char right) { return lower(left) == lower(right); });
}

class SimulationReader {
public:
    SimulationReader(const XmlElement& readConfiguration, const ScyllaGlobal& globalConfiguration,
                     SimulationParameters& target)
        : configuration(readConfiguration), global(globalConfiguration), parameters(target) {}

    void read() {
        readRun();
        std::string order = configuration.attribute("resourceAssignmentOrder");
        order = order.empty() ? global.assignmentOrder : order;
        prioritiesCount = order.empty() || order.find("priority") != std::string::npos;
        for (const XmlElement& element : configuration.children()) {
            readElement(element);
        }
    }

private:
    void note(const XmlElement& element, std::string said) {
        const std::string name =
            element.attribute("name").empty() ? element.attribute("id") : element.attribute("name");
        parameters.note(
            element.place(),
            name.empty() ? std::string(element.kind()) : fmt::format("{} \"{}\"", element.kind(), name),
            std::move(said));
    }

    void readRun() {
        RunParameters& run = parameters.run;
        if (configuration.hasAttribute("processInstances")) {
            run.instances = countOf(configuration, requiredNumber(configuration, "processInstances"),
                                    std::numeric_limits<int>::max());
        }
        if (const auto seed = optionalNumber(configuration, "randomSeed")) {
            run.seed = seedOf(configuration, *seed);
        }
        const std::optional<IsoTime> start = timeOf("startDateTime");
        const std::optional<IsoTime> end = timeOf("endDateTime");
        if (start) {
            run.start = wallClockText(start->milliseconds + global.zoneOffset.value_or(start->offset));
        }
        if (start && end) {
            if (end->milliseconds < start->milliseconds) {
                configuration.refuse("the simulation ends before it starts");
            }
            constexpr double MillisecondsOfSecond = 1000.0;
            run.seconds = static_cast<double>(end->milliseconds - start->milliseconds) / MillisecondsOfSecond;
        }
    }

    [[nodiscard]] std::optional<IsoTime> timeOf(const char* attribute) const {
        const std::string text = configuration.attribute(attribute);
        if (text.empty()) {
            return std::nullopt;
        }
        const std::optional<IsoTime> time = parseIsoTime(std::string_view(text).substr(0, text.find('[')));
        if (!time) {
            configuration.refuse(fmt::format("{}: \"{}\" is no date and time", attribute, text));
        }
        return time;
    }

    void readElement(const XmlElement& element) {
        const std::string_view kind = element.kind();
        if (kind == "startEvent") {
            readStart(element);
        } else if (endsWith(kind, "task")) {
            readTask(element);
        } else if (endsWith(kind, "subProcess")) {
            readSubProcess(element);
        } else if (endsWith(kind, "gateway")) {
            readGateway(element);
        } else if (endsWith(kind, "catchEvent") || endsWith(kind, "throwEvent")) {
            readEvent(element);
        } else {
            note(element, "isn't used");
        }
    }

    void readStart(const XmlElement& start) {
        for (const XmlElement& child : start.children()) {
            if (child.kind() == "arrivalRate") {
                parameters.arrivals.push_back(
                    {requiredAttribute(start, "id"), start.place(), scyllaDistribution(child), {}});
            } else {
                note(child, "isn't used");
            }
        }
    }

    /// The elements of a sub-process stand inside of it, beside what is said of itself.
    void readSubProcess(const XmlElement& subProcess) {
        for (const XmlElement& child : subProcess.children()) {
            if (child.kind() == "boundaryEvents") {
                readBoundaryEvents(child);
            } else if (child.kind() == "duration" || child.kind() == "resources") {
                note(child, "isn't used: it belongs to a sub-process");
            } else {
                readElement(child);
            }
        }
    }

    void readTask(const XmlElement& element) {
        NodeParameters task;
        task.element = requiredAttribute(element, "id");
        task.place = element.place();
        if (!taskIds.insert(task.element).second) {
            note(element, "another entry has this identifier; the last one counts");
        }
        for (const XmlElement& part : element.children()) {
            if (part.kind() == "duration") {
                task.duration = scyllaDistribution(part);
            } else if (part.kind() == "resources") {
                readResources(part, task);
            } else if (part.kind() == "boundaryEvents") {
                readBoundaryEvents(part);
            } else {
                note(part, "isn't used");
            }
        }
        parameters.nodes.push_back(std::move(task));
    }

    void readResources(const XmlElement& resources, NodeParameters& task) {
        for (const XmlElement& resource : resources.children()) {
            const std::string id = requiredAttribute(resource, "id");
            if (!global.given) {
                note(resource, "isn't used: the global configuration isn't given");
                continue;
            }
            const auto known = global.resources.find(id);
            if (known == global.resources.end()) {
                resource.refuse(fmt::format("there is no resource \"{}\" in the global configuration", id));
            }
            if (!task.performers.empty()) {
                note(resource, "isn't used: the worker of one resource carries out a task");
                continue;
            }
            const double amount = optionalNumber(resource, "amount").value_or(1.0);
            if (countOf(resource, amount, std::numeric_limits<int>::max()) > 1) {
                note(resource,
                     fmt::format("{} workers at once are asked for; one carries out a task", amount));
            }
            task.performers.push_back(id);
            readPriority(resource, task);
        }
    }

    void readPriority(const XmlElement& resource, NodeParameters& task) {
        const auto assignment = childOf(resource, "assignmentDefinition");
        const auto priority = assignment ? childOf(*assignment, "priority") : std::nullopt;
        if (!priority) {
            return;
        }
        if (!prioritiesCount) {
            note(*priority, "isn't used: the order of assignment doesn't name it");
            return;
        }
        constexpr double Greatest = 1e9;
        task.priority =
            static_cast<int>(std::clamp(std::round(numberOfText(*priority)), -Greatest, Greatest));
    }

    void readBoundaryEvents(const XmlElement& events) {
        for (const XmlElement& event : events.children()) {
            readEvent(event);
        }
    }

    void readEvent(const XmlElement& element) {
        NodeParameters event;
        event.element = requiredAttribute(element, "id");
        event.place = element.place();
        for (const XmlElement& part : element.children()) {
            if (part.kind() == "arrivalRate") {
                event.duration = scyllaDistribution(part);
            } else if (part.kind() == "eventProbability") {
                parameters.probabilities.push_back({event.element, part.place(), probabilityOf(part)});
            } else {
                note(part, "isn't used");
            }
        }
        parameters.nodes.push_back(std::move(event));
    }

    static double probabilityOf(const XmlElement& element) {
        const double probability = numberOfText(element);
        if (probability < 0.0 || probability > 1.0) {
            element.refuse("a probability lies between 0 and 1");
        }
        return probability;
    }

    void readGateway(const XmlElement& gateway) {
        for (const XmlElement& flow : gateway.children()) {
            const auto probability =
                flow.kind() == "outgoingSequenceFlow" ? childOf(flow, "branchingProbability") : std::nullopt;
            if (!probability) {
                note(flow, "isn't used");
                continue;
            }
            parameters.probabilities.push_back(
                {requiredAttribute(flow, "id"), flow.place(), probabilityOf(*probability)});
        }
    }

    const XmlElement& configuration;
    const ScyllaGlobal& global;
    SimulationParameters& parameters;
    std::set<std::string> taskIds;
    bool prioritiesCount = true;
};

}  // namespace

void readScyllaSimulation(const XmlDocument& document, const ScyllaGlobal& global,
                          SimulationParameters& parameters) {
    bool any = false;
    for (const XmlElement& child : document.root().children()) {
        if (child.kind() == "simulationConfiguration") {
            SimulationReader(child, global, parameters).read();
            any = true;
        } else {
            parameters.note(child.place(), std::string(child.kind()), "isn't used");
        }
    }
    if (!any) {
        document.root().refuse("there is no simulation configuration in this file");
    }
}

}  // namespace mero
