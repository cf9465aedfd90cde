#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <span>

#include "platform/interchange/document_node.h"
#include "platform/interchange/json_reader.h"
#include "platform/interchange/result_table.h"
#include "platform/interchange/result_table_keys.h"

namespace mero {

namespace {

std::uint64_t readCount(const DocumentNode& node) {
    constexpr std::uint64_t MostReplications = 1'000'000'000;
    if (!node.json().is_number_unsigned() || node.json().get<std::uint64_t>() > MostReplications) {
        node.refuse("a number of replications is expected here");
    }
    return node.json().get<std::uint64_t>();
}

constexpr std::array OneValue{ResultStatistic::Value};

/// The columns of a measure.
std::span<const ResultStatistic> statisticsOf(const RunDescription& run) {
    return run.isReplicated ? std::span<const ResultStatistic>(StatisticsInOrder)
                            : std::span<const ResultStatistic>(OneValue);
}

double readStatistic(const DocumentNode& value, ResultStatistic statistic) {
    if (value.json().is_null()) {
        return ResultTable::NoValue;
    }
    if (statistic == ResultStatistic::Value) {
        return value.numberOrNone();
    }
    const DocumentNode node = value.at(keyOf(statistic));
    return statistic == ResultStatistic::Count ? static_cast<double>(readCount(node)) : node.numberOrNone();
}

/// What tables say of their run; the rest of the description is for people.
RunDescription readRun(const DocumentNode& node) {
    RunDescription run;
    run.title = node.at("title").text();
    run.analysis = node.at("analysis").text();
    run.daysPerYear = node.at("daysPerYear").number();
    run.hoursPerDay = node.at("hoursPerDay").number();
    if (const auto group = node.find("group")) {
        run.groupClass = group->at("class").text();
        run.groupRelation = group->at("relation").text();
    }
    if (const auto scaled = node.find("scaled")) {
        run.scaledStarts = scaled->at("starts").integer();
        run.scalePeriod = scaled->at("period").text();
        run.scaleScope = scaled->at("scope").text();
    }
    return run;
}

ResultTable::RowKind readKind(const DocumentNode& node) {
    using Kind = ResultTable::RowKind;
    const std::string word = node.text();
    for (const Kind kind : {Kind::Object, Kind::Sum, Kind::Minimum, Kind::Maximum}) {
        if (word == wordOf(kind)) {
            return kind;
        }
    }
    node.refuse("object, sum, minimum or maximum is expected here");
}

void readColumns(const DocumentNode& node, std::span<const ResultStatistic> statistics, ResultTable& table) {
    for (const DocumentNode& entry : node.listAt("columns")) {
        ResultTable::Column column;
        column.measure = entry.at("measure").text();
        column.type = entry.at("type").text();
        column.unit = entry.at("unit").text() == UnitOfSeconds ? ResultUnit::Seconds : ResultUnit::Number;
        column.scale = entry.at("scale").numberOrNone();
        column.position = table.columns.size();
        for (const ResultStatistic statistic : statistics) {
            column.statistic = statistic;
            table.columns.push_back(column);
        }
    }
}

ResultTable::Row readRow(const DocumentNode& node, std::span<const ResultStatistic> statistics,
                         std::size_t columns) {
    ResultTable::Row row;
    row.kind = readKind(node.at("row"));
    row.label = node.at("label").text();
    if (row.kind == ResultTable::RowKind::Object) {
        row.object.text = node.at("object").text();
        row.objectModel = node.at("objectModel").text();
        if (const auto objectClass = node.find("objectClass")) {
            row.objectClass = objectClass->text();
        }
        row.depth = std::max<std::size_t>(node.listAt("path").size(), 1) - 1;
    }
    for (const DocumentNode& value : node.listAt("values")) {
        for (const ResultStatistic statistic : statistics) {
            row.cells.push_back(readStatistic(value, statistic));
        }
    }
    if (row.cells.size() != columns) {
        node.at("values").refuse("one value for each column is expected here");
    }
    return row;
}

ResultTable readTable(const DocumentNode& node, std::span<const ResultStatistic> statistics) {
    ResultTable table;
    table.agent.text = node.at("agent").text();
    table.model = node.at("model").text();
    table.scale = node.at("scale").numberOrNone();
    table.isGrouped = node.at("grouped").flag();
    readColumns(node, statistics, table);
    for (const DocumentNode& row : node.listAt("rows")) {
        table.rows.push_back(readRow(row, statistics, table.columns.size()));
    }
    return table;
}

std::vector<ResultTable> readTables(const DocumentNode& node, const RunDescription& run) {
    std::vector<ResultTable> tables;
    for (const DocumentNode& table : node.listAt("tables")) {
        tables.push_back(readTable(table, statisticsOf(run)));
    }
    return tables;
}

ShownTables readReplications(const DocumentNode& node) {
    if (node.at("format").text() != ReplicationFormatName) {
        node.at("format").refuse("these aren't the results of replications");
    }
    if (node.at("version").integer() != ReplicationFormatVersion) {
        node.at("version").refuse("this version isn't known");
    }
    ShownTables document;
    document.run = readRun(node.at("run"));
    document.run.isReplicated = true;
    document.run.confidence = node.at("confidence").number();
    for (const DocumentNode& replication : node.listAt("replications")) {
        document.run.runs.push_back({.replication = readCount(replication.at("replication"))});
    }
    document.tables = readTables(node, document.run);
    return document;
}

/// What `read` makes of the document; where it refuses, the error names the source.
template <class Read>
auto readDocument(std::string_view text, std::string_view source, Read read)
    -> Result<decltype(read(std::declval<DocumentNode>()))> {
    const Result<nlohmann::json> json = readJson(text, source);
    if (!json) {
        return json.error();
    }
    try {
        return read(DocumentNode(json.value(), ""));
    } catch (const DocumentRefused& refused) {
        return Error{std::string(source) + ": " + refused.what()};
    }
}

}  // namespace

bool isReplicationDocument(std::string_view text) {
    const auto json = nlohmann::json::parse(text, nullptr, false);
    return json.is_object() && json.contains("format") && json["format"] == ReplicationFormatName;
}

Result<ShownTables> readReplicationDocument(std::string_view text, std::string_view source) {
    return readDocument(text, source, readReplications);
}

Result<std::optional<ShownTables>> readTablesOfDocument(std::string_view text, std::string_view source) {
    return readDocument(text, source, [](const DocumentNode& node) {
        std::optional<ShownTables> shown;
        if (node.find("run") && node.find("tables")) {
            shown.emplace();
            shown->run = readRun(node.at("run"));
            shown->tables = readTables(node, shown->run);
        }
        return shown;
    });
}

}  // namespace mero
