#pragma once

#include <optional>

#include "component/agents/measuring_agent.h"
#include "component/subagents/named_option.h"

/// What the agents on the work of executives or resources share: their class, the main processes that they
/// take, and where the value of a pass stands. On a process model the observed objects are those of
/// processes; on an environment they are the workers, and all processes count.
class MeroWorkerAgent : public MeroMeasuringAgent {
public:
    int readDefinition(MeroKilnParser* parser) override;
    [[nodiscard]] bool isEqualToDefinition(const MeroKilnParser& parser) override;
    [[nodiscard]] bool canLimitByRelation() override { return true; }
    /// False without a class.
    bool getObjectClass(MeroId& id) const;

protected:
    /// A pass that a worker, an executive or a resource, takes on.
    struct Pass {
        MeroId object = MeroNoId;
        MeroId worker = MeroNoId;
        MeroId mainModel = MeroNoId;
        MeroId model = MeroNoId;
        SV::String mainKey;
        SV::String instanceKey;
        SV::String passKey;
        double time = 0.0;
    };

    MeroWorkerAgent();

    void registerObservedClasses() override;
    /// Analyses that the agent can serve; others are switched off when a text names them, with a box.
    [[nodiscard]] virtual MeroAnalysisFlags servedAnalyses() const = 0;
    /// Further keys of the section, behind the class. A `MeroErrorCode`.
    virtual int readOwnKeys([[maybe_unused]] const MeroKilnParser& parser) { return StatusOk; }
    /// Start time of the entry of a process that begins at `time`.
    [[nodiscard]] virtual double startTimeAt([[maybe_unused]] double time) const { return NoStartTime; }

    int startProcess(const MeroSimEvent& event) override;
    int startSubProcess(const MeroSimEvent& event) override;
    void enterCall(MeroAgentProcessInstance& process, const Call& call) override;
    /// When a sub-process can't be entered: the process is given up.
    virtual void callFailed(const SV::String& mainKey) { instances.erase(mainKey); }

    int checkConfiguration() override;
    int objectsExtended() override;

    [[nodiscard]] bool measuresAt(std::int32_t code) const override { return beginsPass(code); }
    /// False if the time can't be held.
    bool readPass(const MeroSimEvent& event, Pass& pass) const;
    /// Whether the event begins a pass of the kind of worker that the agent observes.
    [[nodiscard]] bool beginsPass(std::int32_t code) const {
        return code == (observesExecutives ? EventWorkStart : EventResourceBound);
    }
    /// The identifier that has to be among the observed objects.
    [[nodiscard]] MeroId observedIdOf(const Pass& pass) const {
        return modelIsEnvironment ? pass.worker : pass.object;
    }
    [[nodiscard]] MeroPlacement placementOf(const Pass& pass) {
        return classifyObject(modelIsEnvironment ? pass.mainModel : modelId, pass.model);
    }
    /// Key under which the value of a pass stands, which is made if need be; null if it can't be made.
    [[nodiscard]] const SV::String* targetOf(MeroAgentProcessInstance& process, const Pass& pass);
    /// Path of a worker's value: in front on an environment, else at the end.
    [[nodiscard]] MeroPathView pathOfWorker(const MeroAgentSubProcessInstance& instance, MeroId worker) {
        return modelIsEnvironment ? pathFromObject(instance, worker) : pathOfObject(instance, worker);
    }

    MeroNamedOption classOption{"class"};
    bool observesExecutives = true;

private:
    void openCall(const Call& call);
};

/// Times of activities in seconds, as their attribute gives them: read once per object and kept.
class MeroExecutionTimes {
public:
    void clear() { times.clear(); }
    /// Reads those of all activities among the objects. 1, or 15 after an internal error.
    int readAll(const ISortedSet<MeroId>& objects);
    /// Of an activity that has been read.
    [[nodiscard]] std::optional<double> find(MeroId object) const;
    /// Of any activity; nothing after an internal error.
    [[nodiscard]] std::optional<double> findOrRead(MeroId object);

private:
    [[nodiscard]] static std::optional<double> read(MeroId activity);

    MeroKeyedTable<MeroId, double> times;
};
