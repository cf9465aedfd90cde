#include <QEvent>
#include <QTimer>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "component/host/core_time.h"
#include "component/host/function_graph.h"

#include "platform/toolkit/qt/axis_dress.h"
#include "platform/toolkit/qt/control_peer.h"
#include "platform/toolkit/qt/curve_plottable.h"
#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/text_conversion.h"

namespace mero::qt {

namespace {

constexpr double CurveWidth = 1.75;

class GraphPeer : public ControlPeer {
public:
    GraphPeer(MeroFunctionGraph& shownGraph, QWidget* place)
        : ControlPeer(shownGraph, place), graph(shownGraph) {
        auto made = std::make_unique<QCustomPlot>(place);
        plot = made.get();
        auto layout = std::make_unique<QVBoxLayout>();
        layout->setContentsMargins({});
        layout->addWidget(made.release());
        place->setLayout(layout.release());
        plot->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
        plot->setNoAntialiasingOnDrag(true);
        curve = std::make_unique<CurvePlottable>(plot->xAxis, plot->yAxis).release();
        plot->xAxis->setTicker(
            QSharedPointer<LabelTicker>::create([this](double x) { return graph.GetXLabel(x); }));
        plot->yAxis->setTicker(
            QSharedPointer<LabelTicker>::create([this](double y) { return graph.GetYLabel(y); }));
        plot->xAxis->ticker()->setTickCount(6);
        plot->installEventFilter(this);
        connect(plot, &QCustomPlot::mouseMove, this, [this](const QMouseEvent* event) { tellPoint(*event); });
        connect(plot, &QCustomPlot::mouseDoubleClick, this, [this] {
            fit();
            plot->replot();
        });
        timer.setSingleShot(true);
        connect(&timer, &QTimer::timeout, this, [this] { redraw(); });
        applyColors();
    }

    ~GraphPeer() override {
        if (widget != nullptr) {
            // The widget goes later than this and may be drawn until then.
            plot->removeEventFilter(this);
            curve->setCurve(nullptr);
            for (QCPAxis* const axis : {plot->xAxis, plot->yAxis}) {
                axis->setTicker(QSharedPointer<QCPAxisTicker>::create());
            }
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == plot && event->type() == QEvent::PaletteChange) {
            applyColors();
            plot->replot(QCustomPlot::rpQueuedReplot);
        }
        return ControlPeer::eventFilter(watched, event);
    }

protected:
    void update(const SV::Change& change) override {
        switch (change.aspect) {
            case SV::Aspect::Curves:
                // Curves may have moved in memory.
                curve->followCurve(graph.FindCurve(graph.GetShownGraph()));
                redrawSoon();
                break;
            case SV::Aspect::Selection:
                isNewCurve = true;
                redrawSoon();
                break;
            case SV::Aspect::Text:
            case SV::Aspect::Points:
                redrawSoon();
                break;
            case SV::Aspect::Drawing:
                timer.stop();
                redraw();
                break;
            default:
                break;
        }
    }

private:
    /// At most 30 times a second, and never more than a third of the time.
    void redrawSoon() {
        constexpr int ShortestInterval = 33;
        constexpr int PausesOfARedraw = 3;
        if (!timer.isActive()) {
            timer.start(std::max(ShortestInterval, PausesOfARedraw * static_cast<int>(plot->replotTime())));
        }
    }

    void redraw() {
        const MeroFunctionGraph::Curve* shown = graph.FindCurve(graph.GetShownGraph());
        if (isNewCurve || shown != curve->getCurve()) {
            isNewCurve = false;
            curve->setCurve(shown);
            if (shown != nullptr) {
                const int position = static_cast<int>(shown - graph.GetCurves().data());
                QPen pen(categoryColor(position), CurveWidth);
                pen.setStyle(isDashedCategory(position) ? Qt::DashLine : Qt::SolidLine);
                curve->setPen(pen);
            }
            fit();
        }
        curve->measure();
        if (curve->hasPoints() && !(plot->xAxis->range().contains(curve->getXExtent().upper) &&
                                    plot->yAxis->range().contains(curve->getYExtent().upper) &&
                                    plot->yAxis->range().contains(curve->getYExtent().lower))) {
            fit();
        }
        plot->xAxis->setLabel(plain(graph.GetXTitle()));
        plot->yAxis->setLabel(plain(graph.GetYTitle()));
        plot->replot();
    }

    void fit() {
        if (curve->hasPoints()) {
            plot->xAxis->setRange(steppedRange(curve->getXExtent()));
            plot->yAxis->setRange(steppedValueRange(curve->getYExtent()));
        }
    }

    void tellPoint(const QMouseEvent& event) {
        const MeroGraphPoint* point = curve->pointNear(event.position());
        if (point == nullptr || curve->getCurve() == nullptr) {
            QToolTip::hideText();
            return;
        }
        QToolTip::showText(event.globalPosition().toPoint(), plain(curve->getCurve()->name) + "\n" +
                                                                 plain(graph.GetXLabel(point->x)) + "\n" +
                                                                 plain(graph.GetYLabel(point->y)));
    }

    void applyColors() { dressAxes(*plot, widget->palette(), widget->font()); }

    MeroFunctionGraph& graph;
    QCustomPlot* plot = nullptr;  ///< null while it is being made, when its events come already
    CurvePlottable* curve;        ///< owned by the plot
    QTimer timer;
    bool isNewCurve = false;
};

}  // namespace

std::unique_ptr<SV::Peer> makeGraphPeer(SV::Control& control, QWidget* widget) {
    return std::make_unique<GraphPeer>(static_cast<MeroFunctionGraph&>(control), widget);
}

}  // namespace mero::qt
