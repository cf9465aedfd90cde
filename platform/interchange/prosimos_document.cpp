#include "platform/interchange/prosimos_document.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <set>

#include "platform/interchange/calendar_periods.h"
#include "platform/interchange/json_reader.h"
#include "platform/interchange/prosimos_distribution.h"

namespace mero {

namespace {

constexpr int AmountLimit = 10000;

constexpr std::array UsedKeys{std::string_view("gateway_branching_probabilities"),
                              std::string_view("task_resource_distribution"),
                              std::string_view("event_distribution"),
                              std::string_view("resource_profiles"),
                              std::string_view("resource_calendars"),
                              std::string_view("arrival_time_distribution"),
                              std::string_view("arrival_time_calendar")};

/// Keys of which each entry is named in the report.
constexpr std::array NotedKeys{std::string_view("batch_processing"), std::string_view("case_attributes"),
                               std::string_view("global_attributes"),
                               std::string_view("prioritisation_rules")};

double numberNotBelowZero(const DocumentNode& node) {
    const double number = prosimosNumber(node);
    if (number < 0.0) {
        node.refuse("the number is below 0");
    }
    return number;
}

int weekdayOf(const DocumentNode& node) {
    const std::string name = node.text();
    const std::optional<int> day = CalendarPeriods::weekdayOf(name);
    if (!day) {
        node.refuse(fmt::format("a weekday is expected here, not {}", inQuotes(name)));
    }
    return *day;
}

int minuteOf(const DocumentNode& node) {
    const std::string text = node.text();
    const std::optional<int> minute = CalendarPeriods::minuteOf(text);
    if (!minute) {
        node.refuse(fmt::format("a time of day is expected here, not {}", inQuotes(text)));
    }
    return *minute;
}

std::string calendarOf(const DocumentNode& periods, std::string_view name) {
    CalendarPeriods calendar;
    for (const DocumentNode& period : periods.list()) {
        period.checkKeys({"from", "to", "beginTime", "endTime"});
        const bool added =
            calendar.addPeriod(weekdayOf(period.at("from")), weekdayOf(period.at("to")),
                               minuteOf(period.at("beginTime")), minuteOf(period.at("endTime")));
        if (!added) {
            period.refuse("the period ends before it begins");
        }
    }
    return calendar.text(name);
}

class ProsimosReader {
public:
    ProsimosReader(const DocumentNode& documentRoot, std::string_view sourceName)
        : root(documentRoot), source(sourceName) {}

    SimulationParameters read() {
        checkTopKeys();
        readCalendars();
        readProfiles();
        readTasks();
        readBranches();
        readEvents();
        readArrival();
        noteBatches();
        noteRules();
        return std::move(parameters);
    }

private:
    [[nodiscard]] std::string placeOf(const DocumentNode& node) const {
        return fmt::format("{}: {}", source, node.path());
    }

    void note(const DocumentNode& node, std::string text) {
        parameters.note(placeOf(node), "parameters", std::move(text));
    }

    /// Notes the keys of an object that have no meaning here.
    void noteKeys(const DocumentNode& node, std::initializer_list<std::string_view> known) {
        for (const auto& [key, value] : node.entries()) {
            if (std::find(known.begin(), known.end(), key) == known.end()) {
                note(node, fmt::format("{} isn't used", inQuotes(key)));
            }
        }
    }

    void checkTopKeys() {
        bool anyUsed = false;
        for (const auto& [key, value] : root.entries()) {
            const bool used = std::find(UsedKeys.begin(), UsedKeys.end(), key) != UsedKeys.end();
            const bool noted = std::find(NotedKeys.begin(), NotedKeys.end(), key) != NotedKeys.end();
            anyUsed = anyUsed || used;
            const bool empty = value.json().is_array() && value.json().empty();
            if (!used && !noted && !empty) {
                note(value, "isn't used");
            }
        }
        if (!anyUsed) {
            root.refuse("this is no document of simulation parameters");
        }
    }

    void readCalendars() {
        for (const DocumentNode& node : root.listAt("resource_calendars")) {
            noteKeys(node, {"id", "name", "time_periods"});
            const std::string id = node.at("id").text();
            const std::optional<DocumentNode> name = node.find("name");
            if (!calendars.emplace(id, calendarOf(node.at("time_periods"), name ? name->text() : id))
                     .second) {
                node.at("id").refuse(fmt::format("another calendar has the identifier {}", inQuotes(id)));
            }
        }
    }

    void readProfiles() {
        for (const DocumentNode& node : root.listAt("resource_profiles")) {
            noteKeys(node, {"id", "name", "resource_list"});
            const std::optional<DocumentNode> name = node.find("name");
            RoleParameters profile{name ? name->text() : node.at("id").text(), {}};
            for (const DocumentNode& resource : node.listAt("resource_list")) {
                const std::string id = resource.at("id").text();
                WorkerParameters worker = workerOf(resource, id);
                profile.crews.push_back(id);
                // A resource may stand in several profiles; it is the same worker in all of them.
                if (crewIds.insert(id).second) {
                    parameters.crews.push_back({id, {std::move(worker)}});
                }
            }
            parameters.roles.push_back(std::move(profile));
        }
    }

    WorkerParameters workerOf(const DocumentNode& node, const std::string& id) {
        noteKeys(node, {"id", "name", "amount", "cost_per_hour", "calendar", "assignedTasks"});
        WorkerParameters worker;
        const std::optional<DocumentNode> name = node.find("name");
        worker.name = name ? name->text() : id;
        if (const auto amount = node.find("amount")) {
            const double count = numberNotBelowZero(*amount);
            if (count != std::floor(count) || count > AmountLimit) {
                amount->refuse(fmt::format("a whole number up to {} is expected here", AmountLimit));
            }
            worker.amount = static_cast<int>(count);
        }
        if (const auto cost = node.find("cost_per_hour")) {
            worker.hourlyWages = numberNotBelowZero(*cost);
        }
        if (const auto calendar = node.find("calendar")) {
            const auto found = calendars.find(calendar->text());
            if (found == calendars.end()) {
                calendar->refuse(fmt::format("there is no calendar {}", inQuotes(calendar->text())));
            }
            worker.calendar = found->second;
        }
        return worker;
    }

    void readTasks() {
        for (const DocumentNode& node : root.listAt("task_resource_distribution")) {
            noteKeys(node, {"task_id", "resources"});
            NodeParameters task;
            task.element = node.at("task_id").text();
            task.place = placeOf(node);
            for (const DocumentNode& entry : node.listAt("resources")) {
                noteKeys(entry, {"resource_id", "distribution_name", "distribution_params"});
                const DocumentNode resource = entry.at("resource_id");
                if (!crewIds.contains(resource.text())) {
                    resource.refuse(fmt::format("there is no resource {}", inQuotes(resource.text())));
                }
                task.crewDurations.push_back({resource.text(), distributionOf(entry)});
                task.performers.push_back(resource.text());
            }
            parameters.nodes.push_back(std::move(task));
        }
    }

    static std::string distributionOf(const DocumentNode& node) {
        return prosimosDistribution(node.at("distribution_name"), node.at("distribution_params"));
    }

    void readBranches() {
        for (const DocumentNode& gateway : root.listAt("gateway_branching_probabilities")) {
            noteKeys(gateway, {"gateway_id", "probabilities"});
            for (const DocumentNode& branch : gateway.listAt("probabilities")) {
                noteKeys(branch, {"path_id", "value"});
                const double probability = numberNotBelowZero(branch.at("value"));
                if (probability > 1.0) {
                    branch.at("value").refuse("a probability is at most 1");
                }
                parameters.probabilities.push_back(
                    {branch.at("path_id").text(), placeOf(branch), probability});
            }
        }
    }

    void readEvents() {
        for (const DocumentNode& node : root.listAt("event_distribution")) {
            noteKeys(node, {"event_id", "distribution_name", "distribution_params"});
            NodeParameters event;
            event.element = node.at("event_id").text();
            event.place = placeOf(node);
            event.duration = distributionOf(node);
            parameters.nodes.push_back(std::move(event));
        }
    }

    void readArrival() {
        ArrivalParameters read;
        read.place = fmt::format("{}: arrival_time_distribution", source);
        if (const auto arrival = root.find("arrival_time_distribution")) {
            noteKeys(*arrival, {"distribution_name", "distribution_params"});
            read.distribution = distributionOf(*arrival);
        }
        if (const auto calendar = root.find("arrival_time_calendar")) {
            read.calendar = calendarOf(*calendar, "Arrivals");
        }
        if (!read.distribution.empty() || !read.calendar.empty()) {
            parameters.arrivals.push_back(std::move(read));
        }
    }

    void noteBatches() {
        for (const DocumentNode& batch : root.listAt("batch_processing")) {
            const std::optional<DocumentNode> task = batch.find("task_id");
            note(batch, fmt::format("the batches of task {} aren't formed: each case is worked on by itself",
                                    task ? inQuotes(task->text()) : std::string("?")));
        }
    }

    /// Cases carry no attributes, so rules about them say nothing here.
    void noteRules() {
        for (const std::string_view key : {"case_attributes", "global_attributes"}) {
            for (const DocumentNode& attribute : root.listAt(key)) {
                const std::optional<DocumentNode> name = attribute.find("name");
                note(attribute, fmt::format("the attribute {} isn't used",
                                            name ? inQuotes(name->text()) : std::string("?")));
            }
        }
        for (const DocumentNode& rule : root.listAt("prioritisation_rules")) {
            note(rule, "not used: all cases have the same priority");
        }
    }

    const DocumentNode& root;
    std::string_view source;
    SimulationParameters parameters;
    std::map<std::string, std::string> calendars;
    std::set<std::string> crewIds;
};

}  // namespace

SimulationParameters readProsimosDocument(const DocumentNode& root, std::string_view source) {
    return ProsimosReader(root, source).read();
}

}  // namespace mero
