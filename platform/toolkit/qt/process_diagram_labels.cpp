#include <QLocale>
#include <algorithm>
#include <cmath>

#include "component/host/core_time.h"

#include "platform/diagram/colour_scale.h"
#include "platform/toolkit/qt/field_dress.h"
#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/process_diagram_geometry.h"
#include "platform/toolkit/qt/process_diagram_painter.h"

namespace mero::qt {

namespace {

constexpr int WrappedCentred = Qt::AlignHCenter | Qt::TextWordWrap;

/// The text, shortened to what fits into the room.
QString fitted(const QString& text, const QFontMetricsF& metrics, const QSizeF& room) {
    const auto fits = [&](const QString& part) {
        return metrics.boundingRect(QRectF({}, QSizeF(room.width(), 1e4)), Qt::TextWordWrap, part).height() <=
               room.height() + 1;
    };
    if (fits(text)) {
        return text;
    }
    qsizetype shortest = 0;
    qsizetype longest = text.size();
    while (longest - shortest > 1) {
        const qsizetype middle = (shortest + longest) / 2;
        (fits(text.left(middle) + QChar(0x2026)) ? shortest : longest) = middle;
    }
    return text.left(shortest).trimmed() + QChar(0x2026);
}

/// Where the label of a line stands: its longest flat piece near the beginning, else its longest.
QLineF labelledPiece(const DiagramEdge& edge) {
    constexpr std::size_t PiecesLookedAt = 3;
    constexpr double UprightsCount = 0.5;
    QLineF best;
    double bestLength = -1.0;
    for (std::size_t each = 1; each < edge.points.size() && each <= PiecesLookedAt; ++each) {
        const QLineF piece(pointOf(edge.points[each - 1]), pointOf(edge.points[each]));
        const bool isFlat = std::abs(piece.dx()) >= std::abs(piece.dy());
        const double length = piece.length() * (isFlat ? 1.0 : UprightsCount);
        if (length > bestLength) {
            best = piece;
            bestLength = length;
        }
    }
    return best;
}

}  // namespace

QString shownValue(const MeasureOverlay& overlay, const MeasureScale& scale, double value) {
    if (overlay.unit == MeasureOverlay::Unit::Seconds) {
        return dressedTime(MeroCoreTime(value, overlay.daysPerYear, overlay.hoursPerDay).asText());
    }
    return QLocale().toString(value, 'f', scale.decimals);
}

QColor ProcessDiagramPainter::fillOf(const DiagramShape& shape) const {
    if (overlay != nullptr && !shape.isExpanded) {
        if (const auto value = overlay->values.find(shape.object); value != overlay->values.end()) {
            return magnitudeColor(scale.shareOf(value->second));
        }
    }
    return palette.color(QPalette::Base);
}

QColor ProcessDiagramPainter::textOn(const QColor& fill) const {
    const auto channel = [](int value) { return static_cast<std::uint8_t>(value); };
    const Colour text = textColourOn({channel(fill.red()), channel(fill.green()), channel(fill.blue())});
    return fill == palette.color(QPalette::Base) ? palette.color(QPalette::WindowText)
                                                 : QColor(text.red, text.green, text.blue);
}

QString ProcessDiagramPainter::valueOf(const DiagramShape& shape) const {
    if (overlay == nullptr) {
        return {};
    }
    const auto value = overlay->values.find(shape.object);
    if (value == overlay->values.end()) {
        return {};
    }
    // Of "2 d 3 h 20 min" a shape has room for two parts.
    return shownValue(*overlay, scale, value->second).section(' ', 0, 1);
}

void ProcessDiagramPainter::paintEdgeLabel(QPainter& painter, const DiagramEdge& edge) const {
    if (edge.label.empty()) {
        return;
    }
    const QLineF piece = labelledPiece(edge);
    const QFontMetricsF metrics(font);
    const bool isFlat = std::abs(piece.dx()) >= std::abs(piece.dy());
    const double widest = isFlat ? std::max(piece.length() - 8, DiagramLabelWidth / 2) : DiagramLabelWidth;
    const QString text = fitted(textOf(edge.label), metrics, {widest, metrics.height() * 2});
    QRectF place = metrics.boundingRect(QRectF(0, 0, widest, 1e4), WrappedCentred, text);
    const QPointF middle = piece.pointAt(0.5);
    place.moveCenter(middle);
    if (isFlat) {
        place.moveBottom(middle.y() - DiagramLabelGap);
    } else {
        place.moveLeft(middle.x() + DiagramLabelGap + 1);
    }
    paintHalo(painter, place);
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(place, WrappedCentred, text);
}

void ProcessDiagramPainter::paintLabelInside(QPainter& painter, const DiagramShape& shape) const {
    const QRectF bounds = rectOf(shape.bounds).adjusted(5, 4, -5, -4);
    const QFontMetricsF metrics(font);
    const QString value = valueOf(shape);
    painter.setPen(textOn(fillOf(shape)));
    if (shape.isExpanded) {
        const QString title = textOf(shape.label) + (value.isEmpty() ? "" : "   " + value);
        painter.drawText(bounds, Qt::AlignTop | Qt::AlignHCenter,
                         metrics.elidedText(title, Qt::ElideRight, bounds.width()));
        return;
    }
    const bool hasFooter = shape.kind == ShapeKind::Call || !shape.loop.empty();
    const double footer = hasFooter ? DiagramMarkerSize : 0;
    const double valueHeight = value.isEmpty() ? 0 : metrics.height();
    const QSizeF room(bounds.width(), bounds.height() - valueHeight - footer);
    const QString text = fitted(textOf(shape.label), metrics, room);
    const double textHeight =
        metrics.boundingRect(QRectF({}, QSizeF(room.width(), 1e4)), Qt::TextWordWrap, text).height();
    // Below the sign of the kind of task, if that leaves room enough.
    const bool hasSign = !shape.marker.empty() && shape.marker != "task";
    const double free = std::max(room.height() - textHeight, 0.0);
    const double top = bounds.top() + std::max(free / 2, std::min(hasSign ? DiagramMarkerSize : 0.0, free));
    painter.drawText(QRectF(bounds.left(), top, bounds.width(), textHeight + 2), WrappedCentred, text);
    if (!value.isEmpty()) {
        painter.save();
        QFont bold = font;
        bold.setBold(true);
        painter.setFont(bold);
        painter.drawText(QRectF(bounds.left(), top + textHeight, bounds.width(), valueHeight + 2),
                         Qt::AlignHCenter | Qt::AlignTop, value);
        painter.restore();
    }
}

void ProcessDiagramPainter::paintLabelBelow(QPainter& painter, const DiagramShape& shape) const {
    const QFontMetricsF metrics(font);
    const QString text =
        fitted(textOf(shape.label), metrics, {DiagramLabelWidth, metrics.height() * DiagramLabelLines});
    QRectF place(shape.bounds.centre().x - DiagramLabelWidth / 2, shape.bounds.bottom() + DiagramLabelGap,
                 DiagramLabelWidth, metrics.height() * DiagramLabelLines);
    const auto write = [&](const QString& line) {
        if (!line.isEmpty()) {
            const QRectF taken = painter.boundingRect(place, WrappedCentred, line);
            paintHalo(painter, taken);
            painter.drawText(place, WrappedCentred, line);
            place.translate(0, taken.height());
        }
    };
    painter.save();
    painter.setPen(palette.color(QPalette::WindowText));
    write(text);
    QFont bold = font;
    bold.setBold(true);
    painter.setFont(bold);
    write(valueOf(shape));
    painter.restore();
}

void ProcessDiagramPainter::paintHalo(QPainter& painter, const QRectF& place) const {
    QColor color = palette.color(QPalette::Base);
    color.setAlphaF(0.8F);
    painter.fillRect(place.adjusted(-1, 0, 1, 0), color);
}

}  // namespace mero::qt
