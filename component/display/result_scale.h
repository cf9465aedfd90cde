#pragma once

#include <cstdint>

#include "component/host/sv_string.h"

/// What values are brought to for display: so many process starts in a period, over a scope. Periods are time
/// texts of a year of 365 days of 24 hours, with a name each.
struct MeroResultScale {
    SV::String scopeText;
    SV::String scopeTime;
    std::int32_t frequency = 1;  ///< process starts
    SV::String frequencyUnitText;
    SV::String frequencyPeriod;
};

/// The last one that was remembered in this program; at first one process start a year, over a year.
[[nodiscard]] MeroResultScale recallResultScale();
void rememberResultScale(const MeroResultScale& scale);
