#pragma once

#include <cstdint>
#include <string>

#include "component/host/sv_string.h"

#include "platform/interchange/simulation_parameters.h"

namespace mero {

/// The options of `mero simulate` that say the same, "--instances 10 --start 2026-01-05T08:00:00 …"; empty
/// where nothing is given.
std::string runOptionsOf(const RunParameters& run);

/// Time text, in years of 365 days of 24 hours, of seconds that aren't negative; rounded to whole seconds.
SV::String timeTextOf(double seconds);

/// "2026-01-05T08:00:00" for milliseconds since 1970 on the clock of the place; fractions are cut off.
std::string wallClockText(std::int64_t milliseconds);

}  // namespace mero
