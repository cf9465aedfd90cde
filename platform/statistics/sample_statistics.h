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
        const double size = static_cast<double>(values);
        return studentTQuantile(0.5 + confidence / 2.0, size - 1.0) * standardDeviation() / std::sqrt(size);
    }

private:
    std::uint64_t values = 0;
    double average = 0.0;
    double squares = 0.0;
};

}  // namespace mero
