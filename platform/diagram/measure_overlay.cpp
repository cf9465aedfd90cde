#include "platform/diagram/measure_overlay.h"

#include <algorithm>
#include <cmath>

namespace mero {

double MeasureOverlay::minimum() const {
    const auto least =
        std::min_element(values.begin(), values.end(),
                         [](const auto& left, const auto& right) { return left.second < right.second; });
    return least != values.end() ? least->second : 0.0;
}

double MeasureOverlay::maximum() const {
    const auto most = std::max_element(values.begin(), values.end(), [](const auto& left, const auto& right) {
        return left.second < right.second;
    });
    return most != values.end() ? most->second : 0.0;
}

double MeasureOverlay::shareOf(double value) const {
    const double low = minimum();
    const double high = maximum();
    return high > low ? std::clamp((value - low) / (high - low), 0.0, 1.0) : 1.0;
}

int MeasureOverlay::decimals() const {
    const bool areWhole = std::all_of(values.begin(), values.end(), [](const auto& entry) {
        return entry.second == std::floor(entry.second);
    });
    if (areWhole) {
        return 0;
    }
    constexpr int Digits = 4;
    const double largest = std::max(std::abs(minimum()), std::abs(maximum()));
    const int wholeDigits = largest >= 1.0 ? static_cast<int>(std::log10(largest)) + 1 : 1;
    return std::clamp(Digits - wholeDigits, 0, Digits - 1);
}

}  // namespace mero
