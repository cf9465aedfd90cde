#include <algorithm>
#include <nlohmann/json.hpp>

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

double readStatistic(const DocumentNode& value, ResultStatistic statistic) {
    if (value.json().is_null()) {
        return ResultTable::NoValue;
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
    run.isReplicated = true;
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

void readColumns(const DocumentNode& node, ResultTable& table) {
    for (const DocumentNode& entry : node.listAt("columns")) {
        ResultTable::Column column;
        column.measure = entry.at("measure").text();
        column.type = entry.at("type").text();
        column.unit = entry.at("unit").text() == UnitOfSeconds ? ResultUnit::Seconds : ResultUnit::Number;
        column.scale = entry.at("scale").numberOrNone();
        column.position = table.columns.size();
        for (const ResultStatistic statistic : StatisticsInOrder) {
            column.statistic = statistic;
            table.columns.push_back(column);
        }
    }
}

ResultTable::Row readRow(const DocumentNode& node, std::size_t columns) {
    ResultTable::Row row;
    row.kind = readKind(node.at("row"));
    row.label = node.at("label").text();
    if (row.kind == ResultTable::RowKind::Object) {
        row.object.text = node.at("object").text();
        row.objectModel = node.at("objectModel").text();
        row.depth = std::max<std::size_t>(node.listAt("path").size(), 1) - 1;
    }
    for (const DocumentNode& value : node.listAt("values")) {
        for (const ResultStatistic statistic : StatisticsInOrder) {
            row.cells.push_back(readStatistic(value, statistic));
        }
    }
    if (row.cells.size() != columns) {
        node.at("values").refuse("one value for each column is expected here");
    }
    return row;
}

ResultTable readTable(const DocumentNode& node) {
    ResultTable table;
    table.agent.text = node.at("agent").text();
    table.model = node.at("model").text();
    table.scale = node.at("scale").numberOrNone();
    table.isGrouped = node.at("grouped").flag();
    readColumns(node, table);
    for (const DocumentNode& row : node.listAt("rows")) {
        table.rows.push_back(readRow(row, table.columns.size()));
    }
    return table;
}

ReplicationDocument readReplications(const DocumentNode& node) {
    if (node.at("format").text() != ReplicationFormatName) {
        node.at("format").refuse("these aren't the results of replications");
    }
    if (node.at("version").integer() != ReplicationFormatVersion) {
        node.at("version").refuse("this version isn't known");
    }
    ReplicationDocument document;
    document.run = readRun(node.at("run"));
    document.run.confidence = node.at("confidence").number();
    for (const DocumentNode& replication : node.listAt("replications")) {
        document.run.runs.push_back({.replication = readCount(replication.at("replication"))});
    }
    for (const DocumentNode& table : node.listAt("tables")) {
        document.tables.push_back(readTable(table));
    }
    return document;
}

}  // namespace

bool isReplicationDocument(std::string_view text) {
    const auto json = nlohmann::json::parse(text, nullptr, false);
    return json.is_object() && json.contains("format") && json["format"] == ReplicationFormatName;
}

Result<ReplicationDocument> readReplicationDocument(std::string_view text, std::string_view source) {
    const Result<nlohmann::json> json = readJson(text, source);
    if (!json) {
        return json.error();
    }
    try {
        return readReplications(DocumentNode(json.value(), ""));
    } catch (const DocumentRefused& refused) {
        return Error{std::string(source) + ": " + refused.what()};
    }
}

}  // namespace mero
