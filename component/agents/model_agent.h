#pragma once

#include "component/agents/event_processing_agent.h"

/// An event-processing agent that measures on the objects of one model and of the models that it calls.
class MeroModelAgent : public MeroEventProcessingAgent {
public:
    /// Seconds of a time text in a base of days a year and hours a day.
    [[nodiscard]] static double getTimeValue(const SV::String& timeText, double yearDays, double dayHours);

protected:
    /// Models that the agent's model calls, directly and over others, and those that observed calls name. 1
    /// or 15.
    int computeCalledModels(ISortedSet<MeroId>& calledModels) const;
    /// Adds the called models and what is observed in them to the observed objects of an agent on a process
    /// model. A `MeroErrorCode`.
    int extendObservedObjects();
    /// Adds what is observed in called models: their activities. A `MeroErrorCode`.
    virtual int joinObjectsOf(const ISortedSet<MeroId>& calledModels);
    /// All instances of the class and the classes below it in the models. 1 or 15.
    static int findInstances(const ISortedSet<MeroId>& models, MeroId classId, ISortedSet<MeroId>& found);

private:
    [[nodiscard]] bool findCalls(ISortedSet<MeroId>& calls) const;
};
