#pragma once

#include <cstdint>

namespace SV {

/// Place on the screen or in a window, in pixels from the upper left corner.
struct Point {
    int x = 0;
    int y = 0;
    friend constexpr bool operator==(const Point&, const Point&) = default;
};

/// In pixels.
struct Size {
    int width = 0;
    int height = 0;
    friend constexpr bool operator==(const Size&, const Size&) = default;
};

/// A colour by its role, so that it follows the light and the dark palette.
enum class ColorRole : std::uint8_t {
    White = 0,   ///< background of a drawing
    Gray = 8,    ///< labels of a drawing
    Dialog = 25  ///< background of windows and dialogs
};

/// Colour with an index of the toolkit's palette. The indices of `ColorRole` have a meaning of their own; any
/// other stands for the category with this number.
class Color {
public:
    constexpr Color() = default;
    constexpr explicit Color(int paletteIndex) : index(paletteIndex) {}
    constexpr explicit Color(ColorRole role) : index(static_cast<int>(role)) {}
    [[nodiscard]] constexpr int GetIndex() const { return index; }
    friend constexpr bool operator==(const Color&, const Color&) = default;

private:
    int index = 0;
};

}  // namespace SV
