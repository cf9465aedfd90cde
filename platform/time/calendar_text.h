#pragma once

#include <string_view>

#include "platform/support/result.h"
#include "platform/time/working_calendar.h"

namespace mero {

/// Reads a calendar text: the Kiln element `CALENDAR` (a name as value; `year:"2026"`), then any number of
/// `DAILY hours:"08:00-12:00 13:00-17:00"`, `WEEKLY days:"mon tue" hours:"…"`, `DAY number:"359" hours:"…"`
/// and `DATE date:"12-25" hours:"…"`. `WEEKLY` replaces `DAILY` for its days, `DAY` and `DATE` replace both;
/// of elements of one rank the last wins for its day, and a day without an element doesn't work. Day 1 is a
/// Monday, or the weekday of the year's first of January. An error tells line, column and reason.
[[nodiscard]] Result<WorkingCalendar> readCalendarText(std::string_view text);

}  // namespace mero
