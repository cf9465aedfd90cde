#pragma once

#include <map>
#include <string>
#include <vector>

#include "component/host/types.h"

namespace mero {

/// What the values of a measure have in common. Finding it takes a look at all of them, so a drawing asks for
/// it once.
struct MeasureScale {
    double minimum = 0.0;
    double maximum = 0.0;
    /// Decimals that tell the values apart: none for whole numbers, else such that the largest shows four
    /// digits.
    int decimals = 0;

    /// Place of a value between minimum and maximum, from 0 to 1; 1 if all are the same.
    [[nodiscard]] double shareOf(double value) const;
};

/// One measure of a run, to be laid over a drawing: the value of each object.
struct MeasureOverlay {
    enum class Unit { Number, Seconds };

    std::string agent;
    std::string measure;
    Unit unit = Unit::Number;
    std::string context;  ///< run, analysis and scale, for the small type
    double daysPerYear = 365.0;
    double hoursPerDay = 24.0;
    std::map<MeroId, double> values;

    [[nodiscard]] bool isEmpty() const { return values.empty(); }
    /// All zeros if empty.
    [[nodiscard]] MeasureScale scale() const;
};

}  // namespace mero
