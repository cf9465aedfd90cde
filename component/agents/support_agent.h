#pragma once

#include "component/agents/model_agent.h"

/// An agent that a super agent keeps for itself in work load analyses: it observes the run as a whole and
/// tells its start, its latest event and how many processes ended in working time. It has no results and no
/// definition text.
class MeroSupportAgent : public MeroModelAgent {
public:
    MeroSupportAgent();

    // 0 while the agent isn't prepared.

    [[nodiscard]] double getRunStartTime() const { return runPrepared ? runStartTime : 0.0; }
    [[nodiscard]] double getLastEventTime() const { return runPrepared ? lastEventTime : 0.0; }
    [[nodiscard]] std::int32_t getFinishedProcesses() const override {
        return runPrepared ? finishedProcesses : 0;
    }

    int readDefinition(MeroKilnParser* parser) override;
    int setDefaultValues() override;
    int clearResults() override;
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    int prepareRun(int analysis) override;
    int processEvent(MeroSimEvent* event) override;

private:
    void registerObservedClasses() override { observeAllClasses(); }
    void countProcess(double time);
    void forgetRun();

    double runStartTime = 0.0;
    double lastEventTime = 0.0;
};
