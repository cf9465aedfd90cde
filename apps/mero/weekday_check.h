#pragma once

#include "apps/mero/console.h"
#include "apps/mero/run_options.h"
#include "platform/repository/repository.h"

namespace mero {

/// Tells each calendar of the run's models and environment whose weekly hours fall on other weekdays than
/// those of the dates: its day 1 is a Monday, or the first of January of its own year, whatever the date at
/// which the run starts. Does nothing for runs without a start.
void tellWrongWeekdays(const Repository& repository, const RunPlan& plan, const Console& console);

}  // namespace mero
