#include "platform/interchange/icalendar.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <set>

#include "platform/interchange/calendar_periods.h"
#include "platform/interchange/iso_duration.h"

namespace mero {

namespace {

using Minutes = std::chrono::sys_time<std::chrono::minutes>;
constexpr std::chrono::hours LongestEvent{24 * 366};

struct Property {
    std::string name;
    std::string value;
};

/// Logical lines: one that begins with a blank goes on with the line before it.
std::vector<Property> propertiesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (!lines.empty() && !line.empty() && (line.front() == ' ' || line.front() == '\t')) {
            lines.back() += line.substr(1);
        } else {
            lines.emplace_back(line);
        }
    }
    std::vector<Property> properties;
    for (const std::string& line : lines) {
        const std::size_t colon = line.find(':');
        if (colon != std::string::npos) {
            properties.push_back({line.substr(0, line.find_first_of(":;")), line.substr(colon + 1)});
        }
    }
    return properties;
}

std::optional<int> digits(std::string_view text) {
    int number = 0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool good = status == std::errc{} && end == text.data() + text.size() && number >= 0;
    return good ? std::optional(number) : std::nullopt;
}

struct Moment {
    Minutes time;
    bool wholeDay = false;
};

/// "20211001", "20211001T080000" or with "Z" behind it.
std::optional<Moment> momentOf(std::string_view text) {
    if (text.ends_with('Z')) {
        text.remove_suffix(1);
    }
    const bool wholeDay = text.size() == 8;
    if (!wholeDay && (text.size() != 15 || text[8] != 'T')) {
        return std::nullopt;
    }
    const auto year = digits(text.substr(0, 4));
    const auto month = digits(text.substr(4, 2));
    const auto day = digits(text.substr(6, 2));
    const auto hour = wholeDay ? std::optional(0) : digits(text.substr(9, 2));
    const auto minute = wholeDay ? std::optional(0) : digits(text.substr(11, 2));
    if (!year || !month || !day || !hour || !minute || *hour > 23 || *minute > 59) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    if (!date.ok()) {
        return std::nullopt;
    }
    return Moment{std::chrono::sys_days(date) + std::chrono::hours(*hour) + std::chrono::minutes(*minute),
                  wholeDay};
}

/// The parts of "FREQ=WEEKLY;BYDAY=MO,TU".
std::map<std::string, std::string> ruleOf(std::string_view text) {
    std::map<std::string, std::string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view part = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t equals = part.find('=');
        if (equals != std::string_view::npos) {
            parts.emplace(part.substr(0, equals), part.substr(equals + 1));
        }
    }
    return parts;
}

/// Weekdays of "MO,TU" from 0, Monday; none for an ordinal such as "1SU".
std::optional<std::set<int>> weekdaysOf(std::string_view text) {
    constexpr std::string_view Words = "MOTUWETHFRSASU";
    std::set<int> days;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(','), text.size());
        const std::string_view word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t place = word.size() == 2 ? Words.find(word) : std::string_view::npos;
        if (place == std::string_view::npos || place % 2 != 0) {
            return std::nullopt;
        }
        days.insert(static_cast<int>(place / 2));
    }
    return days;
}

int weekdayOf(Minutes time) {
    const std::chrono::weekday day(std::chrono::floor<std::chrono::days>(time));
    return static_cast<int>(day.iso_encoding()) - 1;
}

struct Event {
    std::string start;
    std::string end;
    std::string duration;
    std::optional<std::string> rule;
    bool hasExceptions = false;
    bool hasFurtherDates = false;
};

std::vector<Event> eventsOf(const std::vector<Property>& properties) {
    std::vector<Event> events;
    std::vector<std::string> components;
    for (const auto& [name, value] : properties) {
        if (name == "BEGIN") {
            components.push_back(value);
            if (value == "VEVENT" || value == "AVAILABLE") {
                events.emplace_back();
            }
            continue;
        }
        if (name == "END") {
            if (!components.empty()) {
                components.pop_back();
            }
            continue;
        }
        const bool inEvent =
            !components.empty() && (components.back() == "VEVENT" || components.back() == "AVAILABLE");
        const bool behindEvents = !inEvent && components.size() == 1 && !events.empty();
        if (name == "RRULE" && (inEvent || (behindEvents && !events.back().rule))) {
            events.back().rule = value;
        } else if (inEvent && name == "DTSTART") {
            events.back().start = value;
        } else if (inEvent && name == "DTEND") {
            events.back().end = value;
        } else if (inEvent && name == "DURATION") {
            events.back().duration = value;
        } else if (inEvent && name == "EXDATE") {
            events.back().hasExceptions = true;
        } else if (inEvent && name == "RDATE") {
            events.back().hasFurtherDates = true;
        }
    }
    return events;
}

class Translator {
public:
    explicit Translator(std::string_view calendarName) : name(calendarName) {}

    void add(const Event& event) {
        const std::optional<Moment> start = momentOf(event.start);
        const std::optional<Minutes> end = start ? endOf(event, *start) : std::nullopt;
        if (!start || !end || *end - start->time > LongestEvent) {
            note("an event without a start and end that can be read isn't used");
            return;
        }
        begin = start->time;
        length = *end - begin;
        if (event.hasExceptions || event.hasFurtherDates) {
            note("single dates that are excluded or added aren't used");
        }
        const auto rule = ruleOf(event.rule.value_or(""));
        if (!addByRule(rule)) {
            note(fmt::format("the rule \"{}\" isn't used", *event.rule));
        } else if (rule.contains("COUNT") || rule.contains("UNTIL")) {
            note("the repetition of an event has no end here");
        }
    }

    TranslatedCalendar finish() {
        if (weekly.empty() && dates.empty()) {
            note("no working time was found");
            return std::move(result);
        }
        if (!weekly.empty() && !dates.empty()) {
            note("dates with hours of their own don't have the weekly hours as well");
        }
        result.text = weekly.text(name);
        for (const auto& [date, periods] : dates) {
            result.text += fmt::format("\nDATE date:\"{}\" hours:\"{}\"", date, periods.hoursOf(0));
        }
        return std::move(result);
    }

private:
    void note(std::string text) {
        if (std::find(result.notes.begin(), result.notes.end(), text) == result.notes.end()) {
            result.notes.push_back(std::move(text));
        }
    }

    static std::optional<Minutes> endOf(const Event& event, const Moment& start) {
        const Minutes dayAfter = start.time + std::chrono::hours(24);
        if (event.end.empty() && !event.duration.empty()) {
            const std::optional<double> seconds = secondsOfDuration(event.duration);
            constexpr double Longest = 366.0 * 86400.0;
            return seconds && *seconds <= Longest
                       ? std::optional(start.time + std::chrono::minutes(static_cast<int>(*seconds / 60.0)))
                       : std::nullopt;
        }
        if (event.end.empty()) {
            return start.wholeDay ? std::optional(dayAfter) : std::nullopt;
        }
        const std::optional<Moment> end = momentOf(event.end);
        if (!end || end->time < start.time) {
            return std::nullopt;
        }
        // Some writers let a whole day end on itself.
        return end->time == start.time && start.wholeDay ? dayAfter : end->time;
    }

    bool addByRule(const std::map<std::string, std::string>& rule) {
        const auto part = [&rule](const std::string& key) {
            const auto found = rule.find(key);
            return found == rule.end() ? std::string() : found->second;
        };
        for (const auto& [key, value] : rule) {
            static const std::set<std::string, std::less<>> Known{
                "FREQ", "BYDAY", "COUNT", "UNTIL", "WKST", "INTERVAL", "BYMONTH", "BYMONTHDAY"};
            if (!Known.contains(key) || (key == "INTERVAL" && value != "1")) {
                return false;
            }
        }
        const std::string frequency = part("FREQ");
        const bool named = !part("BYMONTH").empty() || !part("BYMONTHDAY").empty();
        if (frequency.empty() || frequency == "YEARLY") {
            return part("BYDAY").empty() && namesItsDate(part("BYMONTH"), part("BYMONTHDAY")) &&
                   addDates(frequency.empty());
        }
        if ((frequency != "DAILY" && frequency != "WEEKLY") || named) {
            return false;
        }
        std::optional<std::set<int>> days = weekdaysOf(part("BYDAY"));
        if (!days) {
            return false;
        }
        if (days->empty()) {
            days =
                frequency == "WEEKLY" ? std::set<int>{weekdayOf(begin)} : std::set<int>{0, 1, 2, 3, 4, 5, 6};
        }
        for (const int day : *days) {
            forEachDay([this, day](int offset, int from, int to) {
                weekly.add((day + offset) % 7, (day + offset) % 7, from, to);
            });
        }
        return true;
    }

    /// A yearly rule may repeat what the start says already.
    [[nodiscard]] bool namesItsDate(const std::string& month, const std::string& day) const {
        const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(begin));
        return (month.empty() || month == std::to_string(static_cast<unsigned>(date.month()))) &&
               (day.empty() || day == std::to_string(static_cast<unsigned>(date.day())));
    }

    bool addDates(bool once) {
        if (once) {
            note("single events come again every year");
        }
        const auto firstDay = std::chrono::floor<std::chrono::days>(begin);
        forEachDay([&](int offset, int from, int to) {
            const std::chrono::year_month_day date(firstDay + std::chrono::days(offset));
            if (date.month() == std::chrono::February && date.day() == std::chrono::day(29)) {
                note("29 February isn't used");
                return;
            }
            dates[fmt::format("{:02}-{:02}", static_cast<unsigned>(date.month()),
                              static_cast<unsigned>(date.day()))]
                .add(0, 0, from, to);
        });
        return true;
    }

    /// Calls `visit(days behind the first, from, to)`, in minutes of the day, for each day of the event.
    template <class Visit>
    void forEachDay(const Visit& visit) const {
        constexpr int DayMinutes = CalendarPeriods::MinutesOfDay;
        const auto midnight = std::chrono::floor<std::chrono::days>(begin);
        int from = static_cast<int>((begin - midnight).count());
        int left = static_cast<int>(length.count());
        for (int offset = 0; left > 0; ++offset) {
            const int to = std::min(from + left, DayMinutes);
            visit(offset, from, to);
            left -= to - from;
            from = 0;
        }
    }

    std::string_view name;
    CalendarPeriods weekly;
    std::map<std::string, CalendarPeriods> dates;  ///< hours of each, as those of a Monday
    TranslatedCalendar result;
    Minutes begin;
    std::chrono::minutes length{};
};

}  // namespace

TranslatedCalendar translateICalendar(std::string_view object, std::string_view name) {
    Translator translator(name);
    for (const Event& event : eventsOf(propertiesOf(object))) {
        translator.add(event);
    }
    return translator.finish();
}

}  // namespace mero
