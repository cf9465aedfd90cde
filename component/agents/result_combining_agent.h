#pragma once

#include <vector>

#include "component/agents/event_processing_agent.h"

/// A sub-agent that measures nothing itself: it names other sub-agents of the same super agent, its inputs,
/// and makes something of their results.
class MeroResultCombiningAgent : public virtual MeroAtomarAgent {
public:
    [[nodiscard]] bool canLimitByRelation() override;
    /// An internal error: combining agents aren't compared.
    [[nodiscard]] bool isEqualToDefinition(const MeroKilnParser& parser) override;

    /// No super agent, animation or formula can be an input.
    [[nodiscard]] virtual bool acceptsInputType(int type) const;
    [[nodiscard]] bool acceptsAgentTypeKeyword(const SV::String& keyword) const;
    /// False, and no change, for null.
    bool setOwner(MeroSuperAgent* owner);
    /// False if there are none.
    bool getInputNames(std::vector<SV::String>& names) const;

protected:
    /// Finds the inputs by their names; a box tells of each that is missing. `count` is the number found.
    /// True if all are there.
    bool resolveInputs(int& count);
    /// Reads the names in the "OBSERVED" elements behind the current one, on which the parser then stands
    /// again. `headStatus` is that of the section's own keywords: inputs are read also behind a head without
    /// a name, so that rewriting the section loses none of them. Gives the first failure of both; 4 for an
    /// element without a value.
    int readInputNames(MeroKilnParser* parser, int headStatus);
    void appendInputs(SV::String& text) const;

    std::vector<MeroAtomarAgent*> inputAgents;  ///< not owned; empty until they are resolved
    std::vector<SV::String> inputNames;
};

/// Combines after the run and takes no events.
class MeroStaticResultCombiningAgent : public MeroResultCombiningAgent {
public:
    int readDefinition(MeroKilnParser* parser) override;
    SV::String& getDefinitionText(SV::String& text) override;
    [[nodiscard]] bool isEventProcessing() const override { return false; }
};

/// Combines while the run goes on.
class MeroDynamicResultCombiningAgent : public MeroResultCombiningAgent, public MeroEventProcessingAgent {
public:
    [[nodiscard]] bool canLimitByRelation() override {
        return MeroResultCombiningAgent::canLimitByRelation();
    }
    [[nodiscard]] bool isEqualToDefinition(const MeroKilnParser& parser) override {
        return MeroResultCombiningAgent::isEqualToDefinition(parser);
    }

protected:
    MeroDynamicResultCombiningAgent();
    void registerObservedClasses() override { observeAllClasses(); }
};
