#include "component/host/sv_timer.h"

namespace SV {

Timer::~Timer() {
    Stop();
}

void Timer::Start() {
    active = true;
    Toolkit::GetGlobal().startTimer(*this);
}

void Timer::Stop() {
    if (active) {
        active = false;
        Toolkit::GetGlobal().stopTimer(*this);
    }
}

void Timer::elapse() {
    if (!active) {
        return;
    }
    Stop();
    if (const Handler copy = handler) {
        copy();
    }
}

}  // namespace SV
