#pragma once

#include <string>
#include <vector>

#include "apps/mero/text_table.h"
#include "platform/interchange/result_table.h"

namespace mero {

/// Text of a value in the column: "-" for none, a number as short as it reads back, a time as YY:DDD:HH:MM:SS
/// in the base of the run.
[[nodiscard]] std::string cellText(double value, const ResultTable::Column& column,
                                   const RunDescription& run);

/// `cellText`, with the seconds as they are where a time text rounds them.
[[nodiscard]] std::string exactText(double value, const ResultTable::Column& column,
                                    const RunDescription& run);

/// A time for people: "2 d 3 h 20 min", three parts at most; "-" for none.
[[nodiscard]] std::string durationText(double seconds, const RunDescription& run);

/// Numbers of the rows of a table, which have to come in its order: "1.", "1.1.", "2.".
class RowNumbers {
public:
    /// Of a row that isn't a sum or an extreme.
    std::string next(std::size_t depth);

private:
    std::vector<int> counters;
};

/// "mean", "95 % from" and so on; empty for the value of one run.
[[nodiscard]] std::string statisticTitle(ResultStatistic statistic, double confidence);

/// Numbers of the columns that are worth showing: a count of replications is if a value is missing in one.
[[nodiscard]] std::vector<std::size_t> shownColumns(const ResultTable& table, const RunDescription& run);

/// "365 days a year, 24 hours a day".
[[nodiscard]] std::string timeBaseText(const RunDescription& run);

/// "analysis: path   scale: 1" of these columns, "by column" if their scales differ; with the grouping if
/// there is one, and with the time base if it isn't the usual one.
[[nodiscard]] std::string contextLine(const ResultTable& table, const std::vector<std::size_t>& columns,
                                      const RunDescription& run);

/// The table for a terminal; over replications, whose columns are many, one table for each measure. Columns
/// of different scales say theirs.
[[nodiscard]] std::vector<TextTable> textTablesOf(const ResultTable& table, const RunDescription& run);

}  // namespace mero
