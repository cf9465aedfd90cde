#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interchange/result_document.h"

namespace mero {

enum class ResultUnit { Number, Seconds };

/// What a column holds: the value of one run, or what replications tell of it.
/// Over replications all but the first stand side by side for each measure, in this order.
enum class ResultStatistic { Value, Count, Mean, Deviation, Lower, Upper };

/// Columns of a measure over replications.
inline constexpr std::size_t StatisticsOfAMeasure = 5;

/// The shown results of one super agent as numbers: a row for each object or path, a column for each measure
/// or, over replications, for each statistic of a measure. Values are as shown: multiplied by the scale of
/// their column. A row stands behind the row of the path without its last step; sums and extremes stand last.
struct ResultTable {
    static constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

    struct Column {
        std::string measure = {};  ///< name of the sub-agent
        std::string type = {};     ///< its keyword
        std::size_t position = 0;  ///< of the sub-agent in the definition
        ResultUnit unit = ResultUnit::Number;
        double scale = 1.0;  ///< that its values are multiplied by; the mean of it over replications
        ResultStatistic statistic = ResultStatistic::Value;
    };
    enum class RowKind { Object, Sum, Minimum, Maximum };
    struct Row {
        RowKind kind = RowKind::Object;
        std::size_t depth = 0;   ///< steps of the path but one
        ResultName object = {};  ///< end of the path
        std::string objectModel = {};
        std::string label = {};          ///< as tables show it, without a number
        std::vector<double> cells = {};  ///< one for each column
        std::string objectClass = {};    ///< empty for models; tells objects of one name in a model apart
    };

    ResultName agent;
    std::string model;
    double scale = 1.0;      ///< of the super agent; the mean of it over replications
    bool isGrouped = false;  ///< over the class of the run's description
    std::vector<Column> columns;
    std::vector<Row> rows;
};

/// object, sum, minimum or maximum.
[[nodiscard]] std::string_view wordOf(ResultTable::RowKind kind);

/// Paths of the rows of a table, which have to come in its order.
class RowPaths {
public:
    /// Path to the row's object, the first step first; empty for a sum or an extreme.
    const std::vector<const ResultName*>& of(const ResultTable::Row& row);

private:
    std::vector<const ResultName*> path;
};

/// Number and outcome of one run.
struct RunRecord {
    std::uint64_t replication = 0;  ///< from 1; 0 for a run that isn't one of several
    std::uint64_t seed = 0;
    std::uint64_t started = 0;
    std::uint64_t finished = 0;
    std::uint64_t dropped = 0;
    std::uint64_t unfinished = 0;
    std::uint64_t events = 0;
    std::uint64_t fingerprint = 0;
};

/// What numbers need beside them to be understood later: which run they are of, and how they are shown.
struct RunDescription {
    std::string title;  ///< one line for people
    bool isSimulation = false;
    std::vector<std::string> models;
    std::string environment;  ///< empty for none
    std::string analysis;     ///< word of the command line
    std::string start;        ///< empty for none
    double daysPerYear = 365.0;
    double hoursPerDay = 24.0;
    std::uint64_t seed = 0;         ///< of a simulation
    std::uint64_t fingerprint = 0;  ///< over all runs
    std::vector<RunRecord> runs;    ///< one, or all replications in their order
    bool isReplicated = false;
    double confidence = 0.95;  ///< of the intervals over replications

    bool total = false;      ///< one row for every object, not for every path
    std::string groupClass;  ///< empty without grouping
    std::string groupRelation;
    std::optional<int> scaledStarts;  ///< process starts in a period, for scaled results
    std::string scalePeriod;
    std::string scaleScope;
};

/// "Order, Shipping with Staff": main models and working environment.
[[nodiscard]] std::string modelsText(const RunDescription& run);
/// "10 starts in 00:001:00:00:00, over 00:007:00:00:00"; empty for unscaled results.
[[nodiscard]] std::string scalingText(const RunDescription& run);
/// "Role over Has role"; empty without grouping.
[[nodiscard]] std::string groupingText(const RunDescription& run);

/// CSV text (RFC 4180, decimal points, full precision): a header line, then one line for each value with the
/// columns run, model, agent, measure, object_model, object, object_class, path, value, unit, scale, row,
/// analysis, seed, fingerprint, scaling, grouping. The names of a path are joined by " / "; `unit` is "s" for
/// times; `scale` is what the value was multiplied by; `row` is object, sum, minimum or maximum. For
/// replications the columns replications, mean, standard_deviation, lower and upper stand in place of value;
/// those of the scatter are empty for a value that only one replication has.
std::string writeResultCsv(const std::vector<ResultTable>& tables, const RunDescription& run);

/// The sorted result document as JSON text with two keys more: `run` describes the run, `tables` holds the
/// results as shown.
std::string writeResultDocument(ResultDocument document, const std::vector<ResultTable>& tables,
                                const RunDescription& run);

/// The results of replications as JSON text, `"format": "mero-replications"`, with `run`, one entry in
/// `replications` for each, and `tables` whose values are objects of statistics.
std::string writeReplicationDocument(const std::vector<ResultTable>& tables, const RunDescription& run);

/// Tables with the run that they are of.
struct ShownTables {
    RunDescription run;  ///< as far as tables show it
    std::vector<ResultTable> tables;
};

/// Whether a text is a document of replications, be it a good one or not.
[[nodiscard]] bool isReplicationDocument(std::string_view text);

/// Reads what `writeReplicationDocument` writes; identifiers are 0.
Result<ShownTables> readReplicationDocument(std::string_view text, std::string_view source);

/// Reads the tables in a result document; identifiers are 0. None if it was written without.
Result<std::optional<ShownTables>> readTablesOfDocument(std::string_view text, std::string_view source);

}  // namespace mero
