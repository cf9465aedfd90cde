#pragma once

#include <cstdint>
#include <memory>

#include "component/host/sv_string.h"

/// Code of `MeroCalendar::intersection` for two calendars that share no working time.
inline constexpr int CalendarNothingInCommon = 26;

/// Working-time calendar. Times are whole seconds since the start of the run; time 0 is the calendar's start.
/// Every operation gives 0 on success.
class MeroCalendar {
public:
    /// `propertyType` is 0. `startTime`: seconds from the beginning of the year to the start of the run.
    /// `firstDay` is
    /// 1. `daysOfYear` is 365.
    MeroCalendar(int propertyType, std::int64_t startTime, int firstDay, int daysOfYear);
    MeroCalendar(MeroCalendar&&) noexcept;
    MeroCalendar& operator=(MeroCalendar&&) noexcept;
    MeroCalendar(const MeroCalendar&) = delete;
    MeroCalendar& operator=(const MeroCalendar&) = delete;
    ~MeroCalendar();

    /// Reads a calendar text; on a failure the calendar is as before and `getErrorText` tells place and
    /// reason.
    int initializeCalendar(const SV::String& text);
    [[nodiscard]] SV::String getErrorText() const;
    /// Working seconds in [from, to); fails if `from` is later than `to`.
    int getTimeIntervalsSumInBetween(std::int64_t from, std::int64_t to, std::int64_t& sum) const;
    /// 1 if all seconds of [from, to) are working seconds, which holds for an empty span; fails if `from` is
    /// later.
    int isCoveredWholly(std::int64_t from, std::int64_t to, int& covered) const;
    /// 1 if `time` lies in a working interval, which contains its beginning and not its end. `end` gets the
    /// time at which the current working interval or pause ends.
    int isInCurrentInterval(std::int64_t time, std::int64_t& end, int& inInterval) const;
    /// Makes `common` the calendar of the seconds in which both work; it keeps its own start.
    /// `CalendarNothingInCommon`, and no change, if there is no such second anywhere in the cycle in which
    /// both repeat.
    int intersection(const MeroCalendar& other, MeroCalendar& common) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};
