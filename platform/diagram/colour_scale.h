#pragma once

#include <cstdint>

namespace mero {

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

enum class Look { Light, Dark };

/// Colour of a magnitude, from 0 to 1; what lies outside takes the end. One hue whose lightness runs one way,
/// so that the order is seen in grey and by the colour-blind too: more is darker in a light look, lighter in
/// a dark one.
[[nodiscard]] Colour magnitudeColour(double share, Look look);

/// Relative luminance, 0 black to 1 white, after the Web Content Accessibility Guidelines 2.1.
[[nodiscard]] double luminanceOf(const Colour& colour);
/// Contrast ratio of the same guidelines, 1 to 21.
[[nodiscard]] double contrastOf(const Colour& left, const Colour& right);
/// Black or white, whichever is read better; the contrast is 4.5 at least on every colour.
[[nodiscard]] Colour textColourOn(const Colour& background);

}  // namespace mero
