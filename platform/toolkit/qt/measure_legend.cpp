#include "platform/toolkit/qt/measure_legend.h"

#include <QFontMetricsF>
#include <algorithm>
#include <utility>

#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/process_diagram_painter.h"

namespace mero::qt {

namespace {

constexpr double Padding = 8.0;
constexpr double BarWidth = 240.0;
constexpr double BarHeight = 12.0;

}  // namespace

MeasureLegend::MeasureLegend(const MeasureOverlay& shownOverlay, const QFont& textFont,
                             const QPalette& colors)
    : overlay(shownOverlay), font(textFont), palette(colors) {
    constexpr int TextHeight = 12;
    constexpr int SmallTextHeight = 10;
    font.setPixelSize(TextHeight);
    smallFont = font;
    smallFont.setPixelSize(SmallTextHeight);
    title = QString::fromStdString(overlay.agent.empty() ? overlay.measure
                                                         : overlay.agent + ": " + overlay.measure);
}

QSizeF MeasureLegend::size() const {
    const QFontMetricsF metrics(font);
    const QFontMetricsF small(smallFont);
    const double context = small.horizontalAdvance(QString::fromStdString(overlay.context));
    const double lines = 2 * metrics.height() + (overlay.context.empty() ? 0 : small.height() + 2);
    return {std::max({BarWidth, metrics.horizontalAdvance(title), context}) + 2 * Padding,
            lines + BarHeight + 6 + 2 * Padding};
}

void MeasureLegend::paint(QPainter& painter, const QPointF& topLeft) const {
    painter.save();
    const QFontMetricsF metrics(font);
    const QRectF room(topLeft, size());
    painter.setPen(Qt::NoPen);
    painter.fillRect(room, palette.brush(QPalette::Base));
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::WindowText));
    QRectF line(room.left() + Padding, room.top() + Padding, room.width() - 2 * Padding, metrics.height());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, title);
    const QRectF bar(line.left(), line.bottom() + 3, BarWidth, BarHeight);
    QLinearGradient gradient(bar.topLeft(), bar.topRight());
    constexpr int Stops = 8;
    for (int stop = 0; stop <= Stops; ++stop) {
        const double share = static_cast<double>(stop) / Stops;
        gradient.setColorAt(share, magnitudeColor(share));
    }
    const MeasureScale scale = overlay.scale();
    const bool isOneValue = scale.minimum == scale.maximum;
    painter.setBrush(isOneValue ? QBrush(magnitudeColor(1)) : QBrush(gradient));
    painter.drawRect(bar);
    line.moveTop(bar.bottom() + 3);
    line.setWidth(BarWidth);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, shownValue(overlay, scale, scale.minimum));
    if (!isOneValue) {
        painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, shownValue(overlay, scale, scale.maximum));
    }
    if (!overlay.context.empty()) {
        painter.setFont(smallFont);
        const QFontMetricsF small(smallFont);
        painter.drawText(QRectF(line.left(), line.bottom() + 2, room.width() - 2 * Padding, small.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(overlay.context));
    }
    painter.restore();
}

}  // namespace mero::qt
