#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace mero {

/// The working hours of one day: ranges of seconds in ascending order that don't touch.
class DayPattern {
public:
    static constexpr std::int64_t SecondsPerDay = 86'400;

    struct Range {
        std::int32_t begin;  ///< seconds since midnight
        std::int32_t end;    ///< not contained
    };

    DayPattern() = default;
    /// `hours` in ascending order and without overlap; ranges that touch are joined.
    explicit DayPattern(std::span<const Range> hours);

    /// Working seconds of the day before `second`.
    [[nodiscard]] std::int64_t workBefore(std::int64_t second) const;
    [[nodiscard]] std::int64_t workOfDay() const { return workBefore(SecondsPerDay); }
    [[nodiscard]] bool isWorking(std::int64_t second) const;
    /// First second at or behind `second` that is working, or isn't, as wanted.
    [[nodiscard]] std::optional<std::int64_t> firstSecond(bool working, std::int64_t second) const;
    /// True if both have a working second in common when the other day begins `shift` seconds later.
    [[nodiscard]] bool overlaps(const DayPattern& other, std::int64_t shift) const;
    [[nodiscard]] std::span<const Range> getRanges() const { return ranges; }

private:
    /// Index of the last range that begins at or before `second`, or -1.
    [[nodiscard]] std::ptrdiff_t rangeAt(std::int64_t second) const;

    std::vector<Range> ranges;
    std::vector<std::int32_t> workBeforeRange;  ///< sums over the ranges before each
};

/// Working times that repeat after 365 weeks, the least common period of a year of 365 days and a week. Times
/// are seconds since the beginning of the calendar's first year; every integer is one.
class WorkingCalendar {
public:
    static constexpr int DaysPerYear = 365;
    static constexpr int DaysPerWeek = 7;
    static constexpr int DaysPerCycle = DaysPerYear * DaysPerWeek;
    static constexpr std::int64_t SecondsPerCycle = DaysPerCycle * DayPattern::SecondsPerDay;

    using PatternIndex = std::uint16_t;
    /// Pattern of each day of the cycle.
    using Days = std::array<PatternIndex, DaysPerCycle>;

    WorkingCalendar(std::vector<DayPattern> dayPatterns, const Days& patternOfDay);

    /// Working seconds in [from, to); `from` isn't later.
    [[nodiscard]] std::int64_t workBetween(std::int64_t from, std::int64_t to) const;
    [[nodiscard]] bool isWorking(std::int64_t time) const;
    /// First time behind `time` whose state differs from that of `time`; nothing if the state never changes.
    [[nodiscard]] std::optional<std::int64_t> nextChange(std::int64_t time) const;
    /// True if both have a working second in common anywhere, when time 0 of `other` lies at `shift` of this
    /// one.
    [[nodiscard]] bool overlaps(const WorkingCalendar& other, std::int64_t shift) const;
    /// Calendar of the seconds in which both work, with time 0 of this one, when time 0 of `other` lies at
    /// `shift`.
    [[nodiscard]] WorkingCalendar intersect(const WorkingCalendar& other, std::int64_t shift) const;

private:
    [[nodiscard]] const DayPattern& patternOf(std::int64_t day) const {
        return patterns[days[static_cast<std::size_t>(day)]];
    }
    /// `second` counts from the begin of the cycle.
    [[nodiscard]] std::int64_t workBefore(std::int64_t second) const;
    [[nodiscard]] std::optional<std::int64_t> firstSecond(bool working, std::int64_t second) const;
    /// Days of the cycle before `day` hold so many working, or free, seconds.
    [[nodiscard]] std::int64_t secondsBeforeDay(bool working, std::int64_t day) const;

    std::vector<DayPattern> patterns;
    Days days;
    std::array<std::int64_t, DaysPerCycle + 1> workBeforeDay;
};

}  // namespace mero
