#pragma once

#include "component/subagents/ref_cost_agent.h"

/// The cost of the passes of each path as a mean over these passes, so that an object that runs seldom costs
/// as much as one that runs often. In the work load analyses the calendar selects what counts, and results
/// are there during the run.
class MeroUnWeightedRefCostAgent : public MeroRefCostAgent {
public:
    MeroUnWeightedRefCostAgent();

    int setDefaultValues() override;
    /// With what live instances hold so far, which is then taken from them.
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    int clearResults() override;
    int processEvent(MeroSimEvent* event) override;
    [[nodiscard]] MeroResultMode getCombinationMode() const override { return ResultModeItemMean; }

private:
    [[nodiscard]] MeroAnalysisFlags servedAnalyses() const override {
        return {.volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true};
    }
    [[nodiscard]] ResultSetTraits getResultSetTraits() const override {
        return {ValueTypeSingle, ResultModeItemMean};
    }
    int prepareMeasure() override;
    int prepareCalendar() override { return makeCalendar(); }
    [[nodiscard]] bool needsRunningState(std::int32_t code) const override;
    int measure(const MeroSimEvent& event) override;
    /// What doesn't count has been left out pass by pass.
    [[nodiscard]] std::optional<bool> countsAtEnd(const MeroAgentProcessInstance& process,
                                                  double time) override;
    void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) override;

    void passOutOfWorkingTime(const Pass& pass);
    void addPass(const Pass& pass);
    void emitValues(MeroAgentSubProcessInstance& instance, double abscissa);
    void emitSum(MeroAgentSubProcessInstance& instance, double abscissa);

    MeroIdFilter executedObjects;  ///< on a process model, in the current evaluation
    double currentTime = 0.0;      ///< of the last event, in work load analyses
};
