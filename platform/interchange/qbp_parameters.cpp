#include "platform/interchange/qbp_parameters.h"

#include <fmt/format.h>
#include <limits>
#include <map>
#include <set>

#include "platform/interchange/bpsim_values.h"
#include "platform/interchange/calendar_periods.h"
#include "platform/interchange/distribution_text.h"
#include "platform/interchange/iso_time.h"
#include "platform/interchange/run_parameters.h"
#include "platform/interchange/xml_values.h"

namespace mero {

namespace {

constexpr int WorkerLimit = 10000;

/// `FIXED` has its value as the mean, `EXPONENTIAL` its mean as the first argument; the second parameter of
/// `NORMAL` is the deviation, of `LOGNORMAL` and `GAMMA` the variance.
std::string distributionOf(const XmlElement& element) {
    const DistributionText text(1.0);
    const std::string type = requiredAttribute(element, "type");
    const auto number = [&element](const char* name) { return requiredNumber(element, name); };
    const auto textOfType = [&]() -> std::string {
        if (type == "FIXED") {
            return text.fixed(number("mean"));
        }
        if (type == "EXPONENTIAL") {
            return text.exponential(number("arg1"));
        }
        if (type == "NORMAL") {
            return text.normal(number("mean"), number("arg1"));
        }
        if (type == "UNIFORM") {
            return text.uniform(number("arg1"), number("arg2"));
        }
        if (type == "TRIANGULAR") {
            return text.triangular(number("arg1"), number("mean"), number("arg2"));
        }
        if (type == "LOGNORMAL") {
            return text.lognormal(number("mean"), number("arg1"));
        }
        if (type == "GAMMA") {
            return text.gamma(number("mean"), number("arg1"));
        }
        element.refuse(fmt::format("unknown distribution \"{}\"", type));
    };
    std::string distribution = textOfType();
    if (const std::string fault = distributionFault(distribution); !fault.empty()) {
        element.refuse(fault);
    }
    return distribution;
}

std::string calendarOf(const XmlElement& timetable, const std::string& name) {
    CalendarPeriods calendar;
    timetable.forEachBelow([&calendar](const XmlElement& rule) {
        if (rule.kind() != "rule") {
            return;
        }
        const auto day = [&rule](const char* attribute) {
            return CalendarPeriods::weekdayOf(rule.attribute(attribute));
        };
        // "09:00:00.000+00:00": the clock counts, not the zone.
        const auto minute = [&rule](const char* attribute) {
            const std::string time = rule.attribute(attribute);
            return CalendarPeriods::minuteOf(std::string_view(time).substr(0, time.find_first_of("+-Z")));
        };
        const auto firstDay = day("fromWeekDay");
        const auto lastDay = day("toWeekDay");
        const auto begin = minute("fromTime");
        const auto end = minute("toTime");
        if (!firstDay || !lastDay || !begin || !end ||
            !calendar.addPeriod(*firstDay, *lastDay, *begin, *end)) {
            rule.refuse("a rule needs two weekdays and two times of day in order");
        }
    });
    return calendar.text(name);
}

class QbpReader {
public:
    QbpReader(const XmlElement& simulationInfo, SimulationParameters& target)
        : info(simulationInfo), parameters(target) {}

    void read() {
        readOrNote(info, parameters, [this] { readRun(); });
        forEachIn("timetables", [this](const XmlElement& timetable) { readTimetable(timetable); });
        forEachIn("resources", [this](const XmlElement& resource) { readResource(resource); });
        forEachIn("elements", [this](const XmlElement& element) { readElement(element); });
        forEachIn("sequenceFlows", [this](const XmlElement& flow) { readFlow(flow); });
        for (const XmlElement& part : info.children()) {
            if (part.kind() == "arrivalRateDistribution") {
                readOrNote(part, parameters, [&] { readArrival(part); });
            } else if (!Lists.contains(part.kind())) {
                parameters.note(part.place(), std::string(part.kind()), "isn't used");
            }
        }
    }

private:
    static inline const std::set<std::string_view> Lists{"timetables", "resources", "elements",
                                                         "sequenceFlows"};

    template <class Read>
    void forEachIn(std::string_view list, const Read& read) {
        for (const XmlElement& part : info.children()) {
            if (part.kind() != list) {
                continue;
            }
            for (const XmlElement& entry : part.children()) {
                readOrNote(entry, parameters, [&] { read(entry); });
            }
        }
    }

    void readRun() {
        if (info.hasAttribute("startDateTime")) {
            const std::string text = info.attribute("startDateTime");
            const std::optional<IsoTime> start = parseIsoTime(text);
            if (!start) {
                info.refuse(fmt::format("\"{}\" is no date and time", text));
            }
            parameters.run.start = wallClockText(start->wallClock());
        }
        if (const auto instances = optionalNumber(info, "processInstances")) {
            parameters.run.instances = countOf(info, *instances, std::numeric_limits<int>::max());
        }
    }

    void readTimetable(const XmlElement& timetable) {
        const std::string id = requiredAttribute(timetable, "id");
        const std::string name = timetable.attribute("name");
        calendars[id] = calendarOf(timetable, name.empty() ? id : name);
        if (timetable.attribute("default") == "true") {
            arrivalCalendar = calendars[id];
        }
    }

    void readResource(const XmlElement& resource) {
        const std::string id = requiredAttribute(resource, "id");
        WorkerParameters worker;
        worker.name = resource.attribute("name").empty() ? id : resource.attribute("name");
        worker.amount = countOf(resource, requiredNumber(resource, "totalAmount"), WorkerLimit);
        worker.hourlyWages = optionalNumber(resource, "costPerHour").value_or(0.0);
        if (const auto calendar = calendars.find(resource.attribute("timetableId"));
            calendar != calendars.end()) {
            worker.calendar = calendar->second;
        }
        if (!crews.insert(id).second) {
            resource.refuse(fmt::format("another resource has the identifier \"{}\"", id));
        }
        parameters.roles.push_back({worker.name, {id}});
        parameters.crews.push_back({id, {std::move(worker)}});
    }

    void readElement(const XmlElement& element) {
        NodeParameters node;
        node.element = requiredAttribute(element, "elementId");
        node.place = element.place();
        node.costs = optionalNumber(element, "fixedCost");
        for (const XmlElement& part : element.children()) {
            if (part.kind() == "durationDistribution") {
                node.duration = distributionOf(part);
            } else if (part.kind() == "resourceIds") {
                readPerformers(part, node);
            } else {
                parameters.note(part.place(), std::string(part.kind()), "isn't used");
            }
        }
        parameters.nodes.push_back(std::move(node));
    }

    void readPerformers(const XmlElement& resourceIds, NodeParameters& node) {
        for (const XmlElement& reference : resourceIds.children()) {
            const std::string id = reference.text();
            if (!crews.contains(id)) {
                reference.refuse(fmt::format("there is no resource \"{}\"", id));
            }
            node.performers.push_back(id);
        }
    }

    void readFlow(const XmlElement& flow) {
        const double probability = requiredNumber(flow, "executionProbability");
        if (probability < 0.0 || probability > 1.0) {
            flow.refuse("a probability lies between 0 and 1");
        }
        parameters.probabilities.push_back({requiredAttribute(flow, "elementId"), flow.place(), probability});
    }

    /// Cases arrive during the default timetable.
    void readArrival(const XmlElement& arrival) {
        parameters.arrivals.push_back({{}, arrival.place(), distributionOf(arrival), arrivalCalendar});
    }

    const XmlElement& info;
    SimulationParameters& parameters;
    std::map<std::string, std::string> calendars;
    std::set<std::string> crews;
    std::string arrivalCalendar;
};

}  // namespace

SimulationParameters readQbpParameters(const XmlDocument& document) {
    SimulationParameters parameters;
    bool any = false;
    document.root().forEachBelow([&](const XmlElement& element) {
        if (element.kind() != "processSimulationInfo" || element.space() != QbpNamespace) {
            return;
        }
        if (any) {
            parameters.note(element.place(), std::string(element.kind()), "isn't used: the first one counts");
        } else {
            QbpReader(element, parameters).read();
        }
        any = true;
    });
    return parameters;
}

}  // namespace mero
