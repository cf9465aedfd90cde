#pragma once

#include <vector>

#include "apps/mero/run_options.h"
#include "platform/interchange/result_table.h"

class MeroAgentBrowserObjects;
class MeroAgentResultSet;
class MeroAtomarAgent;
class MeroSuperAgent;
struct MeroResultRequest;

namespace mero {

/// Fetches the results of super agents in the one order that is fixed: each super agent's scale first, then
/// each sub-agent's set, which is written out before the next is asked for.
class ResultCollector {
public:
    /// Both have to outlive this.
    ResultCollector(const Repository& namesRepository, const RunOptions& runOptions)
        : repository(namesRepository), options(runOptions) {}

    /// Of a run that hasn't been closed.
    void collect(MeroSuperAgent& agent);

    [[nodiscard]] std::vector<ResultOfAgent>& agents() { return documents; }
    /// One for each super agent that has something to show.
    [[nodiscard]] std::vector<ResultTable>& tables() { return shownTables; }

private:
    struct ShownSet {
        MeroAgentResultSet* set;
        std::string measure;
        std::string type;
        std::size_t position;
    };

    enum class Grouping { NotWanted, Missing, Formed };

    [[nodiscard]] ResultName nameOf(MeroId id) const;
    [[nodiscard]] std::string modelOf(MeroId id) const;
    [[nodiscard]] std::string classOf(MeroId id) const;
    [[nodiscard]] ResultSetDocument write(MeroAgentResultSet& set) const;
    /// Sets of all sub-agents, grouped where the super agent can be; `grouping` tells what came of that.
    [[nodiscard]] std::vector<ShownSet> fetchSets(MeroSuperAgent& agent, ResultOfAgent& document,
                                                  Grouping& grouping) const;
    [[nodiscard]] MeroAgentResultSet* fetch(MeroAtomarAgent& subAgent, const MeroResultRequest& request,
                                            Grouping& grouping) const;
    void addTable(MeroSuperAgent& agent, const std::vector<ShownSet>& sets, const ResultOfAgent& document,
                  bool isGrouped);
    [[nodiscard]] ResultTable::Row rowOf(const MeroAgentBrowserObjects& objects, int number,
                                         ResultTable::RowKind kind) const;

    const Repository& repository;
    const RunOptions& options;
    std::vector<ResultOfAgent> documents;
    std::vector<ResultTable> shownTables;
};

}  // namespace mero
