#include "platform/toolkit/qt/curve_plottable.h"

#include <algorithm>
#include <cmath>

namespace mero::qt {

namespace {

/// The points of one column of pixels, put together.
class ColumnLine {
public:
    explicit ColumnLine(bool drawsSteps) : steps(drawsSteps) {}

    void add(double x, double y) {
        const auto newColumn = static_cast<std::int64_t>(std::floor(x));
        if (!isOpen || newColumn != column) {
            flush();
            isOpen = true;
            column = newColumn;
            first = last = {x, y};
            low = high = y;
            return;
        }
        low = std::min(low, y);
        high = std::max(high, y);
        last = {x, y};
    }

    QPolygonF finish() {
        flush();
        return std::move(line);
    }

private:
    void append(const QPointF& point) {
        if (steps && !line.isEmpty() && line.last().y() != point.y()) {
            line.append({point.x(), line.last().y()});
        }
        line.append(point);
    }

    void flush() {
        if (!isOpen) {
            return;
        }
        append(first);
        if (low != high) {
            line.append({first.x(), low});
            line.append({first.x(), high});
        }
        if (last != first) {
            append(last);
        }
        isOpen = false;
    }

    bool steps;
    QPolygonF line;
    bool isOpen = false;
    std::int64_t column = 0;
    QPointF first;
    QPointF last;
    double low = 0;
    double high = 0;
};

/// The time of drawing a thick line grows with the square of its crossings with itself.
void drawInPieces(QPainter& painter, const QPolygonF& line) {
    constexpr qsizetype PointsOfPiece = 16;
    for (qsizetype from = 0; from + 1 < line.size(); from += PointsOfPiece) {
        const qsizetype count = std::min(PointsOfPiece + 1, line.size() - from);
        painter.drawPolyline(line.data() + from, static_cast<int>(count));
    }
}

}  // namespace

void CurvePlottable::setCurve(const MeroFunctionGraph::Curve* newCurve) {
    curve = newCurve;
    measured = 0;
    measure();
}

void CurvePlottable::followCurve(const MeroFunctionGraph::Curve* movedCurve) {
    if (curve != nullptr) {
        curve = movedCurve;
    }
}

void CurvePlottable::measure() {
    if (curve == nullptr) {
        return;
    }
    for (; measured < curve->points.size(); ++measured) {
        const MeroGraphPoint& point = curve->points[measured];
        if (measured == 0) {
            xExtent = {point.x, point.x};
            yExtent = {point.y, point.y};
            continue;
        }
        xExtent.lower = std::min(xExtent.lower, point.x);
        xExtent.upper = std::max(xExtent.upper, point.x);
        yExtent.lower = std::min(yExtent.lower, point.y);
        yExtent.upper = std::max(yExtent.upper, point.y);
    }
}

std::span<const MeroGraphPoint> CurvePlottable::visiblePoints() const {
    const std::span<const MeroGraphPoint> all(curve->points);
    if (!curve->isAscending) {
        return all;
    }
    const QCPRange range = mKeyAxis->range();
    auto from = std::ranges::lower_bound(all, range.lower, {}, &MeroGraphPoint::x);
    auto to = std::ranges::upper_bound(all, range.upper, {}, &MeroGraphPoint::x);
    // The lines into and out of sight begin at points outside.
    from = from == all.begin() ? from : std::prev(from);
    to = to == all.end() ? to : std::next(to);
    return {from, to};
}

QPolygonF CurvePlottable::visibleLine() const {
    constexpr int ModeSteps = 1;
    ColumnLine line(curve->mode == ModeSteps);
    // Linear axes: the two pixels of each range give the whole transformation.
    const QCPRange xRange = mKeyAxis->range();
    const QCPRange yRange = mValueAxis->range();
    const double x0 = mKeyAxis->coordToPixel(xRange.lower);
    const double y0 = mValueAxis->coordToPixel(yRange.lower);
    const double xScale = (mKeyAxis->coordToPixel(xRange.upper) - x0) / xRange.size();
    const double yScale = (mValueAxis->coordToPixel(yRange.upper) - y0) / yRange.size();
    for (const MeroGraphPoint& point : visiblePoints()) {
        line.add(x0 + (point.x - xRange.lower) * xScale, y0 + (point.y - yRange.lower) * yScale);
    }
    return line.finish();
}

void CurvePlottable::draw(QCPPainter* painter) {
    if (curve == nullptr || curve->points.empty()) {
        return;
    }
    applyDefaultAntialiasingHint(painter);
    painter->setPen(mPen);
    painter->setBrush(Qt::NoBrush);
    const QPolygonF line = visibleLine();
    drawInPieces(*painter, line);
    constexpr qsizetype FewPoints = 60;
    if (static_cast<qsizetype>(curve->points.size()) <= FewPoints) {
        painter->setBrush(mPen.color());
        constexpr double Radius = 2.5;
        for (const MeroGraphPoint& point : curve->points) {
            painter->drawEllipse(coordsToPixels(point.x, point.y), Radius, Radius);
        }
    }
}

void CurvePlottable::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
    painter->setPen(mPen);
    painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
}

const MeroGraphPoint* CurvePlottable::pointNear(const QPointF& pixel) const {
    if (curve == nullptr || curve->points.empty() || !curve->isAscending) {
        return nullptr;
    }
    constexpr double Reach = 12;
    const double x = mKeyAxis->pixelToCoord(pixel.x());
    auto place = std::ranges::lower_bound(curve->points, x, {}, &MeroGraphPoint::x);
    if (place == curve->points.end() ||
        (place != curve->points.begin() && x - std::prev(place)->x < place->x - x)) {
        --place;
    }
    const double distance = std::abs(mKeyAxis->coordToPixel(place->x) - pixel.x());
    return distance <= Reach ? &*place : nullptr;
}

double CurvePlottable::selectTest(const QPointF&, bool, QVariant*) const {
    return -1;
}

QCPRange CurvePlottable::getKeyRange(bool& found, QCP::SignDomain) const {
    found = hasPoints();
    return xExtent;
}

QCPRange CurvePlottable::getValueRange(bool& found, QCP::SignDomain, const QCPRange&) const {
    found = hasPoints();
    return yExtent;
}

}  // namespace mero::qt
