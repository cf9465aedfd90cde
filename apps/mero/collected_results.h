#pragma once

#include <vector>

#include "apps/mero/run_options.h"
#include "apps/mero/text_table.h"
#include "platform/interchange/result_document.h"

class MeroAgentResultSet;
class MeroSuperAgent;

namespace mero {

/// Fetches the results of super agents in the one order that is fixed: each super agent's scale first, then
/// each sub-agent's set, which is written out before the next is asked for.
class ResultCollector {
public:
    /// Both have to outlive this.
    ResultCollector(const Repository& namesRepository, const RunOptions& runOptions)
        : repository(namesRepository), options(runOptions) {}

    /// Of a run that hasn't been closed. Tables are made of the format alone that shows them.
    void collect(MeroSuperAgent& agent);

    [[nodiscard]] std::vector<ResultOfAgent>& agents() { return documents; }
    /// One for each super agent that has something to show.
    [[nodiscard]] std::vector<TextTable>& tables() { return shownTables; }

private:
    [[nodiscard]] ResultName nameOf(MeroId id) const;
    [[nodiscard]] std::string modelOf(MeroId id) const;
    [[nodiscard]] ResultSetDocument write(MeroAgentResultSet& set) const;
    void addTable(MeroSuperAgent& agent, const std::vector<MeroAgentResultSet*>& sets,
                  const ResultOfAgent& document);

    const Repository& repository;
    const RunOptions& options;
    std::vector<ResultOfAgent> documents;
    std::vector<TextTable> shownTables;
};

}  // namespace mero
