#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include "component/host/graph_window.h"

#include "platform/toolkit/qt/bar_chart.h"
#include "platform/toolkit/qt/control_peer.h"

namespace mero::qt {

namespace {

class ChartWidget : public QWidget {
public:
    explicit ChartWidget(const MeroDiagram& shownDiagram) : diagram(&shownDiagram) {}

    void measure() {
        setMinimumHeight(BarChart(*diagram, font(), palette()).wantedHeight());
        update();
    }

    void forgetDiagram() { diagram = nullptr; }

protected:
    void paintEvent(QPaintEvent*) override {
        if (diagram == nullptr) {
            return;
        }
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        BarChart(*diagram, font(), palette()).paint(painter, rect());
    }

private:
    const MeroDiagram* diagram;  ///< null when it has gone and the widget hasn't yet
};

class DiagramPeer : public ControlPeer {
public:
    DiagramPeer(MeroDiagram& shownDiagram, QWidget* place) : ControlPeer(shownDiagram, place) {
        auto made = std::make_unique<ChartWidget>(shownDiagram);
        chart = made.get();
        auto area = std::make_unique<QScrollArea>();
        area->setWidgetResizable(true);
        area->setFrameShape(QFrame::NoFrame);
        area->setWidget(made.release());
        auto layout = std::make_unique<QVBoxLayout>();
        layout->setContentsMargins({});
        layout->addWidget(area.release());
        place->setLayout(layout.release());
    }

    ~DiagramPeer() override {
        if (widget != nullptr) {
            chart->forgetDiagram();
        }
    }

protected:
    void update(const SV::Change& change) override {
        if (change.aspect == SV::Aspect::Drawing) {
            chart->measure();
        }
    }

private:
    ChartWidget* chart;
};

}  // namespace

std::unique_ptr<SV::Peer> makeDiagramPeer(SV::Control& control, QWidget* widget) {
    return std::make_unique<DiagramPeer>(static_cast<MeroDiagram&>(control), widget);
}

}  // namespace mero::qt
