#pragma once

#include "component/subagents/worker_agent.h"

/// What the execution times of a process cost: the hours of each pass times a rate that an attribute of the
/// worker holds, as a mean over all finished process instances, so that an object that runs seldom weighs
/// little. Only in the volume analysis.
class MeroRefCostAgent : public MeroWorkerAgent {
public:
    MeroRefCostAgent();

    SV::String& getDefinitionText(SV::String& text) override;
    int setDefaultValues() override;
    [[nodiscard]] bool isEqualToDefinition(const MeroKilnParser& parser) override;
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    bool releaseCalendar() override;
    /// False without an attribute.
    bool getObjectAttribute(MeroId& id) const;

protected:
    [[nodiscard]] MeroAnalysisFlags servedAnalyses() const override { return {.volume = true}; }
    int readOwnKeys(const MeroKilnParser& parser) override;
    [[nodiscard]] ResultSetTraits getResultSetTraits() const override {
        return {ValueTypeSingle, ResultModeMean};
    }
    int prepareMeasure() override;
    int prepareCalendar() override { return StatusOk; }
    int measure(const MeroSimEvent& event) override;
    void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) override;
    void clearRunData() override { executionTimes.clear(); }

    void setCostDefaultValues(const MeroAnalysisFlags& defaultAnalyses, const SV::String& defaultName);
    /// Hours of the object times rate of the worker; nothing if either isn't known.
    [[nodiscard]] std::optional<double> costOf(const Pass& pass);
    /// A worker's amount in one instance: on an environment with all that hangs below it.
    [[nodiscard]] double amountOf(MeroAgentSubProcessInstance& instance, MeroId worker, double value) const {
        return modelIsEnvironment ? instance.sumFirstValues(worker).value_or(0.0) : value;
    }

private:
    [[nodiscard]] std::optional<double> rateOf(MeroId worker) const;
    void addPass(MeroAgentProcessInstance& process, const Pass& pass);

    MeroNamedOption attributeOption{"attribute"};
    MeroExecutionTimes executionTimes;
};
