#include "platform/statistics/student_t.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace mero {

namespace {

constexpr double Epsilon = std::numeric_limits<double>::epsilon();

/// Keeps a denominator of the continued fraction away from 0.
double awayFromZero(double value) {
    constexpr double Tiny = 1e-300;
    return std::abs(value) < Tiny ? Tiny : value;
}

/// The continued fraction of I_x(a, b); it converges quickly for x below (a + 1) / (a + b + 2), in about
/// sqrt(max(a, b)) steps.
double betaFraction(double x, double a, double b) {
    constexpr int MostSteps = 1'000'000;
    double upper = 1.0;
    double lower = 1.0 / awayFromZero(1.0 - (a + b) * x / (a + 1.0));
    double fraction = lower;
    const auto advance = [&](double coefficient) {
        lower = 1.0 / awayFromZero(1.0 + coefficient * lower);
        upper = awayFromZero(1.0 + coefficient / upper);
        fraction *= upper * lower;
        return std::abs(upper * lower - 1.0) > Epsilon;
    };
    for (int step = 1; step < MostSteps; ++step) {
        const double m = step;
        advance(m * (b - m) * x / ((a + 2.0 * m - 1.0) * (a + 2.0 * m)));
        if (!advance(-(a + m) * (a + b + m) * x / ((a + 2.0 * m) * (a + 2.0 * m + 1.0)))) {
            break;
        }
    }
    return fraction;
}

/// ln B(a, 1/2). For large a the difference of two large logarithms would lose digits; the ratio of gamma
/// functions is then taken from its asymptotic series (DLMF 5.11.13).
double logBetaHalf(double a) {
    constexpr double SeriesFrom = 1000.0;
    constexpr double LogSqrtPi = 0.572364942924700087;
    if (a < SeriesFrom) {
        return std::lgamma(a) + LogSqrtPi - std::lgamma(a + 0.5);
    }
    const double inverse = 1.0 / a;
    return LogSqrtPi - 0.5 * std::log(a) + inverse / 8.0 - inverse * inverse * inverse / 192.0;
}

/// Whether the middle of the distribution is integrated rather than its tail: where its fraction converges
/// quickly, and with many degrees of freedom wherever that of the tail would lose digits.
bool isCentral(double square, double freedom) {
    constexpr double ManyDegrees = 100.0;
    constexpr double FarSquare = 30.0;
    return freedom > ManyDegrees ? square < FarSquare : square < 3.0 * freedom / (freedom + 2.0);
}

/// P(T > t) for a t of at least 0.
double upperTail(double t, double freedom) {
    const double a = freedom / 2.0;
    constexpr double B = 0.5;
    const double square = t * t;
    const double rest = square / (freedom + square);
    if (rest == 0.0) {
        return 0.5;
    }
    const double front = std::exp(-a * std::log1p(square / freedom) + B * std::log(rest) - logBetaHalf(a));
    if (isCentral(square, freedom)) {
        return 0.5 * (1.0 - front * betaFraction(rest, B, a) / B);
    }
    return 0.5 * front * betaFraction(freedom / (freedom + square), a, B) / a;
}

double density(double t, double freedom) {
    return std::exp(-logBetaHalf(freedom / 2.0) - 0.5 * std::log(freedom) -
                    (freedom + 1.0) / 2.0 * std::log1p(t * t / freedom));
}

/// The t of at least 0 that `tail` lies above; `tail` is at most 1/2.
double upperQuantile(double tail, double freedom) {
    constexpr int MostSteps = 200;
    double low = 0.0;
    double high = 1.0;
    while (upperTail(high, freedom) > tail && high < std::numeric_limits<double>::max() / 4.0) {
        low = high;
        high *= 2.0;
    }
    double t = 0.5 * (low + high);
    for (int step = 0; step < MostSteps && high - low > Epsilon * high; ++step) {
        const double excess = upperTail(t, freedom) - tail;
        (excess > 0.0 ? low : high) = t;
        double next = t + excess / density(t, freedom);
        if (!(next > low && next < high)) {
            next = 0.5 * (low + high);
        }
        if (std::abs(next - t) <= Epsilon * t) {
            return next;
        }
        t = next;
    }
    return t;
}

}  // namespace

double studentTProbability(double t, double freedom) {
    const double tail = upperTail(std::abs(t), freedom);
    return t < 0.0 ? tail : 1.0 - tail;
}

double studentTQuantile(double probability, double freedom) {
    if (probability == 0.5) {
        return 0.0;
    }
    if (probability < 0.5) {
        return -upperQuantile(probability, freedom);
    }
    return upperQuantile(1.0 - probability, freedom);
}

}  // namespace mero
