#pragma once

#include <array>
#include <optional>
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

    /// The same for a period of a parameter file: one that ends at midnight, 00:00, lasts until the end of
    /// the day, an empty one adds nothing. False for one that ends before it begins.
    [[nodiscard]] bool addPeriod(int firstDay, int lastDay, int begin, int end);

    /// Number of a weekday's English name in capitals.
    static std::optional<int> weekdayOf(std::string_view name);
    /// Minutes since midnight of "HH:MM:SS" with or without seconds and their fraction, to the nearest
    /// minute.
    static std::optional<int> minuteOf(std::string_view time);

    [[nodiscard]] bool empty() const;
    /// Ranges of a weekday, "09:00-12:00 13:00-17:00".
    [[nodiscard]] std::string hoursOf(int day) const;

    /// `CALENDAR "name"` and its elements; overlapping and touching periods become one.
    [[nodiscard]] std::string text(std::string_view name) const;

private:
    static constexpr int DaysOfWeek = 7;

    std::array<std::vector<std::pair<int, int>>, DaysOfWeek> days;
};

/// The calendar text, made by an import, with the year whose weekdays it has. One without weekly hours stays
/// as it is.
[[nodiscard]] std::string withYear(const std::string& calendar, std::string_view year);

}  // namespace mero
