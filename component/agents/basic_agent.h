#pragma once

#include "component/host/kiln_parser.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

#include "component/agents/agent_types.h"

/// The four analyses that an agent may take part in.
struct MeroAnalysisFlags {
    bool path = false;
    bool volume = false;
    bool staticWorkLoad = false;
    bool nonStaticWorkLoad = false;

    [[nodiscard]] bool any() const { return path || volume || staticWorkLoad || nonStaticWorkLoad; }
    /// Leaves only what is set here and in `other`.
    void restrictTo(const MeroAnalysisFlags& other);
    friend bool operator==(const MeroAnalysisFlags&, const MeroAnalysisFlags&) = default;
};

/// The analysis keywords of the current element; "capacity-analysis" counts as volume.
[[nodiscard]] MeroAnalysisFlags readAnalysisKeywords(const MeroKilnParser& parser);
/// A line for each analysis that is on, each beginning with `lineStart`.
void appendAnalysisKeywords(SV::String& text, const MeroAnalysisFlags& flags, const SV::String& lineStart);

/// Root of all agents: super agents and the sub-agents that they own during a run.
class MeroBasicAgent {
public:
    MeroBasicAgent(const MeroBasicAgent&) = delete;
    MeroBasicAgent& operator=(const MeroBasicAgent&) = delete;
    virtual ~MeroBasicAgent() = default;

    /// Reads the section on which the parser stands. A `MeroErrorCode`.
    virtual int readDefinition(MeroKilnParser* parser) = 0;
    /// Ends the agent's run and frees what it measured. A `MeroErrorCode`.
    virtual int clearResults() = 0;
    /// Sets `text` to the canonical definition text; gives `text`.
    virtual SV::String& getDefinitionText(SV::String& text) = 0;
    /// For `AnalysisAny` whether any analysis is on, never for `AnalysisNone`; an unknown number reports
    /// status 10.
    [[nodiscard]] virtual bool isActiveInAnalysis(int analysis);
    [[nodiscard]] virtual MeroId getModelId() const { return modelId; }
    /// True if results can be carried over to objects related to the measured ones.
    [[nodiscard]] virtual bool canLimitByRelation() { return false; }
    [[nodiscard]] virtual int getAgentType() const { return agentType; }
    virtual int getName(SV::String& name) = 0;
    virtual int setName(const SV::String& name) = 0;
    [[nodiscard]] virtual bool hasObjectResults(bool ignoreShowFlag) = 0;
    [[nodiscard]] virtual bool hasHistory(bool ignoreShowFlag) = 0;
    /// Analysis of the current or last run.
    [[nodiscard]] virtual int getAnalysisType() const { return analysisType; }
    virtual int setDefaultValues() = 0;

    [[nodiscard]] bool isRunPrepared() const { return runPrepared; }
    [[nodiscard]] const MeroAnalysisFlags& getAnalysisFlags() const { return analyses; }

protected:
    MeroBasicAgent() = default;

    bool runPrepared = false;
    MeroAnalysisFlags analyses;
    bool hideAlgorithms = false;
    int agentType = AgentTypeUnknown;
    MeroId modelId = MeroNoId;
    int analysisType = AnalysisNone;
};
