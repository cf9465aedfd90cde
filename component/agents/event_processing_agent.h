#pragma once

#include <memory>
#include <vector>

#include "component/host/calendar.h"
#include "component/host/core_variables.h"
#include "component/host/simulation.h"

#include "component/agents/atomar_agent.h"
#include "component/agents/id_filter.h"
#include "component/agents/process_instance.h"
#include "component/results/place_table.h"

/// Where a value of an object counts under the result scope.
enum class MeroPlacement {
    UnderObject,  ///< under the object itself
    UnderCaller,  ///< under the object that called the process
    ProcessOnly,  ///< in the sum of the process alone
};

/// What an event is tested for before it concerns an agent.
struct MeroRelevanceTest {
    bool instance = false;
    bool object = false;
    bool calendar = false;
};

/// A sub-agent that takes simulation events: it keeps the live process instances of a run, decides whether an
/// event concerns it and gives up cleanly when something goes wrong. On a process model (class code 56)
/// events count if they belong to that model or one that it calls; on an environment (53) those of all
/// processes do, and the observed objects are the workers and resources.
class MeroEventProcessingAgent : public virtual MeroAtomarAgent, public MeroPassiveComponent {
public:
    ~MeroEventProcessingAgent() override;

    int readDefinition(MeroKilnParser* parser) override;
    SV::String& getDefinitionText(SV::String& text) override;
    [[nodiscard]] bool isEqualToDefinition(const MeroKilnParser& parser) override;
    bool initAgent(MeroId model, MeroSuperAgent* owner) override;
    [[nodiscard]] MeroPassiveComponent* getPassiveComponent() override { return this; }
    [[nodiscard]] bool isEventProcessing() const override { return true; }
    [[nodiscard]] std::int32_t getFinishedProcesses() const override { return finishedProcesses; }
    int clearResults() override;

    /// Whether `time` lies in the agent's working time; false without a calendar. A failing calendar ends the
    /// agent.
    [[nodiscard]] virtual bool isInCalendarInterval(double time);
    /// Ends the agent for the rest of the run: a box with its name, state 4, no results.
    virtual void abortAgent();
    [[nodiscard]] virtual MeroPlacement classifyObject(MeroId ownModel, MeroId otherModel);
    /// Throws the results away and prepares the agent again. A `MeroErrorCode`; on any but 1 the agent has
    /// been ended.
    virtual int restartAgent();
    virtual bool releaseCalendar();

protected:
    /// Start time handed to `addProcessInstance` by agents that don't measure it.
    static constexpr double NoStartTime = -2.0;

    MeroEventProcessingAgent();

    /// Adds the agent's classes to `observedClassSet`.
    virtual void registerObservedClasses() = 0;
    void observeClass(MeroCoreVarType number);
    /// For agents that hear of everything.
    void observeAllClasses();

    /// False if the event's time can't be held as a double.
    [[nodiscard]] static bool readTime(const MeroSimEvent& event, double& time);

    [[nodiscard]] bool isEventRelevant(const MeroRelevanceTest& test, const SV::String& mainKey,
                                       const SV::String& instanceKey, MeroId objectId, double time);
    /// Whether a call of `calledModel` concerns the agent; `isOwnModel` tells that it is the agent's model.
    [[nodiscard]] bool isInObservedScope(MeroId calledModel, MeroId callingObject, const SV::String& mainKey,
                                         const SV::String& instanceKey, bool& isOwnModel);
    /// Null if it isn't alive.
    [[nodiscard]] MeroAgentProcessInstance* findInstance(const SV::String& mainKey);
    /// All instances of a process in the order of their keys. Valid until the next call.
    [[nodiscard]] const std::vector<MeroAgentSubProcessInstance*>& instancesOf(
        MeroAgentProcessInstance& process);
    /// Opens the entry of a main process. A key that is alive already is an inconsistency of the run: it ends
    /// the agent.
    bool addProcessInstance(MeroId model, const SV::String& instanceKey, const SV::String& mainKey,
                            double startTime);
    /// Whether the calendar covers the span; `covered` is set on success only. 1, 6 for a failing calendar, 0
    /// for a missing one and for a span that ends before it begins.
    int isCoveredWholly(double from, double to, bool& covered);
    /// Makes the calendar of the run from the owner's text. 1, or 6 with its box.
    int makeCalendar();
    /// Makes `observedObjects` the ones that `observes` tells of; when they are complete.
    void observeObjects() { observedFilter.assign(observedObjects); }
    [[nodiscard]] bool observes(MeroId objectId) const { return observedFilter.contains(objectId); }
    /// Evaluates the owner's object expression into `observedObjects`. 1, or 28 with its box.
    int evaluateObservedObjects();
    /// Switches on the history that the definition names. False, and an internal error, if the set refuses.
    bool enableHistory();
    /// Comment lines at the head of a history file, each beginning with "# ".
    SV::String& getHistoryHeader(SV::String& header) const;
    /// What every agent does at the end of the run: frees what it keeps for it, state 5.
    void endRun();
    /// The last of the measure, before anything is freed.
    virtual void finishMeasure() {}
    /// Frees what the agent keeps for a run besides `instances`.
    virtual void clearRunData() {}

    std::unique_ptr<MeroCalendar> calendar;
    std::int32_t finishedProcesses = 0;  ///< goes on counting over a restart, unless the agent says otherwise
    bool modelIsEnvironment = false;
    MeroPlaceTable<MeroAgentProcessInstance> instances;  ///< that are alive, by main instance key

private:
    [[nodiscard]] const char* scopeWord() const;
    void failWith(const SV::String& boxText);
    void showDuplicateInstance();
    [[nodiscard]] int prepareAgain();

    MeroIdFilter observedFilter;
    std::vector<MeroAgentSubProcessInstance*> instanceBuffer;
};

/// Shows the event message, if there is such a window, and asks to hide it at the end of its life.
class MeroEventMessage {
public:
    explicit MeroEventMessage(SV::ResId message);
    MeroEventMessage(const MeroEventMessage&) = delete;
    MeroEventMessage& operator=(const MeroEventMessage&) = delete;
    ~MeroEventMessage();

private:
    bool shown;
};
