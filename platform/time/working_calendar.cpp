#include "platform/time/working_calendar.h"

#include <algorithm>
#include <map>

namespace mero {

namespace {

constexpr std::int64_t SecondsPerDay = DayPattern::SecondsPerDay;

struct Position {
    std::int64_t cycle;
    std::int64_t second;  ///< of the cycle, never negative
};

Position positionOf(std::int64_t time) {
    std::int64_t cycle = time / WorkingCalendar::SecondsPerCycle;
    std::int64_t second = time % WorkingCalendar::SecondsPerCycle;
    if (second < 0) {
        second += WorkingCalendar::SecondsPerCycle;
        --cycle;
    }
    return {cycle, second};
}

}  // namespace

DayPattern::DayPattern(std::span<const Range> hours) {
    std::int32_t sum = 0;
    for (const Range& each : hours) {
        if (!ranges.empty() && ranges.back().end == each.begin) {
            ranges.back().end = each.end;
        } else {
            ranges.push_back(each);
            workBeforeRange.push_back(sum);
        }
        sum += each.end - each.begin;
    }
}

std::ptrdiff_t DayPattern::rangeAt(std::int64_t second) const {
    const auto behind = std::ranges::upper_bound(ranges, second, {}, &Range::begin);
    return behind - ranges.begin() - 1;
}

std::int64_t DayPattern::workBefore(std::int64_t second) const {
    const std::ptrdiff_t index = rangeAt(second);
    if (index < 0) {
        return 0;
    }
    const Range& range = ranges[static_cast<std::size_t>(index)];
    return workBeforeRange[static_cast<std::size_t>(index)] +
           (std::min<std::int64_t>(second, range.end) - range.begin);
}

bool DayPattern::isWorking(std::int64_t second) const {
    const std::ptrdiff_t index = rangeAt(second);
    return index >= 0 && second < ranges[static_cast<std::size_t>(index)].end;
}

std::optional<std::int64_t> DayPattern::firstSecond(bool working, std::int64_t second) const {
    const std::ptrdiff_t index = rangeAt(second);
    const bool isInside = isWorking(second);
    if (isInside == working) {
        return second;
    }
    if (isInside) {
        const std::int64_t end = ranges[static_cast<std::size_t>(index)].end;
        return end < SecondsPerDay ? std::optional(end) : std::nullopt;
    }
    const auto next = static_cast<std::size_t>(index + 1);
    return next < ranges.size() ? std::optional<std::int64_t>(ranges[next].begin) : std::nullopt;
}

bool DayPattern::overlaps(const DayPattern& other, std::int64_t shift) const {
    auto own = ranges.begin();
    auto theirs = other.ranges.begin();
    while (own != ranges.end() && theirs != other.ranges.end()) {
        const std::int64_t theirBegin = theirs->begin + shift;
        const std::int64_t theirEnd = theirs->end + shift;
        if (std::max<std::int64_t>(own->begin, theirBegin) < std::min<std::int64_t>(own->end, theirEnd)) {
            return true;
        }
        if (own->end <= theirEnd) {
            ++own;
        } else {
            ++theirs;
        }
    }
    return false;
}

WorkingCalendar::WorkingCalendar(std::vector<DayPattern> dayPatterns, const Days& patternOfDay)
    : patterns(std::move(dayPatterns)), days(patternOfDay), workBeforeDay{} {
    for (std::size_t day = 0; day < days.size(); ++day) {
        workBeforeDay[day + 1] = workBeforeDay[day] + patterns[days[day]].workOfDay();
    }
}

std::int64_t WorkingCalendar::workBefore(std::int64_t second) const {
    const std::int64_t day = second / SecondsPerDay;
    return workBeforeDay[static_cast<std::size_t>(day)] + patternOf(day).workBefore(second % SecondsPerDay);
}

std::int64_t WorkingCalendar::workBetween(std::int64_t from, std::int64_t to) const {
    const Position begin = positionOf(from);
    const Position end = positionOf(to);
    return (end.cycle - begin.cycle) * workBeforeDay.back() + workBefore(end.second) -
           workBefore(begin.second);
}

bool WorkingCalendar::isWorking(std::int64_t time) const {
    const std::int64_t second = positionOf(time).second;
    return patternOf(second / SecondsPerDay).isWorking(second % SecondsPerDay);
}

std::int64_t WorkingCalendar::secondsBeforeDay(bool working, std::int64_t day) const {
    const std::int64_t work = workBeforeDay[static_cast<std::size_t>(day)];
    return working ? work : day * SecondsPerDay - work;
}

std::optional<std::int64_t> WorkingCalendar::firstSecond(bool working, std::int64_t second) const {
    const std::int64_t today = second / SecondsPerDay;
    if (const auto found = patternOf(today).firstSecond(working, second % SecondsPerDay)) {
        return today * SecondsPerDay + *found;
    }
    // The sums never fall, so the first day behind today that has such a second is found by halving.
    std::int64_t low = today + 1;
    std::int64_t high = DaysPerCycle;
    const std::int64_t before = secondsBeforeDay(working, low);
    while (low < high) {
        const std::int64_t middle = low + (high - low) / 2;
        if (secondsBeforeDay(working, middle + 1) > before) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    if (low == DaysPerCycle) {
        return std::nullopt;
    }
    return low * SecondsPerDay + patternOf(low).firstSecond(working, 0).value_or(0);
}

std::optional<std::int64_t> WorkingCalendar::nextChange(std::int64_t time) const {
    const Position position = positionOf(time);
    const bool wanted = !isWorking(time);
    if (const auto found = firstSecond(wanted, position.second)) {
        return time + (*found - position.second);
    }
    if (const auto found = firstSecond(wanted, 0)) {
        return time + (SecondsPerCycle - position.second) + *found;
    }
    return std::nullopt;
}

bool WorkingCalendar::overlaps(const WorkingCalendar& other, std::int64_t shift) const {
    const std::int64_t offset = positionOf(shift).second;
    const std::int64_t wholeDays = offset / SecondsPerDay;
    const std::int64_t rest = offset % SecondsPerDay;
    // Days of the other calendar begin `rest` seconds behind midnight, so one of its days meets two of this
    // one. Each pair of patterns is compared once for either of the two.
    std::vector<bool> isCompared(patterns.size() * other.patterns.size() * 2);
    for (std::int64_t day = 0; day < DaysPerCycle; ++day) {
        const std::int64_t first = (day + wholeDays) % DaysPerCycle;
        for (std::int64_t next = 0; next <= (rest > 0 ? 1 : 0); ++next) {
            const auto own = static_cast<std::size_t>((first + next) % DaysPerCycle);
            const auto theirs = static_cast<std::size_t>(day);
            const std::size_t pair =
                (days[own] * other.patterns.size() + other.days[theirs]) * 2 + static_cast<std::size_t>(next);
            if (isCompared[pair]) {
                continue;
            }
            isCompared[pair] = true;
            if (patterns[days[own]].overlaps(other.patterns[other.days[theirs]],
                                             rest - next * SecondsPerDay)) {
                return true;
            }
        }
    }
    return false;
}

namespace {

/// Appends what `left` has in common with `right` when the day of `right` begins `offset` seconds later.
void appendCommon(const DayPattern& left, const DayPattern& right, std::int64_t offset,
                  std::vector<DayPattern::Range>& common) {
    for (const auto& [leftBegin, leftEnd] : left.getRanges()) {
        for (const auto& [rightBegin, rightEnd] : right.getRanges()) {
            const std::int64_t begin = std::max<std::int64_t>(leftBegin, rightBegin + offset);
            const std::int64_t end = std::min<std::int64_t>(leftEnd, rightEnd + offset);
            if (begin < end) {
                common.push_back({static_cast<std::int32_t>(begin), static_cast<std::int32_t>(end)});
            }
        }
    }
}

}  // namespace

WorkingCalendar WorkingCalendar::intersect(const WorkingCalendar& other, std::int64_t shift) const {
    const auto otherDayAt = [](std::int64_t day) {
        return static_cast<std::size_t>((day % DaysPerCycle + DaysPerCycle) % DaysPerCycle);
    };
    // The last day of the other calendar that begins at or before day 0 of this one, and how much before.
    const std::int64_t daysBefore = shift > 0
                                        ? -(shift + DayPattern::SecondsPerDay - 1) / DayPattern::SecondsPerDay
                                        : -shift / DayPattern::SecondsPerDay;
    const std::int64_t offset = daysBefore * DayPattern::SecondsPerDay + shift;
    std::vector<DayPattern> common;
    std::map<std::array<PatternIndex, 3>, PatternIndex> made;
    Days commonDays{};
    for (int day = 0; day < DaysPerCycle; ++day) {
        const PatternIndex own = days[static_cast<std::size_t>(day)];
        const PatternIndex first = other.days[otherDayAt(day + daysBefore)];
        const PatternIndex second = other.days[otherDayAt(day + daysBefore + 1)];
        const auto [place, isNew] = made.try_emplace({own, first, offset != 0 ? second : first},
                                                     static_cast<PatternIndex>(common.size()));
        if (isNew) {
            std::vector<DayPattern::Range> ranges;
            appendCommon(patterns[own], other.patterns[first], offset, ranges);
            if (offset != 0) {
                appendCommon(patterns[own], other.patterns[second], offset + DayPattern::SecondsPerDay,
                             ranges);
            }
            std::ranges::sort(ranges, {}, &DayPattern::Range::begin);
            common.emplace_back(ranges);
        }
        commonDays[static_cast<std::size_t>(day)] = place->second;
    }
    return {std::move(common), commonDays};
}

}  // namespace mero
