#pragma once

#include "component/agents/measuring_agent.h"

/// How long a process stays in each observed object, from the moment it reaches the object to the moment the
/// object is finished, waiting and interruptions included, and how long the passes in the agent's model take
/// together. As a mean over the finished instances; in all four analyses, on process models.
class MeroCycleTimeAgent : public MeroMeasuringAgent {
public:
    MeroCycleTimeAgent();

    int setDefaultValues() override;
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    bool releaseCalendar() override;

private:
    /// An event of a pass, or the end of a sub-process.
    struct Pass {
        MeroId object = MeroNoId;
        MeroId model = MeroNoId;
        SV::String mainKey;
        SV::String instanceKey;
        SV::String passKey;
        double time = 0.0;
    };

    void registerObservedClasses() override;
    [[nodiscard]] ResultSetTraits getResultSetTraits() const override {
        return {ValueTypeAbsolute, ResultModeItemMean};
    }
    int startSubProcess(const MeroSimEvent& event) override;
    void enterCall(MeroAgentProcessInstance& process, const Call& call) override;
    [[nodiscard]] bool measuresAt(std::int32_t code) const override {
        return code == EventObjectReached || code == EventWorkEnd;
    }
    int measure(const MeroSimEvent& event) override;
    std::size_t expectPass(const MeroSimEvent& event) const override {
        return expectKeyOfPass(event, openPasses);
    }
    int endProcess(const MeroSimEvent& event) override;
    int endSubProcess(const MeroSimEvent& event) override;
    void dropInstance(const SV::String& key) override;
    /// A process whose start wasn't measured is an internal error and goes to the calendar as it stands.
    [[nodiscard]] std::optional<bool> countsAtEnd(const MeroAgentProcessInstance& process,
                                                  double time) override;
    void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) override;
    void clearRunData() override;

    static bool readPass(const MeroSimEvent& event, Pass& pass);
    void reachObject(const Pass& pass);
    void finishObject(const Pass& pass);
    /// A key that is open already keeps its start.
    void openPass(const SV::String& passKey, double time);
    /// Adds the stay of an open pass to `object`. False if it can't be added.
    [[nodiscard]] bool closePass(MeroAgentProcessInstance& process, const Pass& pass, MeroId object);
    void enterBlock(MeroAgentProcessInstance& process, MeroId model, double time);
    static void leaveBlock(MeroAgentProcessInstance& process, double time);
    /// Adds the span of the block to the agent's model. False if it can't be added.
    [[nodiscard]] bool closeBlock(MeroAgentProcessInstance& process, const SV::String& instanceKey);
    void closeIdleBlock(const SV::String& mainKey);

    /// Starts by key of the pass, or of the called instance.
    MeroPlaceTable<MeroPlacedValue<double>> openPasses;
};
