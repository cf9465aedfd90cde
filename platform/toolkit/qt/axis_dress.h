#pragma once

#include <QFont>
#include <QPalette>
#include <functional>
#include <qcustomplot.h>

#include "component/host/sv_string.h"

namespace mero::qt {

/// Ticks with the texts that a function gives for values; times stand at whole minutes, hours and days, and
/// are dressed for the screen.
class LabelTicker : public QCPAxisTicker {
public:
    explicit LabelTicker(std::function<SV::String(double)> labeling) : labelOf(std::move(labeling)) {}

protected:
    double getTickStep(const QCPRange& range) override;
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

private:
    std::function<SV::String(double)> labelOf;
};

/// The range that a value axis shows for data: from 0 if that isn't far, and growing in steps, so that a
/// curve that grows doesn't make it jump at each point.
[[nodiscard]] QCPRange steppedRange(const QCPRange& data);

/// Axes and background of a plot in the colours of a palette, with a light grid.
void dressAxes(QCustomPlot& plot, const QPalette& palette, const QFont& font);

}  // namespace mero::qt
