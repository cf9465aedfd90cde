#include "platform/interchange/calendar_periods.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fmt/format.h>

#include "platform/interchange/name_rules.h"
#include "platform/language/kiln_document.h"

namespace mero {

namespace {

template <class Number>
std::optional<Number> parsed(std::string_view text) {
    Number number{};
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
    return status == std::errc{} && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

}  // namespace

void CalendarPeriods::add(int firstDay, int lastDay, int begin, int end) {
    for (int day = firstDay;; day = (day + 1) % DaysOfWeek) {
        days[static_cast<std::size_t>(day)].emplace_back(begin, end);
        if (day == lastDay) {
            return;
        }
    }
}

bool CalendarPeriods::addPeriod(int firstDay, int lastDay, int begin, int end) {
    const int lastMinute = end == 0 && begin > 0 ? MinutesOfDay : end;
    if (begin < lastMinute) {
        add(firstDay, lastDay, begin, lastMinute);
    }
    return begin <= lastMinute;
}

std::optional<int> CalendarPeriods::weekdayOf(std::string_view name) {
    static constexpr std::array<std::string_view, DaysOfWeek> Names{
        "MONDAY", "TUESDAY", "WEDNESDAY", "THURSDAY", "FRIDAY", "SATURDAY", "SUNDAY"};
    const auto* found = std::find(Names.begin(), Names.end(), name);
    return found == Names.end() ? std::nullopt : std::optional(static_cast<int>(found - Names.begin()));
}

std::optional<int> CalendarPeriods::minuteOf(std::string_view time) {
    const std::size_t first = time.find(':');
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t second = time.find(':', first + 1);
    const auto hours = parsed<int>(time.substr(0, first));
    const auto minutes = parsed<int>(time.substr(first + 1, second - first - 1));
    const auto seconds =
        second == std::string_view::npos ? std::optional(0.0) : parsed<double>(time.substr(second + 1));
    const bool good = hours && minutes && seconds && *hours >= 0 && *hours <= 24 && *minutes >= 0 &&
                      *minutes < 60 && *seconds >= 0.0 && *seconds < 60.0 &&
                      *hours * 60 + *minutes <= MinutesOfDay;
    if (!good) {
        return std::nullopt;
    }
    return std::min(*hours * 60 + *minutes + static_cast<int>(std::lround(*seconds / 60.0)), MinutesOfDay);
}

bool CalendarPeriods::empty() const {
    return std::all_of(days.begin(), days.end(), [](const auto& periods) { return periods.empty(); });
}

std::string CalendarPeriods::hoursOf(int day) const {
    std::vector<std::pair<int, int>> periods = days[static_cast<std::size_t>(day)];
    std::sort(periods.begin(), periods.end());
    std::string hours;
    for (std::size_t index = 0; index < periods.size();) {
        auto [begin, end] = periods[index];
        for (++index; index < periods.size() && periods[index].first <= end; ++index) {
            end = std::max(end, periods[index].second);
        }
        hours += fmt::format("{}{:02}:{:02}-{:02}:{:02}", hours.empty() ? "" : " ", begin / 60, begin % 60,
                             end / 60, end % 60);
    }
    return hours;
}

std::string CalendarPeriods::text(std::string_view name) const {
    static constexpr std::array<std::string_view, DaysOfWeek> Words{"mon", "tue", "wed", "thu",
                                                                    "fri", "sat", "sun"};
    std::vector<std::pair<std::string, std::string>> groups;  // hours, days
    for (int day = 0; day < DaysOfWeek; ++day) {
        const std::string hours = hoursOf(day);
        if (hours.empty()) {
            continue;
        }
        const std::string_view word = Words[static_cast<std::size_t>(day)];
        const auto group = std::find_if(groups.begin(), groups.end(),
                                        [&hours](const auto& entry) { return entry.first == hours; });
        if (group == groups.end()) {
            groups.emplace_back(hours, word);
        } else {
            group->second += fmt::format(" {}", word);
        }
    }
    std::string calendar = "CALENDAR " + kilnString(name);
    for (const auto& [hours, words] : groups) {
        constexpr std::size_t AllWords = 27;
        calendar += words.size() == AllWords ? fmt::format("\nDAILY hours:\"{}\"", hours)
                                             : fmt::format("\nWEEKLY days:\"{}\" hours:\"{}\"", words, hours);
    }
    return calendar;
}

std::string withYear(const std::string& calendar, std::string_view year) {
    const Result<KilnDocument> document = readKilnDocument(calendar);
    if (!document) {
        return calendar;
    }
    const auto& elements = document.value().elements;
    const bool isWeekly = std::any_of(elements.begin(), elements.end(),
                                      [](const KilnElement& element) { return element.keyword == "WEEKLY"; });
    if (!isWeekly || document.value().find(elements.front(), "year") != nullptr) {
        return calendar;
    }
    const std::size_t next = calendar.find_last_not_of(" \n", elements[1].position - 1) + 1;
    return fmt::format("{} year:\"{}\"{}", calendar.substr(0, next), year, calendar.substr(next));
}

}  // namespace mero
