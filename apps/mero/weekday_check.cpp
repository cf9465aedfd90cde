#include "apps/mero/weekday_check.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <string>

#include "apps/mero/run_settings.h"
#include "platform/language/kiln_document.h"

namespace mero {

namespace {

constexpr std::array WeekdayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};

std::chrono::weekday newYearOf(int year) {
    return std::chrono::weekday(std::chrono::sys_days(std::chrono::year(year) / std::chrono::January / 1));
}

/// The weekday of the calendar's first of January; nothing if it has no weekly hours or can't be read.
std::optional<std::chrono::weekday> firstDayOf(std::string_view text) {
    const Result<KilnDocument> document = readKilnDocument(text);
    if (!document || document.value().elements.empty()) {
        return std::nullopt;
    }
    const auto& elements = document.value().elements;
    const bool isWeekly = std::any_of(elements.begin(), elements.end(),
                                      [](const KilnElement& element) { return element.keyword == "WEEKLY"; });
    if (!isWeekly) {
        return std::nullopt;
    }
    const KilnAttribute* year = document.value().find(elements.front(), "year");
    if (year == nullptr) {
        return std::chrono::Monday;
    }
    const std::string digits = year->value.plain();
    int number = 0;
    const auto [end, status] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return status == std::errc{} ? std::optional(newYearOf(number)) : std::nullopt;
}

/// Objects by the text of their calendar, in the order of the models.
using Calendars = std::map<std::string, std::vector<const Object*>>;

Calendars calendarsOf(const Repository& repository, const RunPlan& plan) {
    Calendars calendars;
    std::vector<MeroId> models(plan.models.begin(), plan.models.end());
    if (plan.environment != MeroNoId) {
        models.push_back(plan.environment);
    }
    for (const MeroId model : models) {
        for (const MeroId id : repository.findModel(model)->objects) {
            const Object& object = *repository.findObject(id);
            for (const char* const attribute : {"Calendar", "Arrival calendar"}) {
                if (const SV::String text = repository.textOf(object, attribute); !text.IsEmpty()) {
                    calendars[std::string(text.view())].push_back(&object);
                }
            }
        }
    }
    return calendars;
}

}  // namespace

void tellWrongWeekdays(const Repository& repository, const RunPlan& plan, const Console& console) {
    if (!plan.start) {
        return;
    }
    constexpr std::int64_t SecondsPerDay = 86'400;
    const std::chrono::days day(secondsOfYear(*plan.start) / SecondsPerDay);
    const int year = plan.start->GetDate().GetYear();
    const std::chrono::weekday real = newYearOf(year) + day;
    for (const auto& [text, objects] : calendarsOf(repository, plan)) {
        const auto first = firstDayOf(text);
        if (!first || *first + day == real) {
            continue;
        }
        console.tell(fmt::format(
            "the calendar of \"{}\"{} takes the start of the run for a {}, though it is a {}: "
            "write CALENDAR … year:\"{}\" in it, or choose another start",
            objects.front()->name.view(),
            objects.size() == 1 ? "" : fmt::format(" and {} more", objects.size() - 1),
            WeekdayNames.at((*first + day).c_encoding()), WeekdayNames.at(real.c_encoding()), year));
    }
}

}  // namespace mero
