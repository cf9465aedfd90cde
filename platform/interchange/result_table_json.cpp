#include <cmath>
#include <fmt/format.h>

#include "platform/interchange/result_json.h"
#include "platform/interchange/result_table.h"
#include "platform/interchange/result_table_keys.h"

namespace mero {

namespace {

using Json = nlohmann::ordered_json;

std::string hexadecimal(std::uint64_t value) {
    return fmt::format("{:016x}", value);
}

Json jsonOf(const RunRecord& record) {
    return {{"replication", record.replication}, {"seed", record.seed},
            {"started", record.started},         {"finished", record.finished},
            {"dropped", record.dropped},         {"unfinished", record.unfinished},
            {"events", record.events},           {"fingerprint", hexadecimal(record.fingerprint)}};
}

Json jsonOf(const RunDescription& run) {
    Json node{{"title", run.title}, {"kind", run.isSimulation ? "simulation" : "replay"}};
    node["models"] = run.models;
    node["environment"] = run.environment;
    node["analysis"] = run.analysis;
    node["start"] = run.start;
    node["daysPerYear"] = run.daysPerYear;
    node["hoursPerDay"] = run.hoursPerDay;
    if (run.isSimulation) {
        node["seed"] = run.seed;
    }
    node["fingerprint"] = hexadecimal(run.fingerprint);
    node["rows"] = run.total ? "total" : "detail";
    if (!run.groupClass.empty()) {
        node["group"] = {{"class", run.groupClass}, {"relation", run.groupRelation}};
    }
    if (run.scaledStarts) {
        node["scaled"] = {
            {"starts", *run.scaledStarts}, {"period", run.scalePeriod}, {"scope", run.scaleScope}};
    }
    return node;
}

Json valueOf(const ResultTable& table, const ResultTable::Row& row, std::size_t first, std::size_t width) {
    if (!std::isfinite(row.cells[first])) {
        return nullptr;
    }
    if (width == 1) {
        return row.cells[first];
    }
    Json node = Json::object();
    for (std::size_t number = first; number < first + width; ++number) {
        const ResultStatistic statistic = table.columns[number].statistic;
        if (statistic == ResultStatistic::Count) {
            node[keyOf(statistic)] = static_cast<std::uint64_t>(row.cells[number]);
        } else {
            node[keyOf(statistic)] = row.cells[number];
        }
    }
    return node;
}

Json rowsOf(const ResultTable& table, std::size_t width) {
    Json rows = Json::array();
    RowPaths paths;
    for (const ResultTable::Row& row : table.rows) {
        Json node{{"row", wordOf(row.kind)}, {"label", row.label}};
        Json path = Json::array();
        for (const ResultName* const name : paths.of(row)) {
            path.push_back(name->text);
        }
        if (row.kind == ResultTable::RowKind::Object) {
            node["object"] = row.object.text;
            node["objectModel"] = row.objectModel;
            node["objectClass"] = row.objectClass;
            node["path"] = std::move(path);
        }
        Json values = Json::array();
        for (std::size_t first = 0; first + width <= table.columns.size(); first += width) {
            values.push_back(valueOf(table, row, first, width));
        }
        node["values"] = std::move(values);
        rows.push_back(std::move(node));
    }
    return rows;
}

Json jsonOf(const std::vector<ResultTable>& tables, const RunDescription& run) {
    const std::size_t width = run.isReplicated ? StatisticsOfAMeasure : 1;
    Json list = Json::array();
    for (const ResultTable& table : tables) {
        Json columns = Json::array();
        for (std::size_t first = 0; first + width <= table.columns.size(); first += width) {
            const ResultTable::Column& column = table.columns[first];
            columns.push_back({{"measure", column.measure},
                               {"type", column.type},
                               {"unit", column.unit == ResultUnit::Seconds ? UnitOfSeconds : ""},
                               {"scale", column.scale}});
        }
        list.push_back({{"agent", table.agent.text},
                        {"model", table.model},
                        {"scale", table.scale},
                        {"grouped", table.isGrouped},
                        {"columns", std::move(columns)},
                        {"rows", rowsOf(table, width)}});
    }
    return list;
}

}  // namespace

std::string writeResultDocument(ResultDocument document, const std::vector<ResultTable>& tables,
                                const RunDescription& run) {
    Json node = jsonOf(std::move(document));
    node["run"] = jsonOf(run);
    node["tables"] = jsonOf(tables, run);
    return textOf(node);
}

std::string writeReplicationDocument(const std::vector<ResultTable>& tables, const RunDescription& run) {
    Json replications = Json::array();
    for (const RunRecord& record : run.runs) {
        replications.push_back(jsonOf(record));
    }
    return textOf({{"format", ReplicationFormatName},
                   {"version", ReplicationFormatVersion},
                   {"run", jsonOf(run)},
                   {"confidence", run.confidence},
                   {"replications", std::move(replications)},
                   {"tables", jsonOf(tables, run)}});
}

}  // namespace mero
