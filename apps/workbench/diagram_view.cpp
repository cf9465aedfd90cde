#include "apps/workbench/diagram_view.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "apps/mero-plot/picture_files.h"
#include "apps/workbench/texts.h"
#include "apps/workbench/workbench_messages.h"
#include "platform/diagram/flow_counts.h"
#include "platform/toolkit/qt/measure_legend.h"
#include "platform/toolkit/qt/process_diagram_painter.h"

namespace mero {

namespace {

constexpr double SmallestZoom = 0.05;
constexpr double LargestZoom = 4.0;

}  // namespace

DiagramView::DiagramView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setCursor(Qt::OpenHandCursor);
}

void DiagramView::setDiagram(ProcessDiagram newDiagram) {
    diagram = std::move(newDiagram);
    selected = MeroNoId;
    // Where all of it would be too small to read, the beginning comes first.
    constexpr double Readable = 0.65;
    showFromStart(std::max(fittingZoom(), Readable));
    isFitted = fittingZoom() >= Readable;
}

void DiagramView::setOverlay(std::optional<MeasureOverlay> newOverlay) {
    overlay = std::move(newOverlay);
    updateScrollBars();
}

void DiagramView::setExecutions(const std::map<MeroId, double>& executions) {
    countFlows(diagram, executions);
    viewport()->update();
}

QRectF DiagramView::room() const {
    return qt::ProcessDiagramPainter(diagram, overlay ? &*overlay : nullptr, font(), palette()).room();
}

QPointF DiagramView::origin() const {
    const QSizeF shown = room().size() * zoom;
    const QSizeF space = viewport()->size();
    const auto offset = [](double length, double available, int scroll) {
        return length < available ? (available - length) / 2 : -static_cast<double>(scroll);
    };
    return {offset(shown.width(), space.width(), horizontalScrollBar()->value()),
            offset(shown.height(), space.height(), verticalScrollBar()->value())};
}

QPointF DiagramView::toDrawing(const QPointF& pixel) const {
    return (pixel - origin()) / zoom + room().topLeft();
}

QPoint DiagramView::positionOf(MeroId object) const {
    const DiagramShape* const shape = diagram.find(object);
    if (shape == nullptr) {
        return {};
    }
    const DrawPoint centre = shape->bounds.centre();
    return ((QPointF(centre.x, centre.y) - room().topLeft()) * zoom + origin()).toPoint();
}

void DiagramView::updateScrollBars() {
    const QSizeF shown = room().size() * zoom;
    const auto set = [](QScrollBar& bar, double length, int available) {
        bar.setRange(0, std::max(static_cast<int>(std::ceil(length)) - available, 0));
        bar.setPageStep(available);
        bar.setSingleStep(std::max(available / 10, 1));
    };
    set(*horizontalScrollBar(), shown.width(), viewport()->width());
    set(*verticalScrollBar(), shown.height(), viewport()->height());
    viewport()->update();
}

double DiagramView::fittingZoom() const {
    const QSizeF whole = room().size();
    return std::min({viewport()->width() / std::max(whole.width(), 1.0),
                     viewport()->height() / std::max(whole.height(), 1.0), 1.0});
}

void DiagramView::fit() {
    showFromStart(fittingZoom());
}

void DiagramView::showFromStart(double newZoom) {
    zoom = std::max(newZoom, SmallestZoom);
    isFitted = true;
    updateScrollBars();
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
}

void DiagramView::zoomAt(double newZoom, const QPointF& fixedPixel) {
    const QPointF place = toDrawing(fixedPixel) - room().topLeft();
    zoom = std::clamp(newZoom, SmallestZoom, LargestZoom);
    isFitted = false;
    updateScrollBars();
    const QPointF scroll = place * zoom - fixedPixel;
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(scroll.x())));
    verticalScrollBar()->setValue(static_cast<int>(std::lround(scroll.y())));
}

void DiagramView::zoomBy(double factor) {
    zoomAt(zoom * factor, QRectF(viewport()->rect()).center());
}

void DiagramView::select(MeroId object) {
    selected = object;
    const QPoint place = positionOf(object);
    if (object != MeroNoId && diagram.find(object) != nullptr && !viewport()->rect().contains(place)) {
        const QPoint way = place - viewport()->rect().center();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + way.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() + way.y());
    }
    viewport()->update();
}

void DiagramView::selectByUser(MeroId object) {
    select(object);
    if (selectHandler) {
        selectHandler(object);
    }
}

QString DiagramView::tipAt(const QPointF& pixel) const {
    const qt::ProcessDiagramPainter painter(diagram, nullptr, font(), palette());
    const MeroId object = painter.objectAt(toDrawing(pixel));
    if (object == MeroNoId) {
        return {};
    }
    QString tip = tipOf ? tipOf(object) : QString();
    if (overlay) {
        const auto value = overlay->values.find(object);
        tip += "\n" +
               say(WorkbenchText::ShownValue,
                   {QString::fromStdString(overlay->measure),
                    value != overlay->values.end() ? qt::shownValue(*overlay, overlay->scale(), value->second)
                                                   : say(WorkbenchText::NoValue)});
    }
    return tip;
}

bool DiagramView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto& help = static_cast<const QHelpEvent&>(*event);
        const QString tip = tipAt(help.pos());
        tip.isEmpty() ? QToolTip::hideText() : QToolTip::showText(help.globalPos(), tip, viewport());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void DiagramView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().brush(QPalette::Base));
    const qt::ProcessDiagramPainter drawing(diagram, overlay ? &*overlay : nullptr, font(), palette());
    const QRectF visible(toDrawing({0, 0}), toDrawing(QRectF(viewport()->rect()).bottomRight()));
    painter.save();
    painter.translate(origin());
    painter.scale(zoom, zoom);
    painter.translate(-room().topLeft());
    drawing.paint(painter, visible, selected);
    painter.restore();
    if (overlay && !overlay->isEmpty()) {
        const qt::MeasureLegend legend(*overlay, font(), palette());
        constexpr int Distance = 8;
        legend.paint(painter, {Distance, viewport()->height() - legend.size().height() - Distance});
    }
}

void DiagramView::resizeEvent(QResizeEvent*) {
    if (isFitted) {
        fit();
    } else {
        updateScrollBars();
    }
}

void DiagramView::wheelEvent(QWheelEvent* event) {
    if ((event->modifiers() & Qt::ControlModifier) == 0) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    constexpr double NotchOfAWheel = 120.0;
    constexpr double FactorOfANotch = 1.2;
    zoomAt(zoom * std::pow(FactorOfANotch, event->angleDelta().y() / NotchOfAWheel), event->position());
}

void DiagramView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        dragStart = event->pos();
        dragScroll = {horizontalScrollBar()->value(), verticalScrollBar()->value()};
    }
}

void DiagramView::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) == 0) {
        return;
    }
    const QPoint way = event->pos() - dragStart;
    if (!isDragging && way.manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    isDragging = true;
    viewport()->setCursor(Qt::ClosedHandCursor);
    horizontalScrollBar()->setValue(dragScroll.x() - way.x());
    verticalScrollBar()->setValue(dragScroll.y() - way.y());
}

void DiagramView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !isDragging) {
        const qt::ProcessDiagramPainter painter(diagram, nullptr, font(), palette());
        selectByUser(painter.objectAt(toDrawing(event->position())));
    }
    isDragging = false;
    viewport()->setCursor(Qt::OpenHandCursor);
}

void DiagramView::mouseDoubleClickEvent(QMouseEvent*) {
    if (selected != MeroNoId && openHandler) {
        openHandler(selected);
    }
}

/// Tab order isn't the way through a drawing: the arrows go from shape to shape.
void DiagramView::keyPressEvent(QKeyEvent* event) {
    const bool isForward = event->key() == Qt::Key_Right || event->key() == Qt::Key_Down;
    const bool isBack = event->key() == Qt::Key_Left || event->key() == Qt::Key_Up;
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && selected != MeroNoId) {
        openHandler ? openHandler(selected) : void();
    } else if ((isForward || isBack) && !diagram.shapes.empty()) {
        const auto count = static_cast<std::ptrdiff_t>(diagram.shapes.size());
        const auto found = std::ranges::find(diagram.shapes, selected, &DiagramShape::object);
        const std::ptrdiff_t place = found != diagram.shapes.end() ? found - diagram.shapes.begin() : -1;
        const std::ptrdiff_t next = place < 0 ? 0 : (place + (isForward ? 1 : count - 1)) % count;
        selectByUser(diagram.shapes[static_cast<std::size_t>(next)].object);
    } else {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

bool DiagramView::savePicture(const QString& path) const {
    return saveProcessPicture({diagram, overlay.value_or(MeasureOverlay{})}, path);
}

}  // namespace mero
