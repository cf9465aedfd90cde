#pragma once

#include "component/subagents/worker_agent.h"

/// How much working time a number of process starts demands of each worker: the mean execution times of the
/// passes of one process instance, weighted by the worker's availability, times the starts in a period, over
/// its length. Only in the volume analysis; it has no unscaled result and keeps no history.
class MeroStrainAgent : public MeroWorkerAgent {
public:
    MeroStrainAgent();

    SV::String& getDefinitionText(SV::String& text) override;
    int setDefaultValues() override;
    [[nodiscard]] bool hasObjectResults(bool ignoreShowFlag) override;
    /// Null for an unscaled request.
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    int clearResults() override;

private:
    [[nodiscard]] MeroAnalysisFlags servedAnalyses() const override { return {.volume = true}; }
    int readOwnKeys(const MeroKilnParser& parser) override;
    [[nodiscard]] ResultSetTraits getResultSetTraits() const override {
        return {ValueTypeScaled, ResultModeMean};
    }
    int makeResultSet() override;
    [[nodiscard]] MeroAgentResultSet& getMeasured() override { return *rawResult; }
    int prepareMeasure() override;
    int prepareCalendar() override { return StatusOk; }
    int measure(const MeroSimEvent& event) override;
    void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) override;
    void clearRunData() override;

    void keepNoHistory();
    void addPass(MeroAgentProcessInstance& process, const Pass& pass);
    [[nodiscard]] std::optional<double> executionTimeOf(MeroId object);
    [[nodiscard]] std::optional<std::int32_t> availabilityOf(MeroId worker);
    bool scaleResults(const MeroResultRequest& request);
    bool addScaledItem(const MeroDoubleResult& result, const MeroDoubleResultItem& item, double scaledValue);
    [[nodiscard]] bool isMeasuredWorker(MeroId id) const;

    std::unique_ptr<MeroAgentResultSet> rawResult;  ///< means per process instance
    MeroId availabilityAttribute = MeroNoId;
    MeroExecutionTimes executionTimes;
    MeroKeyedTable<MeroId, std::int32_t> availabilities;  ///< percent, by worker
    std::int32_t lastFrequency = 0;
    SV::String lastPeriod;
    bool scaledResultValid = false;  ///< `resultSet` is that of the last frequency and period
};
