#pragma once

#include <QFont>
#include <QPainter>
#include <QPalette>

#include "platform/diagram/measure_overlay.h"
#include "platform/diagram/process_diagram.h"

namespace mero::qt {

/// Paints the drawing of a process, in drawing units, in the colours of a palette. With a measure its shapes
/// are filled by their values, which stand below the names; shapes without a value keep the background.
class ProcessDiagramPainter {
public:
    /// `shownDiagram` and `shownOverlay` aren't owned, and have to stay as they are for as long as this
    /// lives; null for no measure.
    ProcessDiagramPainter(const ProcessDiagram& shownDiagram, const MeasureOverlay* shownOverlay,
                          const QFont& textFont, const QPalette& colors);

    /// What the drawing takes up, with labels and a border.
    [[nodiscard]] QRectF room() const;
    /// Draws what lies in `visible`, all of it if that is null; the selected object stands out.
    void paint(QPainter& painter, const QRectF& visible = {}, MeroId selected = MeroNoId) const;
    /// Uppermost object at a place; 0 for none. Swimlanes count by their header alone.
    [[nodiscard]] MeroId objectAt(const QPointF& place) const;

private:
    void paintEdge(QPainter& painter, const DiagramEdge& edge) const;
    /// Flows are drawn as thick as they were taken often.
    [[nodiscard]] double widthOf(const DiagramEdge& edge) const;
    void paintArrow(QPainter& painter, const DiagramEdge& edge) const;
    void paintEdgeLabel(QPainter& painter, const DiagramEdge& edge) const;
    void paintShape(QPainter& painter, const DiagramShape& shape, bool isSelected) const;
    void paintSwimlane(QPainter& painter, const DiagramShape& shape) const;
    void paintActivity(QPainter& painter, const DiagramShape& shape) const;
    void paintEvent(QPainter& painter, const DiagramShape& shape) const;
    void paintGateway(QPainter& painter, const DiagramShape& shape) const;
    void paintLabelInside(QPainter& painter, const DiagramShape& shape) const;
    void paintLabelBelow(QPainter& painter, const DiagramShape& shape) const;

    /// Behind a text that lines may run through.
    void paintHalo(QPainter& painter, const QRectF& place) const;

    [[nodiscard]] QColor fillOf(const DiagramShape& shape) const;
    [[nodiscard]] QColor textOn(const QColor& fill) const;
    [[nodiscard]] QColor lineColor() const;
    [[nodiscard]] QString valueOf(const DiagramShape& shape) const;

    const ProcessDiagram& diagram;
    const MeasureOverlay* overlay;
    MeasureScale scale;
    QFont font;
    QPalette palette;
    double largest;  ///< count of the flow that was taken most often
};

/// A value of a measure as people read it: "1,250.5" or "2 d 3 h". `scale` is that of the overlay.
[[nodiscard]] QString shownValue(const MeasureOverlay& overlay, const MeasureScale& scale, double value);

}  // namespace mero::qt
