#pragma once

#include <map>
#include <string>
#include <vector>

#include "component/host/types.h"

namespace mero {

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
    [[nodiscard]] double minimum() const;  ///< 0 if empty
    [[nodiscard]] double maximum() const;
    /// Place of a value between minimum and maximum, from 0 to 1; 1 if all are the same.
    [[nodiscard]] double shareOf(double value) const;
    /// Decimals that tell the values apart: none for whole numbers, else such that the largest shows four
    /// digits.
    [[nodiscard]] int decimals() const;
};

}  // namespace mero
