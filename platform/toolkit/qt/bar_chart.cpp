#include "platform/toolkit/qt/bar_chart.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "component/host/core_time.h"

#include "platform/toolkit/qt/axis_dress.h"
#include "platform/toolkit/qt/field_dress.h"
#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/text_conversion.h"

namespace mero::qt {

namespace {

constexpr int BarHeight = 18;
constexpr int GroupGap = 10;
constexpr int Margin = 12;
constexpr int LegendItemWidth = 180;
constexpr int WidestName = 220;

/// A round number, or time, of which at most six fit below `largest`.
double roundStep(double largest, bool isTime) {
    const double rough = largest / 5;
    if (const auto step = isTime ? roundTimeStep(rough) : std::nullopt) {
        return *step;
    }
    const double magnitude = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * magnitude >= rough) {
            return factor * magnitude;
        }
    }
    return 10 * magnitude;
}

QString shownValue(const MeroDiagram& diagram, double value) {
    constexpr int Decimals = 2;
    const bool isWhole = value == std::floor(value);
    return dressed(diagram.GetValueText(value), isWhole ? 0 : Decimals);
}

}  // namespace

BarChart::BarChart(const MeroDiagram& shownDiagram, const QFont& textFont, const QPalette& colors)
    : diagram(shownDiagram), font(textFont), palette(colors) {
    const auto& mains = diagram.GetMainItems();
    const auto& legends = diagram.GetLegendItems();
    std::vector<std::size_t> order(mains.size());
    std::iota(order.begin(), order.end(), 0U);
    if (diagram.IsSingle() && !legends.empty()) {
        std::ranges::stable_sort(order, std::greater(), [&](std::size_t each) {
            return diagram.GetValue(mains[each].id, legends.front().id);
        });
    }
    for (std::size_t group = 0; group < order.size(); ++group) {
        const MeroDiagram::Item& main = mains[order[group]];
        names.push_back(plain(main.text));
        for (std::size_t each = 0; each < legends.size(); ++each) {
            bars.push_back({static_cast<int>(group), static_cast<int>(each),
                            diagram.GetValue(main.id, legends[each].id)});
        }
    }
}

int BarChart::legendRows(int width) const {
    const int columns = std::max(width / LegendItemWidth, 1);
    const auto items = static_cast<int>(diagram.GetLegendItems().size());
    return (items + columns - 1) / columns;
}

int BarChart::wantedHeight() const {
    const int lineHeight = QFontMetrics(font).height() + 4;
    return static_cast<int>(bars.size()) * BarHeight + static_cast<int>(names.size()) * GroupGap +
           legendRows(3 * LegendItemWidth) * lineHeight + 2 * lineHeight + 2 * Margin;
}

void BarChart::paintLegend(QPainter& painter, const QRect& room) const {
    const int columns = std::max(room.width() / LegendItemWidth, 1);
    const int lineHeight = QFontMetrics(font).height() + 4;
    const auto& legends = diagram.GetLegendItems();
    for (int each = 0; each < static_cast<int>(legends.size()); ++each) {
        const QRect place(room.left() + each % columns * LegendItemWidth,
                          room.top() + each / columns * lineHeight, LegendItemWidth - 8, lineHeight);
        painter.fillRect(
            QRect(place.left(), place.top() + 3, 12, 12),
            QBrush(categoryColor(each), isDashedCategory(each) ? Qt::Dense3Pattern : Qt::SolidPattern));
        painter.setPen(palette.color(QPalette::WindowText));
        const QString text = plain(legends[static_cast<std::size_t>(each)].text);
        painter.drawText(place.adjusted(18, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         QFontMetrics(font).elidedText(text, Qt::ElideRight, place.width() - 18));
    }
}

void BarChart::paintGrid(QPainter& painter, const QRect& room, double largest) const {
    QColor faint = palette.color(QPalette::WindowText);
    faint.setAlphaF(0.15F);
    const double step = roundStep(largest, MeroCoreTime::isTime(diagram.GetValueText(largest)));
    int lastLabelEnd = room.left() - 40;
    for (int each = 0; each * step <= largest * (1 + 1e-9); ++each) {
        const int x = room.left() + static_cast<int>(each * step / largest * room.width());
        painter.setPen(faint);
        painter.drawLine(x, room.top(), x, room.bottom());
        painter.setPen(palette.color(QPalette::WindowText));
        const QString label = shownValue(diagram, each * step);
        const int width = QFontMetrics(font).horizontalAdvance(label);
        if (x - width / 2 > lastLabelEnd + 8) {
            painter.drawText(QRect(x - width, room.bottom() + 2, 2 * width, 20),
                             Qt::AlignHCenter | Qt::AlignTop, label);
            lastLabelEnd = x + width / 2;
        }
    }
}

void BarChart::paint(QPainter& painter, const QRect& room) const {
    painter.fillRect(room, palette.brush(QPalette::Base));
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const int lineHeight = metrics.height() + 4;
    const QRect inside = room.adjusted(Margin, Margin, -Margin, -Margin);
    paintLegend(painter, inside);
    int nameWidth = 0;
    for (const QString& name : names) {
        nameWidth = std::max(nameWidth, std::min(metrics.horizontalAdvance(name), WidestName));
    }
    double largest = 0;
    int valueWidth = 0;
    for (const Bar& bar : bars) {
        largest = std::max(largest, bar.value);
        valueWidth = std::max(valueWidth, metrics.horizontalAdvance(shownValue(diagram, bar.value)));
    }
    largest = largest > 0 ? largest : 1;
    const QRect plot = inside.adjusted(nameWidth + 8, legendRows(inside.width()) * lineHeight + 4,
                                       -valueWidth - 8, -lineHeight);
    paintGrid(painter, plot, largest);
    int y = plot.top() + GroupGap / 2;
    int group = 0;
    const int barsOfGroup = std::max(static_cast<int>(diagram.GetLegendItems().size()), 1);
    for (const Bar& bar : bars) {
        if (bar.group != group) {
            group = bar.group;
            y += GroupGap;
        }
        painter.setPen(palette.color(QPalette::WindowText));
        if (bar.color == 0) {
            const QRect place(inside.left(), y, nameWidth, BarHeight * barsOfGroup);
            painter.drawText(
                place, Qt::AlignRight | Qt::AlignVCenter,
                metrics.elidedText(names[static_cast<std::size_t>(bar.group)], Qt::ElideRight, nameWidth));
        }
        const int width = static_cast<int>(std::max(bar.value, 0.0) / largest * plot.width());
        const QRect shape(plot.left(), y + 2, width, BarHeight - 4);
        painter.fillRect(shape, QBrush(categoryColor(bar.color),
                                       isDashedCategory(bar.color) ? Qt::Dense3Pattern : Qt::SolidPattern));
        painter.drawText(QRect(shape.right() + 6, y, valueWidth + 8, BarHeight),
                         Qt::AlignLeft | Qt::AlignVCenter, shownValue(diagram, bar.value));
        y += BarHeight;
    }
}

}  // namespace mero::qt
