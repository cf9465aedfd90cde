#include "platform/engine/shift_plan.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace mero {

namespace {

constexpr double Never = std::numeric_limits<double>::infinity();

/// Borders are whole seconds, so the second that contains a time decides.
std::int64_t secondOf(double time) {
    return static_cast<std::int64_t>(std::floor(time));
}

}  // namespace

bool ShiftPlan::isWorking(double time) const {
    return calendar->isWorking(secondOf(time) + offset);
}

double ShiftPlan::nextBorder(double time) const {
    const auto change = calendar->nextChange(secondOf(time) + offset);
    return change ? static_cast<double>(*change - offset) : Never;
}

double ShiftPlan::movedIntoWork(double time) const {
    return isWorking(time) ? time : nextBorder(time);
}

double ShiftPlan::afterWork(double time, double seconds) const {
    const std::int64_t work = workOfCycle();
    if (work == 0) {
        return Never;
    }
    const double cycles = std::floor(seconds / static_cast<double>(work));
    double left = seconds - cycles * static_cast<double>(work);
    double reached = movedIntoWork(time + cycles * static_cast<double>(WorkingCalendar::SecondsPerCycle));
    double border = nextBorder(reached);
    while (reached + left >= border) {
        left = std::max(0.0, left - (border - reached));
        reached = nextBorder(border);
        border = nextBorder(reached);
    }
    return reached + left;
}

}  // namespace mero
