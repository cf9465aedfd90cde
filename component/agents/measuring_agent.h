#pragma once

#include "component/agents/model_agent.h"

/// The frame that all measuring agents share: it mirrors the live process instances, hands their values over
/// when they end, and prepares itself for a run. A concrete agent adds what it measures.
class MeroMeasuringAgent : public MeroModelAgent {
public:
    int processEvent(MeroSimEvent* event) override;
    int prepareRun(int analysis) override;

protected:
    /// What the result set of the agent is made with.
    struct ResultSetTraits {
        MeroValueType valueType;
        MeroResultMode mode;
    };

    // What a concrete agent adds. Event handlers give a `MeroEventStatus`, steps of the preparation a
    // `MeroErrorCode`.

    [[nodiscard]] virtual ResultSetTraits getResultSetTraits() const = 0;
    /// Opens a main process of the agent's model that begins in working time.
    virtual int startProcess(const MeroSimEvent& event);
    virtual int startSubProcess(const MeroSimEvent& event) = 0;
    /// Any event of a pass, while the agent is running.
    virtual int measure(const MeroSimEvent& event) = 0;
    /// Hands over the values of an instance that has ended and counts. `abscissa` is its place in the
    /// history.
    virtual void emitInstance(MeroAgentProcessInstance& process, double abscissa) = 0;
    /// After the object expression has been evaluated.
    virtual int objectsEvaluated() { return StatusOk; }
    /// After the objects of called models have joined.
    virtual int objectsExtended() { return StatusOk; }

    // What the agents share

    /// Whether a process that begins or ends at `time` does so in working time; in the first two analyses
    /// always.
    [[nodiscard]] bool isInWorkingTime(double time);
    /// The path of a value: that of its instance, the object appended unless it is last. Valid until the next
    /// call.
    [[nodiscard]] MeroPathView pathOfObject(const MeroAgentSubProcessInstance& instance, MeroId objectId);

private:
    int endInstance(const MeroSimEvent& event);
    void dropInstance(const MeroSimEvent& event);
    /// Whether an instance counts that ends at `time`; nothing if that can't be told and the agent has been
    /// ended.
    [[nodiscard]] std::optional<bool> countsAtEnd(const MeroAgentProcessInstance& process, double time);
    int makeResultSet();

    MeroPath pathBuffer;
};
