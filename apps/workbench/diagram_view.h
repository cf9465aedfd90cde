#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <optional>

#include "platform/diagram/measure_overlay.h"
#include "platform/diagram/process_diagram.h"

namespace mero {

/// Shows the drawing of a process: zoom by Ctrl and the wheel, move by dragging, select by a click. A measure
/// colours the shapes; its legend stays in the corner.
class DiagramView : public QAbstractScrollArea {
public:
    using Handler = std::function<void(MeroId object)>;

    explicit DiagramView(QWidget* parent = nullptr);

    /// The drawing is shown as a whole if that can be read, else from its beginning.
    void setDiagram(ProcessDiagram newDiagram);
    void setOverlay(std::optional<MeasureOverlay> newOverlay);
    /// How often objects were executed, which makes flows thick; none makes them thin.
    void setExecutions(const std::map<MeroId, double>& executions);
    [[nodiscard]] const ProcessDiagram& getDiagram() const { return diagram; }
    [[nodiscard]] const std::optional<MeasureOverlay>& getOverlay() const { return overlay; }

    /// Shows all of the drawing, but doesn't enlarge it.
    void fit();
    void zoomBy(double factor);
    [[nodiscard]] double getZoom() const { return zoom; }
    /// Selects an object and brings it into sight; 0 for none.
    void select(MeroId object);
    [[nodiscard]] MeroId getSelected() const { return selected; }
    /// Middle of a shape on the screen.
    [[nodiscard]] QPoint positionOf(MeroId object) const;

    /// Text of an object for its tool tip, without its value.
    void setTipOf(std::function<QString(MeroId)> newTipOf) { tipOf = std::move(newTipOf); }
    /// A user has selected an object, or 0; has double-clicked one.
    void setSelectHandler(Handler newHandler) { selectHandler = std::move(newHandler); }
    void setOpenHandler(Handler newHandler) { openHandler = std::move(newHandler); }

    /// Writes all of the drawing with its legend to a file, PNG or SVG by its suffix. False if it can't.
    [[nodiscard]] bool savePicture(const QString& path) const;

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QRectF room() const;
    [[nodiscard]] QPointF toDrawing(const QPointF& pixel) const;
    [[nodiscard]] QPointF origin() const;
    [[nodiscard]] QString tipAt(const QPointF& pixel) const;
    [[nodiscard]] double fittingZoom() const;
    void showFromStart(double newZoom);
    void zoomAt(double newZoom, const QPointF& fixedPixel);
    void updateScrollBars();
    void selectByUser(MeroId object);

    ProcessDiagram diagram;
    std::optional<MeasureOverlay> overlay;
    double zoom = 1.0;
    bool isFitted = true;
    MeroId selected = MeroNoId;
    QPoint dragStart;
    QPoint dragScroll;
    bool isDragging = false;
    std::function<QString(MeroId)> tipOf;
    Handler selectHandler;
    Handler openHandler;
};

}  // namespace mero
