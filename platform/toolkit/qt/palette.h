#pragma once

#include <QColor>

class QApplication;

namespace mero::qt {

/// Colours of categories, which the colour-blind can tell; then the same again, to be drawn dashed.
[[nodiscard]] QColor categoryColor(int index);
[[nodiscard]] bool isDashedCategory(int index);

/// Colour of a share of the largest value, from 0 to 1, for the light or dark palette in force.
[[nodiscard]] QColor magnitudeColor(double share);

[[nodiscard]] bool isDark();

/// Fusion style with the light or dark palette.
void applyLook(QApplication& application, bool dark);

}  // namespace mero::qt
