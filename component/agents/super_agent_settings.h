#pragma once

#include "component/host/kiln_parser.h"
#include "component/host/sv_string.h"

#include "component/results/result_options.h"

/// What the "AGENT" section of a definition text says besides the analyses: the options of the display, the
/// activation, and which settings a dialog shows and lets change.
struct MeroSuperAgentSettings : MeroResultOptions {
    bool active = true;
    bool showActivation = true;
    bool enableActivation = true;
    bool showSelectResults = true;
    bool enableSelectResults = true;
    bool objectsShown = true;
    bool objectsEnabled = true;
    bool calendarShown = true;
    bool calendarEnabled = true;
    bool infoTextShown = true;
    bool infoTextEnabled = true;

    /// Takes the keywords of the parser's current element. Grouping class and relation stay as they are where
    /// the element doesn't name them.
    void read(const MeroKilnParser& parser);
    /// Appends a line for each setting that isn't the default, in the order of the canonical text. The
    /// settings of the object list are read only: a rewritten text has lost them.
    void append(SV::String& text) const;
};
