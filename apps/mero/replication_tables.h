#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "platform/interchange/result_table.h"
#include "platform/statistics/sample_statistics.h"

namespace mero {

/// The tables of replications, folded into one table of statistics for each super agent: a cell is told by
/// its measure and its path. A value that a replication lacks isn't taken for 0: each cell says how many
/// replications have it. Equal replications in equal order give equal bits.
class ReplicationTables {
public:
    explicit ReplicationTables(double intervalConfidence) : confidence(intervalConfidence) {}

    /// The shown tables of the next replication.
    void add(const std::vector<ResultTable>& tables);
    /// Rows and columns in the order in which the first replication has them; what only later ones have
    /// stands behind that.
    [[nodiscard]] std::vector<ResultTable> tables() const;

private:
    using Position = std::size_t;

    struct Node {
        ResultTable::Row head;  ///< without cells
        std::vector<std::size_t> children;
        std::map<Position, SampleStatistics> values;
    };
    struct Measure {
        ResultTable::Column head;
        SampleStatistics scale;
    };
    struct Agent {
        ResultTable head;  ///< without columns and rows
        SampleStatistics scale;
        std::map<Position, Measure> measures;
        std::vector<Node> nodes;
        std::vector<std::size_t> roots;
        std::map<std::pair<std::size_t, MeroId>, std::size_t> byParentAndObject;
        std::map<ResultTable::RowKind, std::size_t> summaries;
    };

    Agent& agentOf(const ResultTable& table);
    static std::size_t nodeOf(Agent& agent, const ResultTable::Row& row, std::vector<std::size_t>& ancestors);
    [[nodiscard]] ResultTable tableOf(const Agent& agent) const;
    [[nodiscard]] ResultTable::Row rowOf(const Agent& agent, const Node& node) const;
    void appendCells(const SampleStatistics& sample, std::vector<double>& cells) const;

    double confidence;
    std::vector<Agent> agents;
    mutable std::map<std::uint64_t, double> halfWidthFactors;  ///< by the size of the sample
};

}  // namespace mero
