#pragma once

#include "component/host/sv_window.h"

namespace SV {

/// Calls its handler on the user-interface thread when the time is over, once for each start. Headless it
/// never comes by itself: call `elapse`.
class Timer {
public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer();

    void SetTimeout(int newMilliseconds) { milliseconds = newMilliseconds; }
    [[nodiscard]] int GetTimeout() const { return milliseconds; }
    void SetTimeoutHdl(Handler newHandler) { handler = std::move(newHandler); }
    void Start();
    void Stop();
    [[nodiscard]] bool IsActive() const { return active; }
    /// The time is over.
    void elapse();

private:
    int milliseconds = 0;
    bool active = false;
    Handler handler;
};

}  // namespace SV
