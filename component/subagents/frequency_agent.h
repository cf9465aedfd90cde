#pragma once

#include <variant>

#include "component/agents/measuring_agent.h"

/// Counts how often objects are executed and sub-processes are called: in absolute numbers, or relative to
/// the number of finished process instances. Always on a process model, in all four analyses.
class MeroFrequencyAgent : public MeroMeasuringAgent {
public:
    MeroFrequencyAgent();

    int readDefinition(MeroKilnParser* parser) override;
    SV::String& getDefinitionText(SV::String& text) override;
    int setDefaultValues() override;
    [[nodiscard]] bool isEqualToDefinition(const MeroKilnParser& parser) override;
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    int prepareRun(int analysis) override;

private:
    struct FlagKeyword;

    void registerObservedClasses() override;
    [[nodiscard]] ResultSetTraits getResultSetTraits() const override;
    int objectsEvaluated() override;
    int objectsExtended() override;
    void enterCall(MeroAgentProcessInstance& process, const Call& call) override;
    void noteCall(const Call& call) override { markExecuted(call.calledModel); }
    [[nodiscard]] bool measuresAt(std::int32_t code) const override { return code == EventWorkStart; }
    int measure(const MeroSimEvent& event) override;
    void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) override;

    /// Counts a run of the agent's own model once, however many objects it passes.
    void countOwnModel(MeroAgentSubProcessInstance& collector, MeroId model) const;
    int expectActivities();
    void markExecuted(MeroId id);
    bool addRowOfNotExecuted(MeroId id);

    bool absoluteMode = false;
    bool showMode = true;
    bool enableMode = true;
    bool includeNotExecuted = false;
    bool showIgnore = true;
    bool enableIgnore = true;
    /// Observed objects that haven't run yet.
    MeroKeyedTable<MeroId, std::monostate> notExecuted;
};
