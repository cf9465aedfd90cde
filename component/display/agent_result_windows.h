#pragma once

#include <vector>

#include "component/display/agent_browser_objects.h"
#include "component/results/agent_result_set.h"
#include "component/results/result_options.h"

class MeroSuperAgent;

/// Form of a result view.
enum MeroDisplayKind : int {
    DisplayNothing = 1,
    DisplayDetail = 2,   ///< a row for every path
    DisplayTotal = 3,    ///< a row for every object, its values added up
    DisplayHistory = 4,  ///< curves over time
};

/// Turns the result sets of one super agent into tables.
class MeroAgentResultWindows {
public:
    /// `superAgent` isn't owned and has to outlive this object.
    explicit MeroAgentResultWindows(MeroSuperAgent& superAgent);

    /// Extremes, sum and grouping off, all shown and enabled.
    void setDefaultOptions();
    void setOptions(const MeroResultOptions& newOptions) { options = newOptions; }
    [[nodiscard]] const MeroResultOptions& getOptions() const { return options; }
    [[nodiscard]] MeroSuperAgent& getOwner() const { return owner; }

    /// Fills an empty table: a column for each set with values, a row for each object or path, and, by the
    /// options, rows for the sum and the extremes over the same cells. `scale` multiplies the values of sets
    /// that scale. `isEmpty` stays true if there was nothing to show. False, and an internal error, for a
    /// kind without a table or a failing cell.
    bool fillBrowser(MeroAgentBrowserObjects& objects, MeroDisplayKind kind, bool& isEmpty,
                     const std::vector<MeroAgentResultSet*>& resultSets, double scale) const;

private:
    MeroSuperAgent& owner;
    MeroResultOptions options;
};
