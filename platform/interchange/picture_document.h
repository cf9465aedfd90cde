#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/diagram/measure_overlay.h"
#include "platform/diagram/process_diagram.h"
#include "platform/support/result.h"

namespace mero {

/// A process, coloured by a measure unless that is empty.
struct ProcessPicture {
    ProcessDiagram diagram;
    MeasureOverlay measure;
};

/// What the values of a chart are and where they come from.
struct ChartCaption {
    std::string title;
    std::string context;  ///< run, analysis and scale, for the small type
    MeasureOverlay::Unit unit = MeasureOverlay::Unit::Number;
    double daysPerYear = 365.0;
    double hoursPerDay = 24.0;
};

/// One bar for each legend entry in each item; one without a value is not-a-number.
struct BarPicture {
    struct Item {
        std::string label;
        std::vector<double> values;
    };

    ChartCaption caption;
    std::vector<std::string> legend;
    std::vector<Item> items;
};

/// Values over the count of finished processes, or over the time of the run in seconds.
struct CurvePicture {
    struct Curve {
        std::string name;
        std::vector<DrawPoint> points;
    };

    ChartCaption caption;
    std::vector<Curve> curves;
    MeasureOverlay::Unit abscissa = MeasureOverlay::Unit::Number;
};

struct Picture {
    std::string name;  ///< of its files, without suffix
    std::variant<ProcessPicture, BarPicture, CurvePicture> content;
};

/// The order for pictures that `mero-plot` carries out, as JSON text, `"format": "mero-pictures"`.
[[nodiscard]] std::string writePictures(const std::vector<Picture>& pictures);
/// Reads what `writePictures` writes. Objects are known by numbers that hold within a picture.
[[nodiscard]] Result<std::vector<Picture>> readPictures(std::string_view text, std::string_view source);

}  // namespace mero
