#pragma once

#include "component/agents/coming_events.h"
#include "component/agents/model_agent.h"
#include "component/results/reading_batch.h"

/// The frame that all measuring agents share: it mirrors the live process instances, hands their values over
/// when they end, and prepares itself for a run. A concrete agent adds what it measures.
class MeroMeasuringAgent : public MeroModelAgent {
public:
    int processEvent(MeroSimEvent* event) override;
    void expectEvent(const MeroSimEvent& event) override;
    int prepareRun(int analysis) override;

protected:
    /// What the result set of the agent is made with.
    struct ResultSetTraits {
        MeroValueType valueType;
        MeroResultMode mode;
    };

    /// A sub-process that starts.
    struct Call {
        MeroId calledModel = MeroNoId;
        MeroId callingObject = MeroNoId;
        MeroId mainModel = MeroNoId;
        MeroId model = MeroNoId;  ///< model of the caller
        SV::String calledKey;
        SV::String callerKey;
        SV::String mainKey;
        double time = 0.0;
    };

    /// How an instance ended.
    struct InstanceEnd {
        MeroId model;     ///< model of the process that ended
        double abscissa;  ///< place in the history: the count of finished processes, or the time
    };

    // What a concrete agent adds. Event handlers give a `MeroEventStatus`, steps of the preparation a
    // `MeroErrorCode`.

    /// Whether the agent honours the event only while it is running.
    [[nodiscard]] virtual bool needsRunningState([[maybe_unused]] std::int32_t code) const { return true; }
    /// Opens a main process of the agent's model that begins in working time.
    virtual int startProcess(const MeroSimEvent& event);
    /// A main process of the agent's model that isn't opened, as it begins out of working time.
    virtual void processBeganOutOfHours([[maybe_unused]] const SV::String& mainKey) {}
    /// Opens a called process that concerns the agent: as a process of its own if it runs the agent's model.
    /// One that begins out of working time costs the whole main process.
    virtual int startSubProcess(const MeroSimEvent& event);
    /// A called process of another model, in a main process that is alive.
    virtual void enterCall(MeroAgentProcessInstance& process, const Call& call) = 0;
    /// After a call has been entered or opened.
    virtual void noteCall([[maybe_unused]] const Call& call) {}
    /// Which events of passes the agent measures at.
    [[nodiscard]] virtual bool measuresAt(std::int32_t code) const = 0;
    /// One of these events.
    virtual int measure(const MeroSimEvent& event) = 0;
    /// One of these will come soon: asks for memory besides that of the process. Gives the hash of the key
    /// under which the process will look for an instance; 0 if it looks for none, or that will be a new one.
    virtual std::size_t expectPass([[maybe_unused]] const MeroSimEvent& event) const { return 0; }
    /// The process of an event that was announced some events ago can be read: asks for what it points to.
    virtual void expectRest(const MeroAgentProcessInstance& process, const MeroComingEvent& event) const;
    virtual int endProcess(const MeroSimEvent& event);
    /// Ends the main process if the called one runs the agent's model.
    virtual int endSubProcess(const MeroSimEvent& event);
    virtual void dropInstance(const SV::String& key);
    /// Whether an instance counts that ends at `time`; nothing if that can't be told and the agent has been
    /// ended.
    [[nodiscard]] virtual std::optional<bool> countsAtEnd(const MeroAgentProcessInstance& process,
                                                          double time);
    /// Gathers the values of an instance that counts.
    virtual void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) = 0;

    /// Before anything is evaluated.
    virtual int checkConfiguration() { return StatusOk; }
    /// After the object expression has been evaluated.
    virtual int objectsEvaluated() { return StatusOk; }
    /// After the objects of called models have joined.
    virtual int objectsExtended() { return StatusOk; }
    [[nodiscard]] virtual ResultSetTraits getResultSetTraits() const = 0;
    virtual int makeResultSet();
    /// Set that takes what is measured.
    [[nodiscard]] virtual MeroAgentResultSet& getMeasured() { return *resultSet; }
    /// The agent's own maps and flags.
    virtual int prepareMeasure() { return StatusOk; }
    /// Agents that don't test working time make none.
    virtual int prepareCalendar() { return makeCalendar(); }

    // What the agents share

    /// False if the time can't be held.
    static bool readCall(const MeroSimEvent& event, Call& call);
    /// Whether a process that begins or ends at `time` does so in working time; in the first two analyses
    /// always.
    [[nodiscard]] bool isInWorkingTime(double time);
    /// The path of a value: that of its instance, the object appended unless it is last. Valid until the next
    /// call.
    [[nodiscard]] MeroPathView pathOfObject(const MeroAgentSubProcessInstance& instance, MeroId objectId);
    /// The same with the object in front, unless it is first.
    [[nodiscard]] MeroPathView pathFromObject(const MeroAgentSubProcessInstance& instance, MeroId objectId);
    /// How a call is collected that stands under `placement`: by the caller's collector where that is
    /// `collected`, and in calls out of other models than `ownModel` that count under their caller.
    [[nodiscard]] static MeroCollecting collectingOf(const Call& call, MeroPlacement placement,
                                                     MeroPlacement collected, MeroId ownModel) {
        const bool byCaller =
            placement == collected || (placement == MeroPlacement::UnderCaller && call.model != ownModel);
        return byCaller ? MeroCollecting::ByCollectorOfCaller : MeroCollecting::ByItself;
    }
    /// Emits an instance and adds all that was gathered of it to the results, unless the agent has been ended
    /// over it.
    void handOver(MeroAgentProcessInstance& process, const InstanceEnd& end);
    /// Gathers a value of a mean over the finished processes, under the object that it belongs to.
    void gather(MeroId id, MeroPathView path, double value, const InstanceEnd& end, int sourceAgentType);
    [[nodiscard]] double abscissaAt(double time) const;
    /// Asks for what a table of passes will look at. Gives the hash of the key.
    template <class Item>
    static std::size_t expectKeyOfPass(const MeroSimEvent& event, const MeroPlaceTable<Item>& passes) {
        SV::String passKey;
        event.getExecutionKey(&passKey);
        passes.prefetch(passKey);
        passes.prefetchIndex(passKey);
        return passKey.hash();
    }

    MeroReadingBatch readings;  ///< of the instance that is emitted

private:
    [[nodiscard]] MeroComingEvent askForProcessOf(const MeroSimEvent& event) const;

    MeroPath pathBuffer;
    MeroComingEvents comingEvents;
};
