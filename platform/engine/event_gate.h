#pragma once

namespace mero {

/// Asked before every event of a run.
class EventGate {
public:
    EventGate() = default;
    EventGate(const EventGate&) = delete;
    EventGate& operator=(const EventGate&) = delete;
    virtual ~EventGate() = default;

    /// `time` may be anything up to infinity; false stops the run for good, and the event isn't sent.
    virtual bool mayGoOn(double time) = 0;
};

}  // namespace mero
