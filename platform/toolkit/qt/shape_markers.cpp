#include "platform/toolkit/qt/shape_markers.h"

#include <QPainterPath>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace mero::qt {

namespace {

/// Draws in a room of 1 by 1, whatever the real one.
class UnitPainter {
public:
    UnitPainter(QPainter& target, const QRectF& givenRoom, bool isFilled = false)
        : painter(target), room(givenRoom) {
        painter.save();
        painter.setBrush(isFilled ? QBrush(painter.pen().color()) : QBrush(Qt::NoBrush));
    }
    UnitPainter(const UnitPainter&) = delete;
    UnitPainter& operator=(const UnitPainter&) = delete;
    ~UnitPainter() { painter.restore(); }

    [[nodiscard]] QPointF at(double x, double y) const {
        return {room.left() + x * room.width(), room.top() + y * room.height()};
    }
    void line(double x1, double y1, double x2, double y2) { painter.drawLine(at(x1, y1), at(x2, y2)); }
    void circle(double x, double y, double radius) {
        painter.drawEllipse(at(x, y), radius * room.width(), radius * room.height());
    }
    void rect(double x, double y, double width, double height) {
        painter.drawRect(QRectF(at(x, y), at(x + width, y + height)));
    }
    template <std::size_t Count>
    void polygon(const std::array<std::pair<double, double>, Count>& corners) {
        QPolygonF shape;
        for (const auto& [x, y] : corners) {
            shape.append(at(x, y));
        }
        painter.drawPolygon(shape);
    }
    void arc(double x, double y, double radius, double fromDegrees, double spanDegrees) {
        const QPointF topLeft = at(x - radius, y - radius);
        painter.drawArc(QRectF(topLeft, at(x + radius, y + radius)), static_cast<int>(fromDegrees * 16),
                        static_cast<int>(spanDegrees * 16));
    }
    void setPen(const QColor& color) { painter.setPen(QPen(color, painter.pen().widthF())); }
    [[nodiscard]] QColor color() const { return painter.pen().color(); }

private:
    QPainter& painter;
    QRectF room;
};

void paintClock(UnitPainter& unit) {
    unit.circle(0.5, 0.5, 0.48);
    unit.line(0.5, 0.5, 0.5, 0.18);
    unit.line(0.5, 0.5, 0.75, 0.6);
}

void paintEnvelope(UnitPainter& unit, bool isFilled) {
    unit.rect(0.02, 0.2, 0.96, 0.6);
    if (isFilled) {
        unit.setPen(unit.color().lightnessF() > 0.5F ? Qt::black : Qt::white);
    }
    unit.line(0.02, 0.22, 0.5, 0.55);
    unit.line(0.98, 0.22, 0.5, 0.55);
}

void paintRays(UnitPainter& unit, double inner, double outer) {
    constexpr int Rays = 8;
    for (int ray = 0; ray < Rays; ++ray) {
        const double angle = 2 * std::numbers::pi * ray / Rays;
        const double x = std::cos(angle);
        const double y = std::sin(angle);
        unit.line(0.5 + inner * x, 0.5 + inner * y, 0.5 + outer * x, 0.5 + outer * y);
    }
}

}  // namespace

void paintEventMarker(QPainter& painter, const QRectF& room, std::string_view kind, bool isFilled) {
    UnitPainter unit(painter, room, isFilled);
    if (kind == "timer") {
        painter.setBrush(Qt::NoBrush);
        paintClock(unit);
    } else if (kind == "message") {
        paintEnvelope(unit, isFilled);
    } else if (kind == "terminate") {
        painter.setBrush(painter.pen().color());
        unit.circle(0.5, 0.5, 0.5);
    } else if (kind == "error") {
        unit.polygon(std::array<std::pair<double, double>, 6>{
            {{0.05, 0.95}, {0.3, 0.15}, {0.62, 0.55}, {0.95, 0.05}, {0.72, 0.85}, {0.4, 0.48}}});
    } else if (kind == "signal") {
        unit.polygon(std::array<std::pair<double, double>, 3>{{{0.5, 0.05}, {0.98, 0.85}, {0.02, 0.85}}});
    } else if (kind == "escalation") {
        unit.polygon(
            std::array<std::pair<double, double>, 4>{{{0.5, 0.02}, {0.9, 0.95}, {0.5, 0.6}, {0.1, 0.95}}});
    } else if (kind == "link") {
        unit.polygon(std::array<std::pair<double, double>, 7>{
            {{0.02, 0.35}, {0.55, 0.35}, {0.55, 0.1}, {0.98, 0.5}, {0.55, 0.9}, {0.55, 0.65}, {0.02, 0.65}}});
    } else if (kind == "compensation") {
        unit.polygon(std::array<std::pair<double, double>, 3>{{{0.02, 0.5}, {0.48, 0.2}, {0.48, 0.8}}});
        unit.polygon(std::array<std::pair<double, double>, 3>{{{0.5, 0.5}, {0.96, 0.2}, {0.96, 0.8}}});
    } else if (kind == "conditional") {
        painter.setBrush(Qt::NoBrush);
        unit.rect(0.15, 0.05, 0.7, 0.9);
        for (const double y : {0.25, 0.42, 0.58, 0.75}) {
            unit.line(0.28, y, 0.72, y);
        }
    } else if (kind == "cancel") {
        unit.line(0.1, 0.1, 0.9, 0.9);
        unit.line(0.9, 0.1, 0.1, 0.9);
    } else if (kind == "multiple") {
        unit.polygon(std::array<std::pair<double, double>, 5>{
            {{0.5, 0.03}, {0.97, 0.4}, {0.8, 0.95}, {0.2, 0.95}, {0.03, 0.4}}});
    }
}

void paintTaskMarker(QPainter& painter, const QRectF& room, std::string_view kind) {
    UnitPainter unit(painter, room, kind == "sendTask");
    if (kind == "userTask") {
        unit.circle(0.5, 0.28, 0.22);
        unit.arc(0.5, 1.0, 0.45, 0, 180);
        unit.line(0.05, 1.0, 0.95, 1.0);
    } else if (kind == "serviceTask") {
        unit.circle(0.5, 0.5, 0.32);
        unit.circle(0.5, 0.5, 0.12);
        paintRays(unit, 0.32, 0.48);
    } else if (kind == "sendTask" || kind == "receiveTask") {
        paintEnvelope(unit, kind == "sendTask");
    } else if (kind == "scriptTask") {
        unit.rect(0.12, 0.05, 0.76, 0.9);
        for (const double y : {0.28, 0.5, 0.72}) {
            unit.line(0.28, y, 0.72, y);
        }
    } else if (kind == "businessRuleTask") {
        unit.rect(0.02, 0.1, 0.96, 0.8);
        unit.line(0.02, 0.37, 0.98, 0.37);
        unit.line(0.02, 0.63, 0.98, 0.63);
        unit.line(0.35, 0.37, 0.35, 0.9);
    } else if (kind == "manualTask") {
        unit.rect(0.05, 0.45, 0.6, 0.45);
        for (const double y : {0.45, 0.6, 0.75}) {
            unit.line(0.65, y, 0.98, y);
        }
        unit.line(0.05, 0.45, 0.35, 0.12);
    }
}

void paintLoopMarker(QPainter& painter, const QRectF& room, std::string_view loop) {
    UnitPainter unit(painter, room);
    if (loop == "standard") {
        unit.arc(0.5, 0.5, 0.42, -60, 300);
        unit.line(0.71, 0.86, 0.95, 0.86);
        unit.line(0.71, 0.86, 0.71, 0.6);
        return;
    }
    for (const double place : {0.2, 0.5, 0.8}) {
        if (loop == "parallel") {
            unit.line(place, 0.1, place, 0.9);
        } else {
            unit.line(0.1, place, 0.9, place);
        }
    }
}

void paintClosedMarker(QPainter& painter, const QRectF& room) {
    UnitPainter unit(painter, room);
    unit.rect(0, 0, 1, 1);
    unit.line(0.2, 0.5, 0.8, 0.5);
    unit.line(0.5, 0.2, 0.5, 0.8);
}

}  // namespace mero::qt
