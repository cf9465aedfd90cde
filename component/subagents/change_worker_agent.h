#pragma once

#include <algorithm>

#include "component/agents/measuring_agent.h"
#include "component/subagents/named_option.h"

/// How often a process instance passes from one worker to another: each time an object goes to a worker who
/// wasn't among those who finished the step before. Counted per model, as a mean over the finished instances;
/// on process models, in all analyses but the path analysis.
class MeroChangeWorkerAgent : public MeroMeasuringAgent {
public:
    MeroChangeWorkerAgent();

    int readDefinition(MeroKilnParser* parser) override;
    SV::String& getDefinitionText(SV::String& text) override;
    int setDefaultValues() override;
    [[nodiscard]] bool isEqualToDefinition(const MeroKilnParser& parser) override;
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    [[nodiscard]] MeroPlacement classifyObject(MeroId ownModel, MeroId otherModel) override;
    /// False without one.
    bool getObjectClass(MeroId& id) const;

private:
    /// Who finished the step before in a main process: all that did so at the same moment. It is kept beyond
    /// the end of the process, until the run ends.
    class MeroPreviousExecutives {
    public:
        void begin(const SV::String& mainKey) {
            key = mainKey;
            alive = true;
        }
        void clear();
        [[nodiscard]] const SV::String& getKey() const { return key; }
        [[nodiscard]] bool isAlive() const { return alive; }

        void noteWorker(MeroId worker, double time);
        /// Whether going on to `worker` is a change; the first step of an instance is none.
        [[nodiscard]] bool isChange(MeroId worker) const { return !workers.empty() && !contains(worker); }

    private:
        [[nodiscard]] bool contains(MeroId worker) const {
            return std::ranges::find(workers, worker) != workers.end();
        }

        SV::String key;
        double lastTime = -1.0;
        MeroSmallVector<MeroId, 2> workers;
        bool alive = false;
    };

    void registerObservedClasses() override;
    [[nodiscard]] ResultSetTraits getResultSetTraits() const override {
        return {ValueTypeSingle, ResultModeMean};
    }
    int joinObjectsOf(const ISortedSet<MeroId>& calledModels) override;
    /// What its class is comes last here: a calendar that can't be used is told even with a wrong class.
    int prepareCalendar() override;
    void processBeganOutOfHours(const SV::String& mainKey) override { instances.erase(mainKey); }
    void enterCall(MeroAgentProcessInstance& process, const Call& call) override;
    [[nodiscard]] std::int32_t assigningCode() const {
        return observesExecutives ? EventExecutiveAssigned : EventResourceBound;
    }
    [[nodiscard]] std::int32_t finishingCode() const {
        return observesExecutives ? EventWorkEnd : EventResourceFreed;
    }
    [[nodiscard]] bool measuresAt(std::int32_t code) const override {
        return code == assigningCode() || code == finishingCode();
    }
    int measure(const MeroSimEvent& event) override;
    void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) override;
    void clearRunData() override { previousExecutives.clear(); }

    void expectRest(const MeroAgentProcessInstance& process, const MeroComingEvent& event) const override;

    void assign(const MeroSimEvent& event, MeroAgentProcessInstance& process, const SV::String& instanceKey);
    void finishStep(const MeroSimEvent& event, MeroAgentProcessInstance& process, double time);
    [[nodiscard]] MeroPreviousExecutives& previousOf(MeroAgentProcessInstance& process);

    MeroNamedOption classOption{"class"};
    bool observesExecutives = true;
    /// By main instance key, which remembers the place of the process.
    MeroPlaceTable<MeroPreviousExecutives, MeroPlaceMemory::None> previousExecutives;
};
