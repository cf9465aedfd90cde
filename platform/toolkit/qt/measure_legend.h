#pragma once

#include <QFont>
#include <QPainter>
#include <QPalette>

#include "platform/diagram/measure_overlay.h"

namespace mero::qt {

/// The scale of colours of a measure: its name and unit above, a bar of all colours, minimum and maximum
/// below, and in small type what the values are of.
class MeasureLegend {
public:
    /// The overlay isn't kept.
    MeasureLegend(const MeasureOverlay& shownOverlay, const QFont& textFont, const QPalette& colors);

    [[nodiscard]] QSizeF size() const;
    void paint(QPainter& painter, const QPointF& topLeft) const;

private:
    const MeasureOverlay& overlay;
    QFont font;
    QFont smallFont;
    QPalette palette;
    QString title;
};

}  // namespace mero::qt
