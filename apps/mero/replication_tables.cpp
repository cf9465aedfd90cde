#include "apps/mero/replication_tables.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/interchange/result_table_keys.h"

namespace mero {

namespace {

constexpr std::size_t NoParent = std::numeric_limits<std::size_t>::max();

}  // namespace

void ReplicationTables::add(const std::vector<ResultTable>& tables) {
    for (const ResultTable& table : tables) {
        Agent& agent = agentOf(table);
        agent.scale.add(table.scale);
        for (const ResultTable::Column& column : table.columns) {
            Measure& measure = agent.measures.try_emplace(column.position, Measure{column, {}}).first->second;
            measure.scale.add(column.scale);
        }
        std::vector<std::size_t> ancestors;
        for (const ResultTable::Row& row : table.rows) {
            Node& node = agent.nodes[nodeOf(agent, row, ancestors)];
            for (std::size_t number = 0; number < table.columns.size(); ++number) {
                if (std::isfinite(row.cells[number])) {
                    node.values[table.columns[number].position].add(row.cells[number]);
                }
            }
        }
    }
}

ReplicationTables::Agent& ReplicationTables::agentOf(const ResultTable& table) {
    auto found = std::find_if(agents.begin(), agents.end(),
                              [&](const Agent& agent) { return agent.head.agent.id == table.agent.id; });
    if (found == agents.end()) {
        found = agents.insert(agents.end(), Agent{});
        found->head.agent = table.agent;
        found->head.model = table.model;
    }
    found->head.isGrouped = found->head.isGrouped || table.isGrouped;
    return *found;
}

std::size_t ReplicationTables::nodeOf(Agent& agent, const ResultTable::Row& row,
                                      std::vector<std::size_t>& ancestors) {
    const std::size_t added = agent.nodes.size();
    const auto make = [&] {
        agent.nodes.push_back({row, {}, {}});
        agent.nodes.back().head.cells.clear();
    };
    if (row.kind != ResultTable::RowKind::Object) {
        const auto [place, isNew] = agent.summaries.try_emplace(row.kind, added);
        if (isNew) {
            make();
        }
        return place->second;
    }
    ancestors.resize(std::min(row.depth, ancestors.size()));
    const std::size_t parent = ancestors.empty() ? NoParent : ancestors.back();
    const auto [place, isNew] = agent.byParentAndObject.try_emplace({parent, row.object.id}, added);
    if (isNew) {
        make();
        (parent == NoParent ? agent.roots : agent.nodes[parent].children).push_back(added);
    }
    ancestors.push_back(place->second);
    return place->second;
}

std::vector<ResultTable> ReplicationTables::tables() const {
    std::vector<ResultTable> all;
    for (const Agent& agent : agents) {
        all.push_back(tableOf(agent));
    }
    return all;
}

ResultTable ReplicationTables::tableOf(const Agent& agent) const {
    ResultTable table = agent.head;
    table.scale = agent.scale.mean();
    for (const auto& [position, measure] : agent.measures) {
        ResultTable::Column column = measure.head;
        column.scale = measure.scale.mean();
        for (const ResultStatistic statistic : StatisticsInOrder) {
            column.statistic = statistic;
            table.columns.push_back(column);
        }
    }
    std::vector<std::size_t> open(agent.roots.rbegin(), agent.roots.rend());
    while (!open.empty()) {
        const Node& node = agent.nodes[open.back()];
        open.pop_back();
        table.rows.push_back(rowOf(agent, node));
        open.insert(open.end(), node.children.rbegin(), node.children.rend());
    }
    for (const auto& [kind, number] : agent.summaries) {
        table.rows.push_back(rowOf(agent, agent.nodes[number]));
    }
    return table;
}

ResultTable::Row ReplicationTables::rowOf(const Agent& agent, const Node& node) const {
    static const SampleStatistics none;
    ResultTable::Row row = node.head;
    for (const auto& [position, measure] : agent.measures) {
        const auto found = node.values.find(position);
        appendCells(found != node.values.end() ? found->second : none, row.cells);
    }
    return row;
}

void ReplicationTables::appendCells(const SampleStatistics& sample, std::vector<double>& cells) const {
    constexpr double NoValue = ResultTable::NoValue;
    if (sample.count() == 0) {
        cells.insert(cells.end(), StatisticsOfAMeasure, NoValue);
        return;
    }
    const auto size = static_cast<double>(sample.count());
    if (sample.count() == 1) {
        cells.insert(cells.end(), {size, sample.mean(), NoValue, NoValue, NoValue});
        return;
    }
    const auto [factor, isNew] = halfWidthFactors.try_emplace(sample.count(), 0.0);
    if (isNew) {
        factor->second = SampleStatistics::halfWidthFactor(sample.count(), confidence);
    }
    const double deviation = sample.standardDeviation();
    const double halfWidth = deviation * factor->second;
    cells.insert(cells.end(),
                 {size, sample.mean(), deviation, sample.mean() - halfWidth, sample.mean() + halfWidth});
}

}  // namespace mero
