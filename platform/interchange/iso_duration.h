#pragma once

#include <optional>
#include <string_view>

namespace mero {

/// Seconds of a duration of weeks, days, hours, minutes and seconds such as "P1DT12H" (ISO 8601); none for
/// years, months and other texts.
std::optional<double> secondsOfDuration(std::string_view text);

}  // namespace mero
