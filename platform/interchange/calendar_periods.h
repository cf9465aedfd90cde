#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mero {

/// Weekly working hours, gathered period by period and written as a calendar text.
class CalendarPeriods {
public:
    static constexpr int MinutesOfDay = 24 * 60;

    /// Weekdays count from 0, Monday; the days from `firstDay` to `lastDay`, over the end of the week if need
    /// be, work from minute `begin` to minute `end`. Periods may overlap.
    void add(int firstDay, int lastDay, int begin, int end);

    /// `CALENDAR "name"` and its elements; overlapping and touching periods become one.
    [[nodiscard]] std::string text(std::string_view name) const;

private:
    static constexpr int DaysOfWeek = 7;
    [[nodiscard]] std::string hoursOf(int day) const;

    std::array<std::vector<std::pair<int, int>>, DaysOfWeek> days;
};

}  // namespace mero
