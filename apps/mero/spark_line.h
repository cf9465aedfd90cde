#pragma once

#include <string>
#include <vector>

#include "apps/mero/text_table.h"

namespace mero {

/// A point of a history: seconds of simulation time and the value from then on.
struct HistoryPoint {
    double time = 0.0;
    double value = 0.0;
};

/// A plot one line high and `width` columns wide: from the first to the last point, each column as high as
/// the last value in its stretch of time; the lowest value is the lowest line.
[[nodiscard]] std::string sparkLine(const std::vector<HistoryPoint>& points, std::size_t width,
                                    CharacterSet characters);

}  // namespace mero
