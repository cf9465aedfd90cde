#pragma once

#include <QFont>
#include <QPalette>
#include <functional>
#include <optional>
#include <qcustomplot.h>

#include "component/host/sv_string.h"

namespace mero::qt {

/// Ticks with the texts that a function gives for values, dressed for the screen; times stand at whole
/// minutes, hours and days.
class LabelTicker : public QCPAxisTicker {
public:
    explicit LabelTicker(std::function<SV::String(double)> labeling) : labelOf(std::move(labeling)) {}

protected:
    double getTickStep(const QCPRange& range) override;
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

private:
    std::function<SV::String(double)> labelOf;
    double lastStep = 1.0;
};

/// A step of seconds, minutes, hours or days at which people read times, at least so many seconds; nothing if
/// that is more than a week.
[[nodiscard]] std::optional<double> roundTimeStep(double seconds);

/// The range that an axis shows for data: from 0 if that isn't far, and growing in steps, so that a curve
/// that grows doesn't make it jump at each point.
[[nodiscard]] QCPRange steppedRange(const QCPRange& data);
/// As `steppedRange` for an axis of values: the data stay off its ends, where the border hides them.
[[nodiscard]] QCPRange steppedValueRange(const QCPRange& data);

/// Axes and background of a plot in the colours of a palette, with a light grid.
void dressAxes(QCustomPlot& plot, const QPalette& palette, const QFont& font);

}  // namespace mero::qt
