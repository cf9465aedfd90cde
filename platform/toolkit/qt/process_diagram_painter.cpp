#include "platform/toolkit/qt/process_diagram_painter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/diagram/flow_counts.h"
#include "platform/toolkit/qt/process_diagram_geometry.h"
#include "platform/toolkit/qt/shape_markers.h"

namespace mero::qt {

namespace {

constexpr double Border = 24.0;
constexpr double HeaderWidth = 28.0;
constexpr double LineWidth = 1.25;
constexpr double ThickLineWidth = 2.75;
constexpr double ArrowLength = 9.0;

bool isHorizontal(const DiagramShape& swimlane) {
    return swimlane.bounds.width >= swimlane.bounds.height;
}

QRectF headerOf(const DiagramShape& swimlane) {
    const QRectF bounds = rectOf(swimlane.bounds);
    return isHorizontal(swimlane) ? QRectF(bounds.topLeft(), QSizeF(HeaderWidth, bounds.height()))
                                  : QRectF(bounds.topLeft(), QSizeF(bounds.width(), HeaderWidth));
}

QPolygonF diamondIn(const QRectF& bounds) {
    return QPolygonF({{bounds.center().x(), bounds.top()},
                      {bounds.right(), bounds.center().y()},
                      {bounds.center().x(), bounds.bottom()},
                      {bounds.left(), bounds.center().y()}});
}

}  // namespace

ProcessDiagramPainter::ProcessDiagramPainter(const ProcessDiagram& shownDiagram,
                                             const MeasureOverlay* shownOverlay, const QFont& textFont,
                                             const QPalette& colors)
    : diagram(shownDiagram),
      overlay(shownOverlay),
      scale(shownOverlay != nullptr ? shownOverlay->scale() : MeasureScale{}),
      font(textFont),
      palette(colors),
      largest(largestFlow(shownDiagram)) {
    constexpr int TextHeight = 11;
    font.setPixelSize(TextHeight);
}

QRectF ProcessDiagramPainter::room() const {
    QRectF room = rectOf(diagram.extent);
    const double labelHeight = QFontMetricsF(font).height() * (DiagramLabelLines + 1) + DiagramLabelGap;
    for (const DiagramShape& shape : diagram.shapes) {
        if (isEvent(shape.kind) || isGateway(shape.kind)) {
            const QPointF middle(shape.bounds.centre().x, shape.bounds.bottom());
            const double height = shape.label.empty() && overlay == nullptr ? 0 : labelHeight;
            room |= QRectF(middle.x() - DiagramLabelWidth / 2, middle.y(), DiagramLabelWidth, height);
        }
    }
    return room.adjusted(-Border, -Border, Border, Border);
}

void ProcessDiagramPainter::paint(QPainter& painter, const QRectF& visible, MeroId selected) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    const auto isVisible = [&](const QRectF& place) {
        return visible.isNull() || visible.intersects(place.adjusted(-DiagramLabelWidth, -Border,
                                                                     DiagramLabelWidth, DiagramLabelWidth));
    };
    const auto paintShapes = [&](bool behindLines) {
        for (const DiagramShape& shape : diagram.shapes) {
            if ((isSwimlane(shape.kind) || shape.isExpanded) == behindLines &&
                isVisible(rectOf(shape.bounds))) {
                paintShape(painter, shape, shape.object == selected);
            }
        }
    };
    paintShapes(true);
    for (const DiagramEdge& edge : diagram.edges) {
        paintEdge(painter, edge);
    }
    paintShapes(false);
    for (const DiagramEdge& edge : diagram.edges) {
        paintEdgeLabel(painter, edge);
    }
    painter.restore();
}

MeroId ProcessDiagramPainter::objectAt(const QPointF& place) const {
    for (auto shape = diagram.shapes.rbegin(); shape != diagram.shapes.rend(); ++shape) {
        if ((isSwimlane(shape->kind) ? headerOf(*shape) : rectOf(shape->bounds)).contains(place)) {
            return shape->object;
        }
    }
    return MeroNoId;
}

QColor ProcessDiagramPainter::lineColor() const {
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.75F);
    return color;
}

double ProcessDiagramPainter::widthOf(const DiagramEdge& edge) const {
    constexpr double GrowthOfTheLargest = 4.5;
    return LineWidth + (edge.taken && largest > 0.0 ? GrowthOfTheLargest * *edge.taken / largest : 0.0);
}

void ProcessDiagramPainter::paintEdge(QPainter& painter, const DiagramEdge& edge) const {
    painter.setPen(QPen(lineColor(), widthOf(edge), Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QPolygonF line;
    for (const DrawPoint& point : edge.points) {
        line.append(pointOf(point));
    }
    // A thick line ends inside of its arrow.
    const QLineF last(line[line.size() - 2], line.last());
    line.last() = last.pointAt(1.0 - std::min(ArrowLength / 2 / std::max(last.length(), 1e-6), 1.0));
    painter.drawPolyline(line);
    paintArrow(painter, edge);
    if (edge.isDefault) {
        const QLineF first(line[0], line[1]);
        const QPointF middle = first.pointAt(std::min(14.0 / std::max(first.length(), 14.0), 0.5));
        painter.drawLine(middle + QPointF(-4, 5), middle + QPointF(4, -5));
    }
}

void ProcessDiagramPainter::paintArrow(QPainter& painter, const DiagramEdge& edge) const {
    constexpr double NarrowHalf = 3.5;
    const double halfWidth = NarrowHalf + widthOf(edge) / 2;
    const DrawPoint& tip = edge.points.back();
    const DrawPoint& from = edge.points[edge.points.size() - 2];
    const double distance = std::max(std::hypot(tip.x - from.x, tip.y - from.y), 1e-6);
    const QPointF along((tip.x - from.x) / distance, (tip.y - from.y) / distance);
    const QPointF across(-along.y(), along.x());
    const QPointF base = pointOf(tip) - ArrowLength * along;
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(lineColor());
    painter.drawPolygon(QPolygonF({pointOf(tip), base + halfWidth * across, base - halfWidth * across}));
    painter.restore();
}

void ProcessDiagramPainter::paintShape(QPainter& painter, const DiagramShape& shape, bool isSelected) const {
    painter.setPen(QPen(lineColor(), LineWidth));
    painter.setBrush(fillOf(shape));
    if (isSwimlane(shape.kind)) {
        paintSwimlane(painter, shape);
    } else if (isEvent(shape.kind)) {
        paintEvent(painter, shape);
    } else if (isGateway(shape.kind)) {
        paintGateway(painter, shape);
    } else {
        paintActivity(painter, shape);
    }
    if (isSelected) {
        constexpr double Distance = 4.0;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette.color(QPalette::Highlight), 2));
        painter.drawRoundedRect(rectOf(shape.bounds).adjusted(-Distance, -Distance, Distance, Distance),
                                Distance, Distance);
    }
}

void ProcessDiagramPainter::paintSwimlane(QPainter& painter, const DiagramShape& shape) const {
    const QRectF bounds = rectOf(shape.bounds);
    const QRectF header = headerOf(shape);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(bounds);
    if (shape.kind == ShapeKind::Pool) {
        painter.fillRect(header.adjusted(1, 1, 0, 0), palette.brush(QPalette::AlternateBase));
    }
    const bool horizontal = isHorizontal(shape);
    if (shape.kind == ShapeKind::Pool) {
        painter.drawLine(horizontal ? header.topRight() : header.bottomLeft(), header.bottomRight());
    }
    painter.save();
    painter.setPen(palette.color(QPalette::WindowText));
    painter.translate(header.center());
    if (horizontal) {
        painter.rotate(-90);
    }
    const double length = (horizontal ? header.height() : header.width()) - 8;
    const QString text = QFontMetricsF(font).elidedText(textOf(shape.label), Qt::ElideRight, length);
    painter.drawText(QRectF(-length / 2, -HeaderWidth / 2, length, HeaderWidth), Qt::AlignCenter, text);
    painter.restore();
}

void ProcessDiagramPainter::paintActivity(QPainter& painter, const DiagramShape& shape) const {
    constexpr double Radius = 8.0;
    const QRectF bounds = rectOf(shape.bounds);
    const bool isCall = shape.kind == ShapeKind::Call && !shape.isExpanded;
    painter.setPen(QPen(lineColor(), isCall ? ThickLineWidth : LineWidth));
    painter.drawRoundedRect(bounds, Radius, Radius);
    painter.setPen(QPen(textOn(fillOf(shape)), 1));
    const QSizeF markerSize(DiagramMarkerSize, DiagramMarkerSize);
    paintTaskMarker(painter, {bounds.topLeft() + QPointF(5, 5), markerSize}, shape.marker);
    const QRectF below(
        QPointF(bounds.center().x() - DiagramMarkerSize / 2, bounds.bottom() - DiagramMarkerSize - 2),
        QSizeF(DiagramMarkerSize, DiagramMarkerSize - 2));
    if (!shape.loop.empty()) {
        paintLoopMarker(painter, isCall ? below.translated(-DiagramMarkerSize, 0) : below, shape.loop);
    }
    if (isCall) {
        paintClosedMarker(painter, below.adjusted(1, 1, -1, 1));
    }
    paintLabelInside(painter, shape);
}

void ProcessDiagramPainter::paintEvent(QPainter& painter, const DiagramShape& shape) const {
    const QRectF bounds = rectOf(shape.bounds);
    QPen pen(lineColor(), shape.kind == ShapeKind::EndEvent ? ThickLineWidth : LineWidth);
    if (!shape.isInterrupting) {
        pen.setStyle(Qt::DashLine);
    }
    painter.setPen(pen);
    painter.drawEllipse(bounds);
    if (shape.kind == ShapeKind::IntermediateEvent) {
        painter.drawEllipse(bounds.adjusted(3, 3, -3, -3));
    }
    const double inset = bounds.width() * 0.27;
    painter.setPen(QPen(textOn(fillOf(shape)), LineWidth));
    paintEventMarker(painter, bounds.adjusted(inset, inset, -inset, -inset), shape.marker, shape.isThrowing);
    paintLabelBelow(painter, shape);
}

void ProcessDiagramPainter::paintGateway(QPainter& painter, const DiagramShape& shape) const {
    const QRectF bounds = rectOf(shape.bounds);
    painter.drawPolygon(diamondIn(bounds));
    painter.setPen(QPen(textOn(fillOf(shape)), 2.25));
    painter.setBrush(Qt::NoBrush);
    const QPointF middle = bounds.center();
    const double reach = bounds.width() * (shape.kind == ShapeKind::ParallelGateway ? 0.24 : 0.16);
    if (shape.kind == ShapeKind::ExclusiveGateway) {
        painter.drawLine(middle + QPointF(-reach, -reach), middle + QPointF(reach, reach));
        painter.drawLine(middle + QPointF(-reach, reach), middle + QPointF(reach, -reach));
    } else if (shape.kind == ShapeKind::ParallelGateway) {
        painter.drawLine(middle + QPointF(-reach, 0), middle + QPointF(reach, 0));
        painter.drawLine(middle + QPointF(0, -reach), middle + QPointF(0, reach));
    } else {
        painter.drawEllipse(middle, reach * 1.3, reach * 1.3);
        if (shape.kind == ShapeKind::EventBasedGateway) {
            painter.setPen(QPen(textOn(fillOf(shape)), 1));
            const QRectF inside(middle - QPointF(reach, reach), middle + QPointF(reach, reach));
            paintEventMarker(painter, inside, "multiple", false);
        }
    }
    paintLabelBelow(painter, shape);
}

}  // namespace mero::qt
