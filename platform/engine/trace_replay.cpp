#include "platform/engine/trace_replay.h"

#include <array>

namespace mero {

namespace {

/// The events that come next, announced to the components before they are sent: of many process instances
/// none is in the processor's caches when its event comes, and memory answers several requests in the time of
/// one.
class ComingEvents {
public:
    ComingEvents(const EventTrace& playedTrace, ControlComponent& listeners)
        : trace(playedTrace), control(listeners) {
        for (std::size_t index = 0; index < Ahead; ++index) {
            announce(index);
        }
    }

    void sendNext() {
        control.send(events[next % Ahead], trace.digest(next));
        announce(next + Ahead);
        ++next;
    }

private:
    /// Some memory accesses' time at the usual pace of a replay.
    static constexpr std::size_t Ahead = 12;

    void announce(std::size_t index) {
        trace.prefetchKeys(index + Ahead);
        if (index < trace.size()) {
            SimEvent& event = events[index % Ahead];
            trace.read(index, event);
            control.announce(event);
        }
    }

    const EventTrace& trace;
    ControlComponent& control;
    std::array<SimEvent, Ahead> events;
    std::size_t next = 0;
};

}  // namespace

bool replayTrace(const EventTrace& trace, ControlComponent& control, const ReplayProgress& progress) {
    constexpr std::size_t ProgressInterval = 1000;
    ComingEvents coming(trace, control);
    for (std::size_t index = 0; index < trace.size(); ++index) {
        if (progress && index % ProgressInterval == 0 && !progress(index)) {
            return false;
        }
        coming.sendNext();
    }
    return true;
}

}  // namespace mero
