#include "apps/mero/shown_values.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <optional>

#include "component/host/core_time.h"

namespace mero {

namespace {

using Column = ResultTable::Column;

/// The scale of all these columns; none if they differ.
std::optional<double> commonScale(const ResultTable& table, const std::vector<std::size_t>& columns) {
    const double scale = columns.empty() ? table.scale : table.columns[columns.front()].scale;
    const bool isCommon = std::ranges::all_of(
        columns, [&](std::size_t number) { return table.columns[number].scale == scale; });
    return isCommon ? std::optional(scale) : std::nullopt;
}

/// Rows and the columns with these numbers.
TextTable textTableOf(const ResultTable& table, const RunDescription& run,
                      const std::vector<std::size_t>& shown) {
    TextTable text;
    text.labelTitle = "Object";
    const bool isOneScale = commonScale(table, shown).has_value();
    for (const std::size_t number : shown) {
        const Column& column = table.columns[number];
        text.columns.push_back(run.isReplicated ? statisticTitle(column.statistic, run.confidence)
                               : isOneScale     ? column.measure
                                                : fmt::format("{} [scale {}]", column.measure, column.scale));
    }
    RowNumbers numbers;
    for (const ResultTable::Row& row : table.rows) {
        const bool isObject = row.kind == ResultTable::RowKind::Object;
        TextTable::Row line{row.depth, (isObject ? numbers.next(row.depth) + ' ' : "") + row.label, {}};
        for (const std::size_t number : shown) {
            line.cells.push_back(cellText(row.cells[number], table.columns[number], run));
        }
        (isObject ? text.rows : text.summary).push_back(std::move(line));
    }
    return text;
}

/// Whether a count of replications tells something: if a value is missing in one of them.
bool isCountShown(const ResultTable& table, std::size_t column, const RunDescription& run) {
    const auto all = static_cast<double>(run.runs.size());
    return std::any_of(table.rows.begin(), table.rows.end(), [&](const ResultTable::Row& row) {
        return std::isfinite(row.cells[column]) && row.cells[column] != all;
    });
}

}  // namespace

std::string cellText(double value, const ResultTable::Column& column, const RunDescription& run) {
    if (!std::isfinite(value)) {
        return "-";
    }
    if (column.unit == ResultUnit::Seconds && column.statistic != ResultStatistic::Count) {
        return std::string(MeroCoreTime(value, run.daysPerYear, run.hoursPerDay).asText().view());
    }
    return std::string(SV::String(value).view());
}

std::string exactText(double value, const ResultTable::Column& column, const RunDescription& run) {
    const std::string text = cellText(value, column, run);
    const bool isTime = column.unit == ResultUnit::Seconds && column.statistic != ResultStatistic::Count;
    const bool isRounded = isTime && std::isfinite(value) && value != std::round(value);
    return isRounded ? fmt::format("{} ({} s)", text, value) : text;
}

std::string durationText(double seconds, const RunDescription& run) {
    constexpr double Minute = 60.0;
    constexpr double Hour = 3600.0;
    constexpr int PartsShown = 3;
    if (!std::isfinite(seconds)) {
        return "-";
    }
    double left = std::abs(seconds);
    if (left < Minute) {
        return fmt::format("{:.4g} s", seconds);
    }
    left = std::round(left);
    struct Part {
        double length;
        const char* unit;
    };
    const double day = run.hoursPerDay * Hour;
    std::string text = seconds < 0.0 ? "-" : "";
    int shown = 0;
    for (const Part& part : {Part{run.daysPerYear * day, "y"}, Part{day, "d"}, Part{Hour, "h"},
                             Part{Minute, "min"}, Part{1.0, "s"}}) {
        const double count = std::floor(left / part.length);
        left -= count * part.length;
        if (count > 0.0 && shown < PartsShown) {
            text += fmt::format("{}{:.0f} {}", shown == 0 ? "" : " ", count, part.unit);
            ++shown;
        }
    }
    return text;
}

std::string RowNumbers::next(std::size_t depth) {
    counters.resize(depth + 1, 0);
    ++counters.back();
    std::string text;
    for (const int counter : counters) {
        text += std::to_string(counter) + '.';
    }
    return text;
}

std::string statisticTitle(ResultStatistic statistic, double confidence) {
    switch (statistic) {
        case ResultStatistic::Count:
            return "runs";
        case ResultStatistic::Mean:
            return "mean";
        case ResultStatistic::Deviation:
            return "std. dev.";
        case ResultStatistic::Lower:
            return fmt::format("{} % from", confidence * 100.0);
        case ResultStatistic::Upper:
            return fmt::format("{} % to", confidence * 100.0);
        case ResultStatistic::Value:
            break;
    }
    return {};
}

std::string timeBaseText(const RunDescription& run) {
    return fmt::format("{} days a year, {} hours a day", run.daysPerYear, run.hoursPerDay);
}

std::string contextLine(const ResultTable& table, const std::vector<std::size_t>& columns,
                        const RunDescription& run) {
    const std::optional<double> scale = commonScale(table, columns);
    std::string line = fmt::format("analysis: {}   scale: {}", run.analysis,
                                   scale ? fmt::format("{}", *scale) : "by column");
    if (run.scaledStarts) {
        line += " (" + scalingText(run) + ")";
    }
    if (table.isGrouped) {
        line += "   grouped: " + groupingText(run);
    }
    if (const RunDescription usual;
        run.daysPerYear != usual.daysPerYear || run.hoursPerDay != usual.hoursPerDay) {
        line += "   time base: " + timeBaseText(run);
    }
    return line;
}

std::vector<std::size_t> shownColumns(const ResultTable& table, const RunDescription& run) {
    std::vector<std::size_t> shown;
    for (std::size_t number = 0; number < table.columns.size(); ++number) {
        if (table.columns[number].statistic != ResultStatistic::Count || isCountShown(table, number, run)) {
            shown.push_back(number);
        }
    }
    return shown;
}

std::vector<TextTable> textTablesOf(const ResultTable& table, const RunDescription& run) {
    const std::string title = table.agent.text + " (" + table.model + ")";
    const std::vector<std::size_t> shown = shownColumns(table, run);
    std::vector<TextTable> texts;
    for (auto first = shown.begin(); first != shown.end();) {
        const Column& measure = table.columns[*first];
        const auto end = run.isReplicated
                             ? std::find_if(first, shown.end(),
                                            [&](std::size_t number) {
                                                return table.columns[number].position != measure.position;
                                            })
                             : shown.end();
        const std::vector<std::size_t> columns(first, end);
        texts.push_back(textTableOf(table, run, columns));
        texts.back().headers = {run.isReplicated ? title + ": " + measure.measure : title,
                                "run: " + run.title, contextLine(table, columns, run)};
        first = end;
    }
    return texts;
}

}  // namespace mero
