#include "platform/diagram/measure_overlay.h"

#include <algorithm>
#include <cmath>

namespace mero {

namespace {

/// So many that the largest of broken numbers shows four digits.
int decimalsOf(double largest) {
    constexpr int Digits = 4;
    const int wholeDigits = largest >= 1.0 ? static_cast<int>(std::log10(largest)) + 1 : 1;
    return std::clamp(Digits - wholeDigits, 0, Digits - 1);
}

}  // namespace

double MeasureScale::shareOf(double value) const {
    return maximum > minimum ? std::clamp((value - minimum) / (maximum - minimum), 0.0, 1.0) : 1.0;
}

MeasureScale MeasureOverlay::scale() const {
    MeasureScale scale;
    if (values.empty()) {
        return scale;
    }
    scale.minimum = scale.maximum = values.begin()->second;
    bool areWhole = true;
    for (const auto& [object, value] : values) {
        scale.minimum = std::min(scale.minimum, value);
        scale.maximum = std::max(scale.maximum, value);
        areWhole = areWhole && value == std::floor(value);
    }
    if (!areWhole) {
        scale.decimals = decimalsOf(std::max(std::abs(scale.minimum), std::abs(scale.maximum)));
    }
    return scale;
}

}  // namespace mero
