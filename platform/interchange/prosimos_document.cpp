#include "platform/interchange/prosimos_document.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <set>

#include "platform/interchange/calendar_periods.h"
#include "platform/interchange/json_reader.h"

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

template <class Number>
std::optional<Number> parsed(std::string_view text) {
    Number number{};
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
    return status == std::errc{} && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// Numbers stand as JSON numbers or as texts.
double numberOf(const DocumentNode& node) {
    if (!node.json().is_string()) {
        return node.number();
    }
    const std::optional<double> number = parsed<double>(node.text());
    if (!number || !std::isfinite(*number)) {
        node.refuse(fmt::format("a number is expected here, not {}", inQuotes(node.text())));
    }
    return *number;
}

double numberNotBelowZero(const DocumentNode& node) {
    const double number = numberOf(node);
    if (number < 0.0) {
        node.refuse("the number is below 0");
    }
    return number;
}

int weekdayOf(const DocumentNode& node) {
    static constexpr std::array<std::string_view, 7> Names{"MONDAY", "TUESDAY",  "WEDNESDAY", "THURSDAY",
                                                           "FRIDAY", "SATURDAY", "SUNDAY"};
    const std::string name = node.text();
    const auto* found = std::find(Names.begin(), Names.end(), name);
    if (found == Names.end()) {
        node.refuse(fmt::format("a weekday is expected here, not {}", inQuotes(name)));
    }
    return static_cast<int>(found - Names.begin());
}

/// Minutes since midnight of "HH:MM:SS" with or without a fraction, to the nearest minute.
int minuteOf(const DocumentNode& node) {
    const std::string text = node.text();
    const std::string_view view = text;
    const std::size_t first = view.find(':');
    const std::size_t second = first == std::string_view::npos ? first : view.find(':', first + 1);
    const auto hours = parsed<int>(view.substr(0, first));
    const auto minutes = first == std::string_view::npos
                             ? std::nullopt
                             : parsed<int>(view.substr(first + 1, second - first - 1));
    const auto seconds =
        second == std::string_view::npos ? std::optional(0.0) : parsed<double>(view.substr(second + 1));
    const bool good = hours && minutes && seconds && *hours >= 0 && *hours <= 24 && *minutes >= 0 &&
                      *minutes < 60 && *seconds >= 0.0 && *seconds < 60.0 &&
                      *hours * 60 + *minutes <= CalendarPeriods::MinutesOfDay;
    if (!good) {
        node.refuse(fmt::format("a time of day is expected here, not {}", inQuotes(text)));
    }
    return std::min(*hours * 60 + *minutes + static_cast<int>(std::lround(*seconds / 60.0)),
                    CalendarPeriods::MinutesOfDay);
}

std::string calendarOf(const DocumentNode& periods, std::string_view name) {
    CalendarPeriods calendar;
    for (const DocumentNode& period : periods.list()) {
        period.checkKeys({"from", "to", "beginTime", "endTime"});
        const int begin = minuteOf(period.at("beginTime"));
        const int end = minuteOf(period.at("endTime"));
        const int lastMinute = end == 0 && begin > 0 ? CalendarPeriods::MinutesOfDay : end;
        if (begin > lastMinute) {
            period.refuse("the period ends before it begins");
        }
        if (begin < lastMinute) {
            calendar.add(weekdayOf(period.at("from")), weekdayOf(period.at("to")), begin, lastMinute);
        }
    }
    return calendar.text(name);
}

class ProsimosReader {
public:
    explicit ProsimosReader(const DocumentNode& documentRoot) : root(documentRoot) {}

    ProsimosDocument read() {
        checkTopKeys();
        readCalendars();
        readProfiles();
        readTasks();
        readBranches();
        readEvents();
        readArrival();
        return std::move(document);
    }

private:
    void note(const DocumentNode& node, std::string text) {
        document.notes.push_back({node.path(), std::move(text)});
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
            anyUsed = anyUsed || used;
            const bool empty = value.json().is_array() && value.json().empty();
            if (!used && !empty) {
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
            ProsimosProfile profile;
            const std::optional<DocumentNode> name = node.find("name");
            profile.name = name ? name->text() : node.at("id").text();
            for (const DocumentNode& resource : node.listAt("resource_list")) {
                profile.resources.push_back(resourceOf(resource));
                resourceIds.insert(profile.resources.back().id);
            }
            document.profiles.push_back(std::move(profile));
        }
    }

    ProsimosResource resourceOf(const DocumentNode& node) {
        noteKeys(node, {"id", "name", "amount", "cost_per_hour", "calendar", "assignedTasks"});
        ProsimosResource resource;
        resource.id = node.at("id").text();
        const std::optional<DocumentNode> name = node.find("name");
        resource.name = name ? name->text() : resource.id;
        if (const auto amount = node.find("amount")) {
            const double count = numberNotBelowZero(*amount);
            if (count != std::floor(count) || count > AmountLimit) {
                amount->refuse(fmt::format("a whole number up to {} is expected here", AmountLimit));
            }
            resource.amount = static_cast<int>(count);
        }
        if (const auto cost = node.find("cost_per_hour")) {
            resource.costPerHour = numberNotBelowZero(*cost);
        }
        if (const auto calendar = node.find("calendar")) {
            const auto found = calendars.find(calendar->text());
            if (found == calendars.end()) {
                calendar->refuse(fmt::format("there is no calendar {}", inQuotes(calendar->text())));
            }
            resource.calendar = found->second;
        }
        return resource;
    }

    void readTasks() {
        for (const DocumentNode& node : root.listAt("task_resource_distribution")) {
            noteKeys(node, {"task_id", "resources"});
            ProsimosTask task{node.at("task_id").text(), node.path(), {}};
            for (const DocumentNode& entry : node.listAt("resources")) {
                noteKeys(entry, {"resource_id", "distribution_name", "distribution_params"});
                const DocumentNode resource = entry.at("resource_id");
                if (!resourceIds.contains(resource.text())) {
                    resource.refuse(fmt::format("there is no resource {}", inQuotes(resource.text())));
                }
                task.durations.push_back({resource.text(), resource.path(), distributionOf(entry)});
            }
            document.tasks.push_back(std::move(task));
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
                document.branches.push_back({branch.at("path_id").text(), branch.path(), probability});
            }
        }
    }

    void readEvents() {
        for (const DocumentNode& node : root.listAt("event_distribution")) {
            noteKeys(node, {"event_id", "distribution_name", "distribution_params"});
            document.events.push_back({node.at("event_id").text(), node.path(), distributionOf(node)});
        }
    }

    void readArrival() {
        if (const auto arrival = root.find("arrival_time_distribution")) {
            noteKeys(*arrival, {"distribution_name", "distribution_params"});
            document.arrival = distributionOf(*arrival);
        }
        if (const auto calendar = root.find("arrival_time_calendar")) {
            document.arrivalCalendar = calendarOf(*calendar, "Arrivals");
        }
    }

    const DocumentNode& root;
    ProsimosDocument document;
    std::map<std::string, std::string> calendars;
    std::set<std::string> resourceIds;
};

/// Checks and writes one distribution.
class DistributionWriter {
public:
    DistributionWriter(const DocumentNode& nameNode, const DocumentNode& parametersNode)
        : name(nameNode), parameters(parametersNode) {
        for (const DocumentNode& parameter : parameters.list()) {
            values.push_back(numberOf(parameter.json().is_object() ? parameter.at("value") : parameter));
        }
    }

    std::string text() {
        const std::string word = name.text();
        if (word == "fix") {
            need(1);
            return fixed(values[0]);
        }
        if (word == "uniform") {
            need(2);
            return values[0] == values[1] ? fixed(values[0])
                                          : fmt::format("uniform({},{})", values[0], ordered(0, 1));
        }
        if (word == "triang") {
            need(3);
            std::sort(values.begin(), values.begin() + 3);
            return values[0] == values[2]
                       ? fixed(values[0])
                       : fmt::format("triangular({},{},{})", values[0], values[1], values[2]);
        }
        if (word == "expon") {
            return exponential();
        }
        if (word == "norm") {
            return spread("normal");
        }
        if (word == "lognorm") {
            return spread("lognormal");
        }
        if (word == "gamma") {
            return spread("gamma");
        }
        name.refuse(fmt::format("unknown distribution {}", inQuotes(word)));
    }

private:
    static std::string fixed(double value) { return fmt::format("fixed({})", value); }

    void need(std::size_t count) const {
        if (values.size() < count) {
            parameters.refuse(fmt::format("{} parameters are expected here, not {}", count, values.size()));
        }
    }

    /// The greater of two limits.
    [[nodiscard]] double ordered(std::size_t least, std::size_t greatest) const {
        if (values[least] > values[greatest]) {
            parameters.refuse("the least value is above the greatest");
        }
        return values[greatest];
    }

    /// " in [least,greatest]" of the two parameters from `position`; nothing if they aren't there.
    [[nodiscard]] std::string limits(std::size_t position) const {
        return values.size() < position + 2
                   ? std::string()
                   : fmt::format(" in [{},{}]", values[position], ordered(position, position + 1));
    }

    /// An exponential distribution has no memory: least + Exp(mean - least) is Exp(mean - least) cut off
    /// below.
    [[nodiscard]] std::string exponential() const {
        need(1);
        const double excess = values.size() < 3 ? values[0] : values[0] - values[1];
        return excess > 0.0 ? fmt::format("exponential({}){}", excess, limits(1)) : fixed(values[0]);
    }

    [[nodiscard]] std::string spread(std::string_view word) const {
        need(2);
        if (values[1] < 0.0 || (values[0] < 0.0 && word != "normal")) {
            parameters.refuse("a parameter is below 0");
        }
        const bool constant = values[1] == 0.0 || (values[0] == 0.0 && word != "normal");
        return constant ? fixed(values[0])
                        : fmt::format("{}({},{}){}", word, values[0], values[1], limits(2));
    }

    const DocumentNode& name;
    const DocumentNode& parameters;
    std::vector<double> values;
};

}  // namespace

ProsimosDocument readProsimosDocument(const DocumentNode& root) {
    return ProsimosReader(root).read();
}

std::string prosimosDistribution(const DocumentNode& name, const DocumentNode& parameters) {
    return DistributionWriter(name, parameters).text();
}

}  // namespace mero
