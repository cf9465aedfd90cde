#include "platform/interchange/scylla_global.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "platform/interchange/calendar_periods.h"
#include "platform/interchange/iso_time.h"
#include "platform/interchange/scylla_values.h"
#include "platform/interchange/xml_values.h"

namespace mero {

namespace {

constexpr int WorkerLimit = 10000;

std::string calendarOf(const XmlElement& timetable, const std::string& name) {
    CalendarPeriods calendar;
    for (const XmlElement& item : timetable.children()) {
        const auto day = [&item](const char* attribute) {
            const std::string word = requiredAttribute(item, attribute);
            const std::optional<int> number = CalendarPeriods::weekdayOf(word);
            if (!number) {
                item.refuse(fmt::format("a weekday is expected here, not \"{}\"", word));
            }
            return *number;
        };
        const auto minute = [&item](const char* attribute) {
            const std::string time = requiredAttribute(item, attribute);
            const std::optional<int> minutes = CalendarPeriods::minuteOf(time);
            if (!minutes) {
                item.refuse(fmt::format("a time of day is expected here, not \"{}\"", time));
            }
            return *minutes;
        };
        if (!calendar.addPeriod(day("from"), day("to"), minute("beginTime"), minute("endTime"))) {
            item.refuse("the period ends before it begins");
        }
    }
    return calendar.text(name);
}

class GlobalReader {
public:
    GlobalReader(const XmlDocument& readDocument, SimulationParameters& target)
        : document(readDocument), parameters(target) {}

    ScyllaGlobal read() {
        global.given = true;
        const XmlElement root = document.root();
        for (const XmlElement& child : root.children()) {
            if (child.kind() == "timetables") {
                readTimetables(child);
            }
        }
        for (const XmlElement& child : root.children()) {
            readPart(child);
        }
        return std::move(global);
    }

private:
    void readTimetables(const XmlElement& timetables) {
        for (const XmlElement& timetable : timetables.children()) {
            const std::string id = requiredAttribute(timetable, "id");
            if (!calendars.emplace(id, calendarOf(timetable, id)).second) {
                timetable.refuse(fmt::format("another timetable has the identifier \"{}\"", id));
            }
        }
    }

    void readPart(const XmlElement& part) {
        if (part.kind() == "resourceData") {
            for (const XmlElement& resource : part.children()) {
                readResource(resource);
            }
        } else if (part.kind() == "zoneOffset") {
            readZone(part);
        } else if (part.kind() == "randomSeed") {
            parameters.run.seed = seedOf(part, numberOfText(part));
        } else if (part.kind() == "resourceAssignmentOrder") {
            global.assignmentOrder = part.text();
        } else if (part.kind() != "timetables") {
            parameters.note(part.place(), std::string(part.kind()), "isn't used");
        }
    }

    void readZone(const XmlElement& zone) {
        const auto midnight = parseIsoTime("2000-01-01T00:00:00" + zone.text());
        if (!midnight) {
            zone.refuse(fmt::format("an offset such as +01:00 is expected here, not \"{}\"", zone.text()));
        }
        global.zoneOffset = midnight->offset;
    }

    void readResource(const XmlElement& resource) {
        const std::string id = requiredAttribute(resource, "id");
        const int quantity = countOf(resource, requiredNumber(resource, "defaultQuantity"), WorkerLimit);
        WorkerParameters usual;
        usual.name = resource.attribute("name").empty() ? id : resource.attribute("name");
        usual.hourlyWages =
            wagesOf(resource, "defaultCost", scyllaUnit(resource, "defaultTimeUnit")).value_or(0.0);
        usual.calendar = calendarNamed(resource, "defaultTimetableId").value_or("");
        CrewParameters crew{id, {}};
        for (const XmlElement& instance : resource.children()) {
            WorkerParameters worker = usual;
            worker.name = requiredAttribute(instance, "name");
            worker.hourlyWages = wagesOf(instance, "cost", scyllaUnit(resource, "defaultTimeUnit"))
                                     .value_or(usual.hourlyWages);
            worker.calendar = calendarNamed(instance, "timetableId").value_or(usual.calendar);
            crew.workers.push_back(std::move(worker));
        }
        usual.amount = quantity - static_cast<int>(crew.workers.size());
        if (usual.amount > 0) {
            crew.workers.push_back(usual);
        } else if (usual.amount < 0) {
            parameters.note(
                resource.place(), fmt::format("dynamicResource \"{}\"", id),
                fmt::format("has {} instances, more than its quantity {}", crew.workers.size(), quantity));
        }
        const int workers = std::max(quantity, static_cast<int>(resource.children().size()));
        if (!global.resources.emplace(id, workers).second) {
            resource.refuse(fmt::format("another resource has the identifier \"{}\"", id));
        }
        parameters.crews.push_back(std::move(crew));
        parameters.roles.push_back({usual.name, {id}});
    }

    static std::optional<double> wagesOf(const XmlElement& element, const char* attribute,
                                         double secondsOfUnit) {
        constexpr double SecondsOfHour = 3600.0;
        const std::optional<double> cost = optionalNumber(element, attribute);
        if (cost && *cost < 0.0) {
            element.refuse("the cost is below 0");
        }
        return cost ? std::optional(*cost * (SecondsOfHour / secondsOfUnit)) : std::nullopt;
    }

    [[nodiscard]] std::optional<std::string> calendarNamed(const XmlElement& element,
                                                           const char* attribute) const {
        const std::string id = element.attribute(attribute);
        if (id.empty()) {
            return std::nullopt;
        }
        const auto calendar = calendars.find(id);
        if (calendar == calendars.end()) {
            element.refuse(fmt::format("there is no timetable \"{}\"", id));
        }
        return calendar->second;
    }

    const XmlDocument& document;
    SimulationParameters& parameters;
    ScyllaGlobal global;
    std::map<std::string, std::string> calendars;
};

}  // namespace

ScyllaGlobal readScyllaGlobal(const XmlDocument& document, SimulationParameters& parameters) {
    return GlobalReader(document, parameters).read();
}

}  // namespace mero
