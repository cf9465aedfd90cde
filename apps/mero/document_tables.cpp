#include "apps/mero/document_tables.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>

#include "component/host/core_time.h"

#include "apps/mero/shown_values.h"

namespace mero {

namespace {

constexpr std::size_t PlotWidth = 24;
constexpr int KindTime = 2;

std::string valueText(double value, int resultKind) {
    if (!std::isfinite(value)) {
        return "-";
    }
    return resultKind == KindTime ? std::string(MeroCoreTime(value, 365.0, 24.0).asText().view())
                                  : fmt::format("{}", value);
}

/// Rows of paths, a path behind its beginning.
class PathRows {
public:
    explicit PathRows(std::size_t columnCount) : columns(columnCount) {}

    void set(const std::vector<ResultName>& path, std::size_t column, const std::string& text) {
        std::vector<std::string> names;
        for (const ResultName& name : path) {
            names.push_back(name.text);
            rows.try_emplace(names, columns, "-");
        }
        rows[names][column] = text;
    }

    [[nodiscard]] std::vector<TextTable::Row> take() const {
        std::vector<TextTable::Row> taken;
        for (const auto& [path, cells] : rows) {
            taken.push_back({path.empty() ? 0 : path.size() - 1, path.empty() ? "?" : path.back(), cells});
        }
        return taken;
    }

private:
    std::size_t columns;
    std::map<std::vector<std::string>, std::vector<std::string>> rows;
};

TextTable valueTable(const ResultOfAgent& agent) {
    TextTable table;
    table.labelTitle = "Object";
    std::vector<const ResultOfSubAgent*> measures;
    for (const ResultOfSubAgent& subAgent : agent.subAgents) {
        if (subAgent.resultSet && !subAgent.resultSet->results.empty()) {
            measures.push_back(&subAgent);
            const bool isTime = subAgent.resultSet->resultKind == KindTime;
            table.columns.push_back(subAgent.name + (isTime ? " [time]" : ""));
        }
    }
    PathRows rows(measures.size());
    for (std::size_t column = 0; column < measures.size(); ++column) {
        const ResultSetDocument& set = *measures[column]->resultSet;
        for (const ResultOfObject& object : set.results) {
            for (const ResultItem& item : object.items) {
                rows.set(item.path, column, valueText(item.value, set.resultKind));
            }
        }
    }
    table.rows = rows.take();
    return table;
}

/// A row for each object: how many readings, their extremes, the last one, and how they went on.
TextTable historyTable(const std::vector<std::pair<std::string, HistoryPoint>>& readings,
                       CharacterSet characters) {
    TextTable table;
    table.labelTitle = "Object";
    table.columns = {"Readings", "Minimum", "Maximum", "Last", "Last at [s]", "Course"};
    std::vector<std::string> order;
    std::map<std::string, std::vector<HistoryPoint>> byObject;
    for (const auto& [object, point] : readings) {
        auto& points = byObject[object];
        if (points.empty()) {
            order.push_back(object);
        }
        points.push_back(point);
    }
    for (const std::string& object : order) {
        const auto& points = byObject[object];
        const auto [low, high] =
            std::minmax_element(points.begin(), points.end(),
                                [](const auto& left, const auto& right) { return left.value < right.value; });
        table.rows.push_back(
            {0,
             object,
             {fmt::format("{}", points.size()), fmt::format("{}", low->value), fmt::format("{}", high->value),
              fmt::format("{}", points.back().value), fmt::format("{}", points.back().time),
              sparkLine(points, PlotWidth, characters)}});
    }
    return table;
}

std::string titleOf(const ResultOfAgent& agent) {
    return fmt::format("{} ({})", agent.name.text, agent.model);
}

std::string contextOf(const ResultDocument& document, const ResultOfAgent& agent, const std::string& source) {
    static constexpr const char* AnalysisNames[] = {"?", "path", "capacity", "static", "nonstatic"};
    const bool isKnown = document.analysis >= 1 && document.analysis <= 4;
    return fmt::format("file: {}   analysis: {}   values unscaled, scale of the run: {}", source,
                       AnalysisNames[isKnown ? document.analysis : 0], agent.scale);
}

void appendHistories(const ResultDocument& document, const ResultOfAgent& agent, const std::string& source,
                     CharacterSet characters, std::vector<TextTable>& tables) {
    for (const ResultOfSubAgent& subAgent : agent.subAgents) {
        if (!subAgent.resultSet || !subAgent.resultSet->history || subAgent.resultSet->history->empty()) {
            continue;
        }
        std::vector<std::pair<std::string, HistoryPoint>> readings;
        for (const ResultReading& reading : *subAgent.resultSet->history) {
            readings.emplace_back(reading.object, HistoryPoint{reading.time, reading.value});
        }
        TextTable history = historyTable(readings, characters);
        history.headers = {titleOf(agent) + ": history of " + subAgent.name,
                           contextOf(document, agent, source)};
        tables.push_back(std::move(history));
    }
}

}  // namespace

std::vector<TextTable> tablesOf(const ResultDocument& document, const std::string& source,
                                CharacterSet characters) {
    std::vector<TextTable> tables;
    for (const ResultOfAgent& agent : document.agents) {
        TextTable values = valueTable(agent);
        if (!values.rows.empty()) {
            values.headers = {titleOf(agent), contextOf(document, agent, source)};
            tables.push_back(std::move(values));
        }
        appendHistories(document, agent, source, characters, tables);
    }
    return tables;
}

std::vector<TextTable> historyTablesOf(const ResultDocument& document, const std::string& source,
                                       CharacterSet characters) {
    std::vector<TextTable> tables;
    for (const ResultOfAgent& agent : document.agents) {
        appendHistories(document, agent, source, characters, tables);
    }
    return tables;
}

std::vector<TextTable> tablesOf(const ShownTables& shown, const std::string& source) {
    std::vector<TextTable> tables;
    for (const ResultTable& table : shown.tables) {
        for (TextTable& text : textTablesOf(table, shown.run)) {
            text.headers.push_back("file: " + source);
            tables.push_back(std::move(text));
        }
    }
    return tables;
}

TextTable tableOf(const HistoryFile& history, const std::string& source, CharacterSet characters) {
    std::vector<std::pair<std::string, HistoryPoint>> readings;
    for (const HistoryReading& reading : history.readings) {
        const std::string name = reading.name.empty() ? fmt::format("#{}", reading.objectId) : reading.name;
        readings.emplace_back(name, HistoryPoint{reading.time, reading.value});
    }
    TextTable table = historyTable(readings, characters);
    table.headers = {"History in " + source};
    table.headers.insert(table.headers.end(), history.header.begin(), history.header.end());
    return table;
}

}  // namespace mero
