#include "platform/engine/trace_replay.h"

namespace mero {

bool replayTrace(const EventTrace& trace, ControlComponent& control, const ReplayProgress& progress) {
    constexpr std::size_t ProgressInterval = 1000;
    constexpr std::size_t PrefetchDistance = 12;
    SimEvent event;
    for (std::size_t index = 0; index < trace.size(); ++index) {
        if (progress && index % ProgressInterval == 0 && !progress(index)) {
            return false;
        }
        trace.prefetch(index + PrefetchDistance);
        trace.read(index, event);
        control.send(event);
    }
    return true;
}

}  // namespace mero
