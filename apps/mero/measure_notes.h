#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/repository/library.h"

class MeroSuperAgent;

namespace mero {

/// A measure that can't measure as its section stands.
struct MeasureFault {
    std::string measure;
    std::string reason;  ///< "it has no class"
};

/// Measures of a definition text whose class or attribute is missing or of the wrong kind, so that no run can
/// measure them. A name that the library doesn't know isn't told: reading the text shows a box for it.
[[nodiscard]] std::vector<MeasureFault> measureFaultsOf(std::string_view definition, const Library& library);

/// Lines about the measures of a run that have no results though they belong to its analysis: they couldn't
/// be prepared, had to stop, or are shown only when results are scaled. Before the run is closed.
[[nodiscard]] std::vector<std::string> notesOnMissingMeasures(MeroSuperAgent& agent, bool isScaled,
                                                              const Library& library);

}  // namespace mero
