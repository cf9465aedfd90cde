#include "platform/interchange/calendar_periods.h"

#include <algorithm>
#include <fmt/format.h>

#include "platform/interchange/name_rules.h"

namespace mero {

void CalendarPeriods::add(int firstDay, int lastDay, int begin, int end) {
    for (int day = firstDay;; day = (day + 1) % DaysOfWeek) {
        days[static_cast<std::size_t>(day)].emplace_back(begin, end);
        if (day == lastDay) {
            return;
        }
    }
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

}  // namespace mero
