#pragma once

#include <memory>

#include "component/host/containers.h"

#include "component/agents/basic_agent.h"
#include "component/results/agent_result_set.h"

class MeroPassiveComponent;
class MeroSuperAgent;

/// How results are to be brought to a scale: asked of every sub-agent when its results are fetched.
struct MeroResultRequest {
    bool scaled = false;
    int frequency = 0;           ///< process starts in a period
    SV::String frequencyPeriod;  ///< time text
    double scale = 1.0;
};

/// Root of all sub-agents: one thing that is measured in a run. It is made from its section of a super
/// agent's definition text, prepared, run, and ended by `clearResults`; it owns its results.
class MeroAtomarAgent : public MeroBasicAgent {
public:
    ~MeroAtomarAgent() override;

    int readDefinition(MeroKilnParser* parser) override;
    SV::String& getDefinitionText(SV::String& text) override;
    int getName(SV::String& nameOut) override;
    int setName(const SV::String& newName) override;
    [[nodiscard]] bool hasObjectResults(bool ignoreShowFlag) override;
    [[nodiscard]] bool hasHistory(bool ignoreShowFlag) override;

    /// Stores model and owner (not owned) and sets the defaults. False if the agent can't be used.
    virtual bool initAgent(MeroId model, MeroSuperAgent* owner);
    /// Results of the run, finished for reading; null while no run is prepared. The set stays the agent's.
    virtual MeroAgentResultSet* getResultSet(const MeroResultRequest& request);
    /// Results carried over to the objects of a class that a relation joins with the measured ones. `status`
    /// is 1 if a measured object has related objects, 38 if none has (the unchanged set is given), 15 on a
    /// repository error.
    virtual MeroAgentResultSet* getLimitedResultSet(const SV::String& className,
                                                    const SV::String& relationName, int& status,
                                                    const MeroResultRequest& request);
    /// Removes all values, keeps the history. False without a result set.
    virtual bool clearResultValues();
    /// Whether reading the current section would leave this agent as it is; hide and lock keywords don't
    /// matter.
    [[nodiscard]] virtual bool isEqualToDefinition(const MeroKilnParser& parser);
    /// Null for an agent that takes no events.
    [[nodiscard]] virtual MeroPassiveComponent* getPassiveComponent() { return nullptr; }
    [[nodiscard]] virtual bool isEventProcessing() const = 0;
    /// Readies the agent for a run. A `MeroErrorCode`; on any but 1 the agent takes no part.
    virtual int prepareRun(int analysis) = 0;
    /// Combination mode of `getLimitedResultSet`.
    [[nodiscard]] virtual MeroResultMode getCombinationMode() const { return ResultModeSum; }

    /// Reports an internal error while not configured, and gives 1 all the same.
    [[nodiscard]] int getValueKind() const;
    [[nodiscard]] MeroResultKind getResultKind() const { return resultKind; }
    [[nodiscard]] MeroAgentState getAgentState() const { return agentState; }
    [[nodiscard]] bool isUsable() const { return agentState != AgentIdle && agentState != AgentFailed; }
    [[nodiscard]] MeroSuperAgent* getOwnerSuperAgent() const { return ownerSuperAgent; }
    /// Processes that counted; 0 in an agent that counts none.
    [[nodiscard]] virtual std::int32_t getFinishedProcesses() const { return 0; }
    /// Leaves in each analysis flag only what is set in it and in the argument.
    void restrictAnalyses(const MeroAnalysisFlags& allowed) { analyses.restrictTo(allowed); }

protected:
    MeroAtomarAgent();

    /// Defaults of the keywords that all sub-agents share.
    void setCommonDefaultValues(const MeroAnalysisFlags& defaultAnalyses, const SV::String& defaultName);
    /// Reads "name", without which nothing more is read, and tests the type. A `MeroErrorCode`.
    int readNameAndType(MeroKilnParser* parser);
    void readAnalyses(const MeroKilnParser& parser);
    /// "hide-name", "lock-name" and "hide-algorithms".
    void readNameOptions(const MeroKilnParser& parser);
    /// "hide-name" and "lock-name".
    void appendNameOptions(SV::String& text) const;
    /// Whether results and histories are shown, and the options for that.
    void readDisplayOptions(const MeroKilnParser& parser);
    void appendResultDisplay(SV::String& text) const;

    /// Adds to the observed objects what the relations between `classId` and the classes below `baseClassId`
    /// join with them. A `MeroErrorCode`.
    int widenObservedObjects(MeroId classId, MeroId baseClassId);

    MeroSuperAgent* ownerSuperAgent = nullptr;
    std::unique_ptr<MeroAgentResultSet> resultSet;
    std::unique_ptr<MeroAgentResultSet> limitedResultSet;
    ISortedSet<MeroId> observedObjects;
    MeroResultKind resultKind = ResultKindNone;
    int valueKind = 1;
    SV::String name;
    bool nameVisible = true;
    bool nameEditable = true;
    bool historyMem = false;
    bool historyMemVisible = true;
    bool historyMemEditable = true;
    bool historyDisk = false;
    bool historyDiskVisible = true;
    bool historyDiskEditable = true;
    SV::String historyFile;
    bool showResult = true;
    bool showResultVisible = true;
    bool showResultEditable = true;
    bool showHistory = true;
    bool showHistoryVisible = true;
    bool showHistoryEditable = true;
    MeroAgentState agentState = AgentIdle;
    bool scopeObjects = false;
    bool scopeVisible = false;
    bool scopeEditable = false;
    bool scopeAllObjects = false;
    bool scopeAllObjectsVisible = false;
    bool scopeAllObjectsEditable = false;

private:
    struct FlagKeyword;
};
