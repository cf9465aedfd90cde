#pragma once

#include <optional>
#include <string>
#include <vector>

#include "component/host/sv_datetime.h"

#include "apps/mero/run_plots.h"
#include "apps/mero/text_table.h"
#include "component/agents/agent_types.h"
#include "component/display/agent_result_windows.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace CLI {
class App;
}

namespace mero {

enum class ResultFormat { Table, Csv, Json, Html };

/// Options that all runs share: what is run, how results are scaled and shown.
struct RunOptions {
    void describe(CLI::App& command);
    /// What the options can't tell one by one.
    [[nodiscard]] Result<void> check() const;

    [[nodiscard]] MeroDisplayKind displayKind() const { return total ? DisplayTotal : DisplayDetail; }
    [[nodiscard]] CharacterSet characters() const {
        return ascii ? CharacterSet::Ascii : CharacterSet::BoxDrawing;
    }
    /// Whether results are asked for as tables: JSON holds them only where an option of tables is given.
    [[nodiscard]] bool showsTables() const {
        return isReplicated || format != ResultFormat::Json || detail || total || sum || extremes ||
               !groupClass.empty();
    }
    /// Whether tables have to be made, for showing or for drawing.
    [[nodiscard]] bool needsTables() const { return showsTables() || plots.wantsFiles(); }
    /// Word of `--analysis`.
    [[nodiscard]] std::string analysisName() const;

    std::string repositoryFile;
    int analysis = AnalysisPath;
    std::vector<std::string> models;  ///< each a name, or several with commas
    std::string environment;
    std::string start;
    double daysPerYear = 365.0;
    double hoursPerDay = 24.0;
    std::optional<int> scaled;  ///< process starts in a period
    std::string period;
    std::string scope;
    ResultFormat format = ResultFormat::Table;
    bool total = false;
    bool sum = false;
    bool extremes = false;
    std::string groupClass;  ///< of the objects that results are grouped over; empty without grouping
    std::string groupRelation;
    bool isReplicated = false;  ///< set by the command that runs replications
    bool ascii = false;
    bool timing = false;
    std::string recordFile;
    RunPlots plots;

private:
    void describeRun(CLI::App& command);
    void describeScaling(CLI::App& command);
    void describeResults(CLI::App& command);

    bool detail = false;  ///< the default, for who wants to write it
    std::string group;    ///< class and relation as written
};

/// Models and start of a run, as the repository knows them.
struct RunPlan {
    std::vector<MeroId> models;
    MeroId environment = MeroNoId;
    std::optional<SV::DateTime> start;
};

/// Finds the models by name and loads those that aren't.
Result<RunPlan> planRun(const RunOptions& options, Repository& repository);

}  // namespace mero
