#pragma once

#include <qcustomplot.h>

#include "component/host/function_graph.h"

namespace mero::qt {

/// Draws a curve right from its points, however many: of those that fall into one column of pixels the first,
/// lowest, highest and last, which looks the same as all of them.
class CurvePlottable : public QCPAbstractPlottable {
public:
    CurvePlottable(QCPAxis* xAxis, QCPAxis* yAxis) : QCPAbstractPlottable(xAxis, yAxis) {}

    /// Null for none. Not owned.
    void setCurve(const MeroFunctionGraph::Curve* newCurve);
    /// The same curve at another place in memory, if there is one.
    void followCurve(const MeroFunctionGraph::Curve* movedCurve);
    [[nodiscard]] const MeroFunctionGraph::Curve* getCurve() const { return curve; }
    /// Takes the points that have come into the extent.
    void measure();
    [[nodiscard]] const QCPRange& getXExtent() const { return xExtent; }
    [[nodiscard]] const QCPRange& getYExtent() const { return yExtent; }
    [[nodiscard]] bool hasPoints() const { return measured > 0; }
    /// Point next to a pixel, within some pixels; null for none.
    [[nodiscard]] const MeroGraphPoint* pointNear(const QPointF& pixel) const;

    double selectTest(const QPointF& pos, bool onlySelectable, QVariant* details) const override;
    QCPRange getKeyRange(bool& found, QCP::SignDomain domain) const override;
    QCPRange getValueRange(bool& found, QCP::SignDomain domain, const QCPRange& keyRange) const override;

protected:
    void draw(QCPPainter* painter) override;
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

private:
    [[nodiscard]] QPolygonF visibleLine() const;
    [[nodiscard]] std::span<const MeroGraphPoint> visiblePoints() const;

    const MeroFunctionGraph::Curve* curve = nullptr;
    std::size_t measured = 0;
    QCPRange xExtent;
    QCPRange yExtent;
};

}  // namespace mero::qt
