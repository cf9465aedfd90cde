#include "platform/toolkit/qt/axis_dress.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "component/host/core_time.h"

#include "platform/toolkit/qt/field_dress.h"
#include "platform/toolkit/qt/text_conversion.h"

namespace mero::qt {

namespace {

/// `tick`, which is a sum of steps, without the error of the addition.
double roundedTick(double tick, double step) {
    constexpr double DigitsOfStep = 2.0;
    const double scale = std::pow(10.0, DigitsOfStep - std::floor(std::log10(step)));
    return scale > 1.0 ? std::round(tick * scale) / scale : std::round(tick);
}

int decimalsOf(const SV::String& number) {
    const std::size_t point = number.Search(".");
    return point != SV::String::NotFound ? static_cast<int>(number.Len() - point) - 1 : 0;
}

double stepOf(const QCPRange& data) {
    const double size = data.size() > 0 ? data.size() : std::max(std::abs(data.upper), 1.0);
    return std::pow(10.0, std::floor(std::log10(size))) / 2;
}

}  // namespace

std::optional<double> roundTimeStep(double seconds) {
    static constexpr std::array RoundTimes{1.0,     2.0,     5.0,     10.0,    15.0,     30.0,    60.0,
                                           120.0,   300.0,   600.0,   900.0,   1800.0,   3600.0,  7200.0,
                                           10800.0, 21600.0, 43200.0, 86400.0, 172800.0, 604800.0};
    const auto* const step = std::ranges::lower_bound(RoundTimes, seconds);
    return step != RoundTimes.end() ? std::optional(*step) : std::nullopt;
}

double LabelTicker::getTickStep(const QCPRange& range) {
    const bool isTime = MeroCoreTime::isTime(labelOf(range.upper));
    const auto timeStep = isTime ? roundTimeStep(range.size() / (tickCount() + 1e-10)) : std::nullopt;
    lastStep = timeStep ? *timeStep : QCPAxisTicker::getTickStep(range);
    return lastStep;
}

QString LabelTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
    const SV::String label = labelOf(roundedTick(tick, lastStep));
    return dressed(label, decimalsOf(label));
}

QCPRange steppedRange(const QCPRange& data) {
    const double step = stepOf(data);
    const bool touchesZero = data.lower >= 0 && data.lower < data.upper / 2;
    QCPRange range(touchesZero ? 0 : std::floor(data.lower / step) * step,
                   std::ceil(data.upper / step) * step);
    if (range.size() <= 0) {
        range = {range.lower - step, range.upper + step};
    }
    return range;
}

QCPRange steppedValueRange(const QCPRange& data) {
    constexpr double ShareOfBorder = 0.02;
    QCPRange range = steppedRange(data);
    const double border = ShareOfBorder * range.size();
    if (range.upper - data.upper < border) {
        range.upper += stepOf(data);
    }
    if (range.lower != 0.0 && data.lower - range.lower < border) {
        range.lower -= stepOf(data);
    }
    return range;
}

void dressAxes(QCustomPlot& plot, const QPalette& palette, const QFont& font) {
    const QColor text = palette.color(QPalette::WindowText);
    QColor faint = text;
    faint.setAlphaF(0.15F);
    plot.setBackground(palette.brush(QPalette::Base));
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) {
        axis->setBasePen(QPen(text));
        axis->setTickPen(QPen(text));
        axis->setSubTickPen(QPen(faint));
        axis->setTickLabelColor(text);
        axis->setLabelColor(text);
        axis->setTickLabelFont(font);
        axis->setLabelFont(font);
        axis->grid()->setPen(QPen(faint));
        axis->grid()->setZeroLinePen(QPen(faint));
    }
}

}  // namespace mero::qt
