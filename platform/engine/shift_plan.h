#pragma once

#include <cstdint>
#include <memory>

#include "platform/time/working_calendar.h"

namespace mero {

/// Working times of a calendar on the clock of a run, whose time 0 lies `startOffset` seconds behind the
/// beginning of the calendar's year. Times are seconds.
class ShiftPlan {
public:
    ShiftPlan(std::shared_ptr<const WorkingCalendar> workingCalendar, std::int64_t startOffset)
        : calendar(std::move(workingCalendar)), offset(startOffset % WorkingCalendar::SecondsPerCycle) {}

    [[nodiscard]] bool isWorking(double time) const;
    /// First border of a shift behind `time`; infinity if there is none.
    [[nodiscard]] double nextBorder(double time) const;
    /// `time`, or the beginning of the next shift; infinity if there is none.
    [[nodiscard]] double movedIntoWork(double time) const;
    /// The working time at which `seconds` of work have passed since `time`; infinity if there is none.
    [[nodiscard]] double afterWork(double time, double seconds) const;
    [[nodiscard]] bool hasWork() const { return workOfCycle() > 0; }
    /// Share of the time that is working time, over the cycle in which the calendar repeats.
    [[nodiscard]] double workShare() const {
        return static_cast<double>(workOfCycle()) / static_cast<double>(WorkingCalendar::SecondsPerCycle);
    }

private:
    [[nodiscard]] std::int64_t workOfCycle() const {
        return calendar->workBetween(0, WorkingCalendar::SecondsPerCycle);
    }

    std::shared_ptr<const WorkingCalendar> calendar;
    std::int64_t offset;
};

}  // namespace mero
