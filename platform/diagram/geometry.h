#pragma once

#include <algorithm>
#include <span>
#include <vector>

namespace mero {

/// A place of a drawing; x grows to the right and y downward, in units of a screen at its usual size.
struct DrawPoint {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const DrawPoint&, const DrawPoint&) = default;
};

using DrawLine = std::vector<DrawPoint>;

struct DrawRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    [[nodiscard]] double right() const { return x + width; }
    [[nodiscard]] double bottom() const { return y + height; }
    [[nodiscard]] DrawPoint centre() const { return {x + width / 2, y + height / 2}; }
    [[nodiscard]] bool contains(const DrawRect& other) const {
        return other.x >= x && other.y >= y && other.right() <= right() && other.bottom() <= bottom();
    }
    /// A common border isn't an overlap.
    [[nodiscard]] bool overlaps(const DrawRect& other) const {
        return x < other.right() && other.x < right() && y < other.bottom() && other.y < bottom();
    }

    friend bool operator==(const DrawRect&, const DrawRect&) = default;
};

/// The smallest rectangle around both; one without width and height counts as nothing.
[[nodiscard]] inline DrawRect united(const DrawRect& left, const DrawRect& right) {
    if (left.width == 0.0 && left.height == 0.0) {
        return right;
    }
    if (right.width == 0.0 && right.height == 0.0) {
        return left;
    }
    const double x = std::min(left.x, right.x);
    const double y = std::min(left.y, right.y);
    return {x, y, std::max(left.right(), right.right()) - x, std::max(left.bottom(), right.bottom()) - y};
}

}  // namespace mero
