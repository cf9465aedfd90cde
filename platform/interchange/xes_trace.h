#pragma once

#include <cstddef>
#include <istream>
#include <memory>
#include <string>

#include "platform/engine/sim_event.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Which clock counts as the time of a log whose offsets from UTC change.
enum class XesClock {
    Instants,   ///< offsets are heeded: durations are true
    WallClock,  ///< offsets are dropped: hours of the day are true
};

/// The events of a log as a run: 3, then of each case 11, its passes and 13 (15 where it was aborted), then
/// 6, all cases merged by time. Time 0 is midnight before the Monday before the earliest event, by the clock
/// of that event. The rules stand in docs/event-logs.md.
///
/// The log is read twice: first to learn when it begins and whether it has a life cycle, then to make rows of
/// 32 bytes, which are sorted in memory, from 1 Mi rows on in runs on a temporary file. So memory stays at
/// about 40 MB and the cases alive, however long the log is.
class XesTrace {
public:
    /// `input` has to be seekable; it and the repository have to outlive the trace. Activities are looked up
    /// in `processId`, workers in `environmentId` (0: events are played without workers).
    XesTrace(std::istream& input, std::string source, const Repository& repository, MeroId processId,
             MeroId environmentId, XesClock clock = XesClock::Instants);
    XesTrace(const XesTrace&) = delete;
    XesTrace& operator=(const XesTrace&) = delete;
    ~XesTrace();

    /// Reads the log; once, before the first `next`. An error gives the place and the reason.
    Result<void> prepare();
    /// Events of the run, once prepared.
    [[nodiscard]] std::size_t size() const;
    /// The next event, whose keys live until the next call; false at the end.
    Result<bool> next(SimEvent& event);

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation;
};

}  // namespace mero
