#pragma once

#include <memory>

#include "apps/mero/atomic_file.h"
#include "platform/engine/control_component.h"
#include "platform/interchange/event_trace.h"

namespace mero {

/// Writes the events of a run to a file that appears when the run is whole.
class EventRecorder {
public:
    /// Listens to `control` from now on. An empty name records nothing.
    static Result<std::unique_ptr<EventRecorder>> open(const std::string& file, const Repository& repository,
                                                       MeroId environment, ControlComponent& control);
    explicit EventRecorder(const std::string& name) : file(name) {}

    Result<void> finish();

private:
    AtomicFile file;
    std::unique_ptr<EventTraceWriter> writer;
};

}  // namespace mero
