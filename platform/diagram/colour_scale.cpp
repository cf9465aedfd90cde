#include "platform/diagram/colour_scale.h"

#include <algorithm>
#include <cmath>

namespace mero {

namespace {

Colour between(const Colour& from, const Colour& to, double share) {
    const auto mix = [share](std::uint8_t left, std::uint8_t right) {
        return static_cast<std::uint8_t>(std::lround(left + (right - left) * share));
    };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

double linear(std::uint8_t channel) {
    const double value = channel / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

}  // namespace

Colour magnitudeColour(double share, Look look) {
    share = std::isnan(share) ? 0.0 : std::clamp(share, 0.0, 1.0);
    if (look == Look::Dark) {
        return between({0x1B, 0x2A, 0x41}, {0xC6, 0xE2, 0xFF}, share);
    }
    constexpr Colour Middle{0x6B, 0xAE, 0xD6};
    return share < 0.5 ? between({0xF7, 0xFB, 0xFF}, Middle, share * 2)
                       : between(Middle, {0x08, 0x30, 0x6B}, share * 2 - 1);
}

double luminanceOf(const Colour& colour) {
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

double contrastOf(const Colour& left, const Colour& right) {
    const double one = luminanceOf(left);
    const double other = luminanceOf(right);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

Colour textColourOn(const Colour& background) {
    constexpr Colour Black{0, 0, 0};
    constexpr Colour White{255, 255, 255};
    return contrastOf(background, Black) >= contrastOf(background, White) ? Black : White;
}

}  // namespace mero
