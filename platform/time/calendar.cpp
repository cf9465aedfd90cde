#include "component/host/calendar.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

#include "platform/time/calendar_text.h"
#include "platform/time/working_calendar.h"

namespace {

using mero::WorkingCalendar;
using SharedCalendar = std::shared_ptr<const WorkingCalendar>;

constexpr int Success = 0;
constexpr int Failure = 1;

/// Some 10^10 years either way, so that no sum or difference of times overflows.
std::int64_t limited(std::int64_t time) {
    constexpr std::int64_t Limit = std::numeric_limits<std::int64_t>::max() / 4;
    return std::clamp(time, -Limit, Limit);
}

/// Workers and agents share a few calendar texts, so each text is read once. Bad texts aren't kept.
class CalendarCache {
public:
    static CalendarCache& GetGlobal() {
        static CalendarCache cache;
        return cache;
    }

    mero::Result<SharedCalendar> read(const SV::String& text) {
        if (const auto known = calendars.find(text); known != calendars.end()) {
            return known->second;
        }
        auto calendar = mero::readCalendarText(text.view());
        if (!calendar) {
            return calendar.error();
        }
        if (calendars.size() >= Capacity) {
            calendars.clear();
        }
        auto shared = std::make_shared<const WorkingCalendar>(std::move(calendar.value()));
        calendars.emplace(text, shared);
        return SharedCalendar(std::move(shared));
    }

private:
    static constexpr std::size_t Capacity = 512;

    std::unordered_map<SV::String, SharedCalendar> calendars;
};

}  // namespace

struct MeroCalendar::Impl {
    std::int64_t startTime = 0;
    SharedCalendar calendar;  ///< null until a text was read
    std::string errorText;

    [[nodiscard]] std::int64_t calendarTime(std::int64_t time) const {
        return time + startTime % WorkingCalendar::SecondsPerCycle;
    }
};

MeroCalendar::MeroCalendar([[maybe_unused]] int propertyType, std::int64_t startTime,
                           [[maybe_unused]] int firstDay, [[maybe_unused]] int daysOfYear)
    : impl(std::make_unique<Impl>()) {
    impl->startTime = startTime;
}

MeroCalendar::MeroCalendar(MeroCalendar&&) noexcept = default;
MeroCalendar& MeroCalendar::operator=(MeroCalendar&&) noexcept = default;
MeroCalendar::~MeroCalendar() = default;

int MeroCalendar::initializeCalendar(const SV::String& text) {
    auto calendar = CalendarCache::GetGlobal().read(text);
    if (!calendar) {
        impl->errorText = calendar.error().text;
        return Failure;
    }
    impl->calendar = std::move(calendar.value());
    impl->errorText.clear();
    return Success;
}

SV::String MeroCalendar::getErrorText() const {
    return SV::String(impl->errorText);
}

int MeroCalendar::getTimeIntervalsSumInBetween(std::int64_t from, std::int64_t to, std::int64_t& sum) const {
    if (impl->calendar == nullptr || from > to) {
        return Failure;
    }
    sum = impl->calendar->workBetween(impl->calendarTime(limited(from)), impl->calendarTime(limited(to)));
    return Success;
}

int MeroCalendar::isCoveredWholly(std::int64_t from, std::int64_t to, int& covered) const {
    std::int64_t sum = 0;
    if (getTimeIntervalsSumInBetween(from, to, sum) != Success) {
        return Failure;
    }
    covered = sum == limited(to) - limited(from) ? 1 : 0;
    return Success;
}

int MeroCalendar::isInCurrentInterval(std::int64_t time, std::int64_t& end, int& inInterval) const {
    if (impl->calendar == nullptr) {
        return Failure;
    }
    const std::int64_t calendarTime = impl->calendarTime(limited(time));
    const auto change = impl->calendar->nextChange(calendarTime);
    end = change ? limited(time) + (*change - calendarTime) : std::numeric_limits<std::int64_t>::max();
    inInterval = impl->calendar->isWorking(calendarTime) ? 1 : 0;
    return Success;
}

int MeroCalendar::intersection(const MeroCalendar& other, MeroCalendar& common) const {
    if (impl->calendar == nullptr || other.impl->calendar == nullptr) {
        return Failure;
    }
    const std::int64_t shift = impl->startTime % WorkingCalendar::SecondsPerCycle -
                               other.impl->startTime % WorkingCalendar::SecondsPerCycle;
    if (!impl->calendar->overlaps(*other.impl->calendar, shift)) {
        return CalendarNothingInCommon;
    }
    common.impl->calendar =
        std::make_shared<const WorkingCalendar>(impl->calendar->intersect(*other.impl->calendar, shift));
    common.impl->startTime = impl->startTime;
    return Success;
}
