#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <utility>

#include "component/agents/process_instance.h"
#include "component/results/place_table.h"

/// What is known of an event that was announced.
struct MeroComingEvent {
    using Place = MeroPlaceTable<MeroAgentProcessInstance>::Place;
    static constexpr Place NoPlace = std::numeric_limits<Place>::max();

    Place place = NoPlace;    ///< of its process, which has been asked for
    std::size_t keyHash = 0;  ///< of the sub-process instance that it concerns; 0 for none or a new one
    bool endsProcess = false;
};

/// The events that were announced last. Where the rest of a process lies, the process itself tells: some
/// events after it has been asked for, it can be read, and the rest is asked for as well.
class MeroComingEvents {
public:
    /// Gives the event whose process can be read now.
    MeroComingEvent exchange(const MeroComingEvent& newest) {
        const MeroComingEvent oldest = std::exchange(events[next], newest);
        next = (next + 1) % Distance;
        return oldest;
    }

private:
    static constexpr std::size_t Distance = 6;

    std::array<MeroComingEvent, Distance> events;
    std::size_t next = 0;
};
