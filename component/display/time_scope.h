#pragma once

#include "component/host/sv_string.h"

// Periods that values are scaled to. They are kept as time texts of a year of 365 days of 24 hours, in which
// `gTimeScopeYear`, `gTimeScopeQuarter`, `gTimeScopeMonth` and `gTimeScopeDay` are the ready ones.

/// Names of the ready periods.
namespace MeroTimeScopeLabel {
inline constexpr SV::ResId Month{0x2004F10};
inline constexpr SV::ResId Day{0x2004F11};
inline constexpr SV::ResId Quarter{0x2004F12};
inline constexpr SV::ResId Year{0x2004F13};
}  // namespace MeroTimeScopeLabel

/// A time text of the run's time base as the same share of a year of 365 days of 24 hours. False, and no
/// change, if it isn't a time.
bool convertScopeToCalendarBase(const SV::String& text, SV::String& result);
/// The other way round.
bool convertScopeToSimulationBase(const SV::String& text, SV::String& result);
/// A time text of 365 days of 24 hours in its usual form; a text that isn't a time stays as it is.
[[nodiscard]] SV::String normalizeScope(const SV::String& text);
