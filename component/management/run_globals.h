#pragma once

#include <array>
#include <cstdint>

#include "component/host/types.h"

class MeroAgentManagement;

// Plain globals of the component, all used on the one user-interface thread.

/// The one management object; null when none exists.
extern MeroAgentManagement* gAgentManagement;

/// Time base of the run.
extern double gDaysPerYear;
extern double gHoursPerDay;

/// Attributes that hold the times of an object. Entry 0 is the execution time.
extern std::array<MeroId, 4> gSimAttributes;

/// Start of the run in seconds from the beginning of the year: start value of every calendar.
extern std::int64_t gSimStartTime;
