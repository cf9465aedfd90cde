#pragma once

#include <QString>

#include "component/host/browser_objects.h"

namespace mero::qt {

/// What a field of a table looks like on the screen: numbers grouped by locale with as many decimals as their
/// column needs, times as in "2 d 3 h 20 min".
[[nodiscard]] QString dressed(const SV::String& field, int decimals);

/// Decimals that tell the values of a column apart, by its first rows; 4 at most.
[[nodiscard]] int decimalsOf(const MeroShrinkExpandBrowserObjects& objects, int column);

/// The two largest parts of a span of time of the form YY:DDD:HH:MM:SS; empty for another text.
[[nodiscard]] QString dressedTime(const SV::String& text);

}  // namespace mero::qt
