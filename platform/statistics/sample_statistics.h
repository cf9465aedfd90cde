#pragma once

#include <cmath>
#include <cstdint>

#include "platform/statistics/student_t.h"

namespace mero {

/// Mean and scatter of a sample that comes value by value and isn't kept (B. P. Welford: Note on a method for
/// calculating corrected sums of squares and products, Technometrics 4, 1962). The order of the values
/// decides the last bits: equal results need equal orders.
class SampleStatistics {
public:
    void add(double value) {
        ++values;
        const double distance = value - average;
        average += distance / static_cast<double>(values);
        squares += distance * (value - average);
    }

    [[nodiscard]] std::uint64_t count() const { return values; }
    [[nodiscard]] double mean() const { return average; }
    /// Estimated from the sample, with n - 1; needs two values.
    [[nodiscard]] double standardDeviation() const {
        return std::sqrt(squares / static_cast<double>(values - 1));
    }
    /// Half the width of the interval round the mean that holds the true mean with this confidence (above 0,
    /// below 1), for independent values with a normal distribution; needs two values.
    [[nodiscard]] double confidenceHalfWidth(double confidence) const {
        return standardDeviation() * halfWidthFactor(values, confidence);
    }
    /// The same for a standard deviation of 1 of `size` values; worth keeping where many samples have one
    /// size.
    [[nodiscard]] static double halfWidthFactor(std::uint64_t size, double confidence) {
        const auto number = static_cast<double>(size);
        return studentTQuantile(0.5 + confidence / 2.0, number - 1.0) / std::sqrt(number);
    }

private:
    std::uint64_t values = 0;
    double average = 0.0;
    double squares = 0.0;
};

}  // namespace mero
