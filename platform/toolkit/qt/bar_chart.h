#pragma once

#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QRect>

#include "component/host/graph_window.h"

namespace mero::qt {

/// Draws a chart of bars: one group of bars for each main item, names on the left, values behind the bars,
/// the legend above.
class BarChart {
public:
    /// The chart isn't kept.
    BarChart(const MeroDiagram& shownDiagram, const QFont& textFont, const QPalette& colors);

    /// Height that shows all bars in full size.
    [[nodiscard]] int wantedHeight() const;
    void paint(QPainter& painter, const QRect& room) const;

private:
    struct Bar {
        int group;
        int color;
        double value;
    };
    void paintLegend(QPainter& painter, const QRect& room) const;
    void paintGrid(QPainter& painter, const QRect& room, double largest) const;
    [[nodiscard]] int legendRows(int width) const;

    const MeroDiagram& diagram;
    QFont font;
    QPalette palette;
    std::vector<QString> names;  ///< of groups, in order
    std::vector<Bar> bars;
};

}  // namespace mero::qt
