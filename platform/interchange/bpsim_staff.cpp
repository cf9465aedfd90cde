#include "platform/interchange/bpsim_staff.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>

#include "platform/interchange/xml_values.h"

namespace mero {

namespace {

constexpr int WorkerLimit = 10000;

/// What stands between the quotes behind each "getResource(", and the number behind it.
std::vector<std::pair<std::string, int>> callsIn(std::string_view expression) {
    constexpr std::string_view Call = "getResource(";
    std::vector<std::pair<std::string, int>> calls;
    for (std::size_t found = expression.find(Call); found != std::string_view::npos;
         found = expression.find(Call, found + 1)) {
        const std::string_view rest = expression.substr(found + Call.size());
        const std::size_t open = rest.find_first_not_of(' ');
        if (open == std::string_view::npos || (rest[open] != '\'' && rest[open] != '"')) {
            continue;
        }
        const std::size_t close = rest.find(rest[open], open + 1);
        if (close == std::string_view::npos) {
            continue;
        }
        int amount = 1;
        const std::size_t number = rest.find_first_not_of(" ,", close + 1);
        if (number != std::string_view::npos) {
            std::from_chars(rest.data() + number, rest.data() + rest.size(), amount);
        }
        calls.emplace_back(rest.substr(open + 1, close - open - 1), amount);
    }
    return calls;
}

}  // namespace

BpsimStaff::BpsimStaff(const XmlDocument& document, const Calendars& knownCalendars,
                       SimulationParameters& target)
    : calendars(knownCalendars), parameters(target) {
    for (const XmlElement& child : document.root().children()) {
        const std::string id = child.attribute("id");
        if (child.kind() == "resource" && !id.empty()) {
            const std::string name = child.attribute("name");
            resources.emplace(id, Resource{name.empty() ? id : name, {}, 0.0, false});
        }
    }
}

void BpsimStaff::setQuantity(const std::string& id, const XmlElement& quantity) {
    const BpsimValues values = bpsimValuesOf(quantity);
    const int always = values.always ? countOf(*values.always, bpsimNumber(*values.always), WorkerLimit) : 0;
    std::vector<Group> groups;
    if (always > 0) {
        groups.push_back({always, {}});
    }
    for (const XmlElement& value : values.scheduled) {
        const std::string calendarId = value.attribute("validFor");
        const auto calendar = calendars.find(calendarId);
        const int more = countOf(value, bpsimNumber(value), WorkerLimit) - always;
        if (calendar == calendars.end() || calendar->second.empty()) {
            parameters.note(value.place(), "Quantity",
                            fmt::format("there is no calendar \"{}\"", calendarId));
            groups.push_back({std::max(more, 0), {}});
        } else if (more < 0) {
            parameters.note(value.place(), "Quantity",
                            "isn't used: there are more workers outside of the calendar than in it");
        } else {
            groups.push_back({more, calendar->second});
        }
    }
    resources.at(id).groups = std::move(groups);
    resources.at(id).told = true;
}

std::vector<std::string> BpsimStaff::selected(const XmlElement& value) {
    const std::string expression = requiredAttribute(value, "value");
    const std::vector<std::pair<std::string, int>> calls = callsIn(expression);
    if (calls.empty()) {
        value.refuse(fmt::format("the expression \"{}\" names no resource", expression));
    }
    const bool anyOfThem = expression.find("orResource") != std::string::npos;
    std::vector<std::string> chosen;
    for (const auto& [word, amount] : calls) {
        if (!chosen.empty() && !anyOfThem) {
            parameters.note(
                value.place(), "Selection",
                fmt::format("\"{}\" isn't used: the worker of one resource carries out a task", word));
            continue;
        }
        if (amount > 1) {
            parameters.note(value.place(), "Selection",
                            fmt::format("{} of \"{}\" are asked for; one carries out a task", amount, word));
        }
        chosen.push_back(resourceNamed(word, value));
        resources.at(chosen.back()).told = true;
    }
    return chosen;
}

std::string BpsimStaff::resourceNamed(const std::string& word, const XmlElement& value) const {
    if (isResource(word)) {
        return word;
    }
    const auto named = std::find_if(resources.begin(), resources.end(),
                                    [&word](const auto& entry) { return entry.second.name == word; });
    if (named == resources.end()) {
        value.refuse(fmt::format("there is no resource \"{}\"", word));
    }
    return named->first;
}

void BpsimStaff::finish() {
    for (const auto& [id, resource] : resources) {
        if (!resource.told) {
            continue;
        }
        CrewParameters crew{id, {}};
        for (const Group& group : resource.groups) {
            crew.workers.push_back({resource.name, group.amount, resource.hourlyWages, group.calendar});
        }
        parameters.crews.push_back(std::move(crew));
        parameters.roles.push_back({resource.name, {id}});
    }
}

}  // namespace mero
