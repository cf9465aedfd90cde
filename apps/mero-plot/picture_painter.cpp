#include "apps/mero-plot/picture_painter.h"

#include <QApplication>
#include <algorithm>
#include <cmath>

#include "component/host/core_time.h"
#include "component/host/graph_window.h"

#include "platform/toolkit/qt/axis_dress.h"
#include "platform/toolkit/qt/bar_chart.h"
#include "platform/toolkit/qt/measure_legend.h"
#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/process_diagram_painter.h"
#include "platform/toolkit/qt/text_conversion.h"

namespace mero {

namespace {

constexpr int Margin = 16;
constexpr int TitleHeight = 24;
constexpr int ContextHeight = 18;
constexpr int ChartWidth = 960;
constexpr SV::ResId TitleOfProcesses{0x2012004};
constexpr SV::ResId TitleOfTimes{0x201308A};

QFont fontOf(int pixels, bool bold = false) {
    QFont font = QApplication::font();
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

QFont titleFont() {
    return fontOf(15, true);
}

void paintBackground(QPainter& painter, const QSize& size) {
    painter.fillRect(QRect({}, size), QApplication::palette().brush(QPalette::Base));
}

/// Title above, context below: every picture tells what it is of.
void paintCaption(QPainter& painter, const QSize& size, const std::string& title,
                  const std::string& context) {
    painter.setPen(QApplication::palette().color(QPalette::WindowText));
    painter.setFont(titleFont());
    painter.drawText(QRect(Margin, Margin, size.width() - 2 * Margin, TitleHeight),
                     Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(title));
    painter.setFont(fontOf(10));
    painter.drawText(
        QRect(Margin, size.height() - Margin - ContextHeight, size.width() - 2 * Margin, ContextHeight),
        Qt::AlignLeft | Qt::AlignBottom, QString::fromStdString(context));
}

/// What is left for the chart itself.
QRect roomOf(const QSize& size) {
    return QRect({}, size).adjusted(Margin, Margin + TitleHeight, -Margin, -Margin - ContextHeight);
}

class ProcessPainter : public PicturePainter {
public:
    explicit ProcessPainter(const ProcessPicture& shownPicture)
        : picture(shownPicture),
          drawing(picture.diagram, picture.measure.isEmpty() ? nullptr : &picture.measure,
                  QApplication::font(), QApplication::palette()),
          legend(picture.measure, QApplication::font(), QApplication::palette()) {}

    [[nodiscard]] QSize size() const override {
        const QSizeF room = drawing.room().size();
        const QSizeF below = picture.measure.isEmpty() ? QSizeF() : legend.size();
        const double title =
            QFontMetricsF(titleFont()).horizontalAdvance(QString::fromStdString(picture.diagram.name));
        return {static_cast<int>(std::ceil(std::max({room.width(), below.width(), title}))) + 2 * Margin,
                static_cast<int>(std::ceil(room.height() + below.height())) + TitleHeight + 2 * Margin};
    }

    void paint(QPaintDevice& paper) const override {
        QPainter painter(&paper);
        painter.setRenderHint(QPainter::Antialiasing);
        paintBackground(painter, size());
        paintCaption(painter, size(), picture.diagram.name, {});
        const QRectF room = drawing.room();
        painter.save();
        painter.translate(QPointF(Margin, Margin + TitleHeight) - room.topLeft());
        drawing.paint(painter);
        painter.restore();
        if (!picture.measure.isEmpty()) {
            legend.paint(painter, {double{Margin}, Margin + TitleHeight + room.height()});
        }
    }

private:
    const ProcessPicture& picture;
    qt::ProcessDiagramPainter drawing;
    qt::MeasureLegend legend;
};

class BarPainter : public PicturePainter {
public:
    explicit BarPainter(const BarPicture& shownPicture) : picture(shownPicture), chart(&holder, SV::ResId{}) {
        const ChartCaption& caption = picture.caption;
        const bool isTime = caption.unit == MeasureOverlay::Unit::Seconds;
        chart.SetType(isTime ? DiagramTimes : DiagramNumbers, 1, 1, 1, caption.daysPerYear,
                      caption.hoursPerDay);
        for (std::size_t entry = 0; entry < picture.legend.size(); ++entry) {
            chart.AddLegendItem(idOf(entry), SV::String(picture.legend[entry]));
        }
        for (std::size_t item = 0; item < picture.items.size(); ++item) {
            const BarPicture::Item& shown = picture.items[item];
            chart.AddMainItem(idOf(item), SV::String(shown.label.empty() ? "?" : shown.label));
            for (std::size_t entry = 0; entry < shown.values.size(); ++entry) {
                if (std::isfinite(shown.values[entry])) {
                    chart.SetValue(idOf(item), idOf(entry), shown.values[entry]);
                }
            }
        }
    }

    [[nodiscard]] QSize size() const override {
        return {ChartWidth, bars().wantedHeight() + TitleHeight + ContextHeight + 2 * Margin};
    }

    void paint(QPaintDevice& paper) const override {
        QPainter painter(&paper);
        painter.setRenderHint(QPainter::Antialiasing);
        paintBackground(painter, size());
        bars().paint(painter, roomOf(size()));
        paintCaption(painter, size(), picture.caption.title, picture.caption.context);
    }

private:
    static MeroId idOf(std::size_t number) { return static_cast<MeroId>(number + 1); }
    [[nodiscard]] qt::BarChart bars() const { return {chart, fontOf(12), QApplication::palette()}; }

    const BarPicture& picture;
    SV::Window holder;
    MeroDiagram chart;
};

class CurvePainter : public PicturePainter {
public:
    explicit CurvePainter(const CurvePicture& shownPicture) : picture(shownPicture) {
        qt::dressAxes(plot, QApplication::palette(), fontOf(12));
        setTicker(*plot.xAxis, picture.abscissa);
        const bool isTime = picture.abscissa == MeasureOverlay::Unit::Seconds;
        plot.xAxis->setLabel(qt::plain(SV::String(isTime ? TitleOfTimes : TitleOfProcesses)));
        setTicker(*plot.yAxis, picture.caption.unit);
        for (std::size_t curve = 0; curve < picture.curves.size(); ++curve) {
            addCurve(picture.curves[curve], static_cast<int>(curve));
        }
        plot.xAxis->setRange(qt::steppedRange(extentOf(
            [](const QCPGraph& graph, bool& found) { return graph.getKeyRange(found, QCP::sdBoth); })));
        plot.yAxis->setRange(qt::steppedValueRange(extentOf(
            [](const QCPGraph& graph, bool& found) { return graph.getValueRange(found, QCP::sdBoth); })));
        placeLegend();
    }

    [[nodiscard]] QSize size() const override {
        constexpr int PlotHeight = 420;
        const auto rows = static_cast<int>(picture.curves.size() + LegendColumns - 1) / LegendColumns;
        return {ChartWidth, PlotHeight + rows * LegendRow + TitleHeight + ContextHeight + 2 * Margin};
    }

    void paint(QPaintDevice& paper) const override {
        QCPPainter painter(&paper);
        paintBackground(painter, size());
        const QRect room = roomOf(size());
        painter.save();
        painter.translate(room.topLeft());
        plot.toPainter(&painter, room.width(), room.height());
        painter.restore();
        paintCaption(painter, size(), picture.caption.title, picture.caption.context);
    }

private:
    static constexpr int LegendColumns = 4;
    static constexpr int LegendRow = 22;

    void setTicker(QCPAxis& axis, MeasureOverlay::Unit unit) {
        const double days = picture.caption.daysPerYear;
        const double hours = picture.caption.hoursPerDay;
        const bool isTime = unit == MeasureOverlay::Unit::Seconds;
        auto ticker = QSharedPointer<qt::LabelTicker>::create([=](double value) {
            return isTime ? MeroCoreTime(value, days, hours).asText()
                          : SV::String(QLocale().toString(value, 'g', 6).toStdString());
        });
        constexpr int Ticks = 6;
        ticker->setTickCount(Ticks);
        axis.setTicker(ticker);
    }

    void addCurve(const CurvePicture::Curve& curve, int number) {
        QCPGraph* const graph = plot.addGraph();
        constexpr int RoomOfAName = ChartWidth / LegendColumns - 72;
        graph->setName(QFontMetrics(fontOf(12))
                           .elidedText(QString::fromStdString(curve.name), Qt::ElideRight, RoomOfAName));
        QPen pen(qt::categoryColor(number), 1.75);
        pen.setStyle(qt::isDashedCategory(number) ? Qt::DashLine : Qt::SolidLine);
        graph->setPen(pen);
        constexpr std::size_t FewPoints = 60;
        if (curve.points.size() <= FewPoints) {
            graph->setScatterStyle({QCPScatterStyle::ssDisc, 5});
        }
        for (const DrawPoint& point : curve.points) {
            if (std::isfinite(point.x) && std::isfinite(point.y)) {
                graph->addData(point.x, point.y);
            }
        }
    }

    /// Extent of all curves; one of no size where there is none.
    template <class Getter>
    [[nodiscard]] QCPRange extentOf(const Getter& extentOfGraph) const {
        QCPRange all;
        bool isFirst = true;
        for (int each = 0; each < plot.graphCount(); ++each) {
            bool found = false;
            const QCPRange range = extentOfGraph(*plot.graph(each), found);
            if (found) {
                all = isFirst ? range : all.expanded(range);
                isFirst = false;
            }
        }
        return all;
    }

    /// Outside of the data, below.
    void placeLegend() {
        plot.legend->setVisible(true);
        plot.legend->setWrap(LegendColumns);
        plot.legend->setFillOrder(QCPLegend::foColumnsFirst, true);
        plot.legend->setFont(fontOf(12));
        plot.legend->setBrush(Qt::NoBrush);
        plot.legend->setBorderPen(Qt::NoPen);
        plot.legend->setTextColor(QApplication::palette().color(QPalette::WindowText));
        auto below = std::make_unique<QCPLayoutGrid>();
        QCPLayoutGrid* const grid = below.release();
        plot.plotLayout()->addElement(1, 0, grid);
        grid->addElement(0, 0, plot.legend);
        plot.plotLayout()->setRowStretchFactor(1, 0.001);
    }

    const CurvePicture& picture;
    mutable QCustomPlot plot;  ///< its painting changes what it remembers of its layout
};

}  // namespace

std::unique_ptr<PicturePainter> painterOf(const Picture& picture) {
    if (const auto* const process = std::get_if<ProcessPicture>(&picture.content)) {
        return std::make_unique<ProcessPainter>(*process);
    }
    if (const auto* const bars = std::get_if<BarPicture>(&picture.content)) {
        return std::make_unique<BarPainter>(*bars);
    }
    return std::make_unique<CurvePainter>(std::get<CurvePicture>(picture.content));
}

}  // namespace mero
