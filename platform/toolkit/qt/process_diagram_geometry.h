#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <string>

#include "platform/diagram/geometry.h"

namespace mero::qt {

/// Measures of process diagrams, in drawing units.
inline constexpr double DiagramMarkerSize = 13.0;
inline constexpr double DiagramLabelWidth = 104.0;
inline constexpr double DiagramLabelGap = 3.0;
inline constexpr int DiagramLabelLines = 3;

[[nodiscard]] inline QRectF rectOf(const DrawRect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

[[nodiscard]] inline QPointF pointOf(const DrawPoint& point) {
    return {point.x, point.y};
}

[[nodiscard]] inline QString textOf(const std::string& text) {
    return QString::fromStdString(text);
}

}  // namespace mero::qt
