#pragma once

#include <variant>

#include "component/agents/result_combining_agent.h"

/// Follows the results of other sub-agents while a run goes on: at each end of a process it asks its inputs
/// for their current results. It has no result of its own. The window that draws them as growing curves comes
/// in a later version; until then a run goes as with the window open.
class MeroAnimationAgent : public MeroDynamicResultCombiningAgent {
public:
    MeroAnimationAgent();

    /// Nor a strain agent.
    [[nodiscard]] bool acceptsInputType(int type) const override;
    int readDefinition(MeroKilnParser* parser) override;
    SV::String& getDefinitionText(SV::String& text) override;
    int setDefaultValues() override;
    /// Always null.
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    int clearResults() override;
    int prepareRun(int analysis) override;
    int processEvent(MeroSimEvent* event) override;
    bool releaseCalendar() override;

private:
    [[nodiscard]] bool concernsModel(MeroId model) const { return modelIsEnvironment || model == modelId; }
    void startInstance(const MeroSimEvent& event);
    void startSubInstance(const MeroSimEvent& event);
    void endInstance(const MeroSimEvent& event);
    void followInputs();

    MeroKeyedTable<SV::String, std::monostate> liveInstances;
    bool animated = true;
    bool animatedVisible = true;
};
