#include "platform/interchange/xes_survey.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

namespace mero {

XesTransition transitionOf(const std::string& word) {
    constexpr std::pair<std::string_view, XesTransition> Words[] = {
        {"complete", XesTransition::Complete},
        {"start", XesTransition::Start},
        {"schedule", XesTransition::Schedule},
        {"assign", XesTransition::Assign},
        {"reassign", XesTransition::Reassign},
        {"suspend", XesTransition::Suspend},
        {"resume", XesTransition::Resume},
        {"autoskip", XesTransition::Skip},
        {"manualskip", XesTransition::Skip},
        {"withdraw", XesTransition::Withdraw},
        {"ate_abort", XesTransition::Abort},
        {"pi_abort", XesTransition::AbortCase},
        {"", XesTransition::None},
    };
    const auto isLetter = [](char wanted, char letter) {
        return wanted == (letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter);
    };
    for (const auto& [known, transition] : Words) {
        if (std::equal(known.begin(), known.end(), word.begin(), word.end(), isLetter)) {
            return transition;
        }
    }
    return XesTransition::Unknown;
}

void XesSurvey::add(const XesEvent& event) {
    ++events;
    withoutActivity += event.activity.empty() ? 1U : 0U;
    withoutResource += event.resource.empty() ? 1U : 0U;
    const XesTransition transition = transitionOf(event.transition);
    completions += transition == XesTransition::Complete ? 1U : 0U;
    unknownTransitions += transition == XesTransition::Unknown ? 1U : 0U;
    if (event.time.empty()) {
        ++withoutTime;
    }
    for (const std::string* const text : {&event.time, &event.start}) {
        if (text->empty()) {
            continue;
        }
        const auto time = parseIsoTime(*text);
        unreadableTimes += time ? 0U : 1U;
        if (time && (!earliest || time->milliseconds < earliest->milliseconds)) {
            earliest = time;
        }
    }
}

IsoTime XesSurvey::beginning() const {
    using namespace std::chrono;
    constexpr sys_days FirstMonday = 1970y / January / 5;
    return earliest.value_or(IsoTime{milliseconds(FirstMonday.time_since_epoch()).count()});
}

std::int64_t XesSurvey::startOfCalendar() const {
    using std::chrono::milliseconds;
    const std::chrono::sys_time<milliseconds> first(milliseconds(beginning().wallClock()));
    const auto day = std::chrono::floor<std::chrono::days>(first);
    const auto monday = day - (std::chrono::weekday(day) - std::chrono::Monday);
    return milliseconds(monday.time_since_epoch()).count();
}

}  // namespace mero
