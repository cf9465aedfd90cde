#include "platform/time/calendar_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <fmt/format.h>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "platform/language/kiln_document.h"

namespace mero {

namespace {

constexpr std::array<std::string_view, WorkingCalendar::DaysPerWeek> WeekdayNames{"mon", "tue", "wed", "thu",
                                                                                  "fri", "sat", "sun"};
constexpr std::array<int, 12> DaysOfMonth{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

using PatternIndex = WorkingCalendar::PatternIndex;

/// Index of the pattern without working hours.
constexpr PatternIndex FreeDay = 0;

std::optional<int> readDigits(std::string_view text, std::size_t minimum, std::size_t maximum) {
    const bool areDigits = std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
    if (!areDigits || text.size() < minimum || text.size() > maximum) {
        return std::nullopt;
    }
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t at = 0; at < text.size();) {
        if (isWhiteSpace(text[at])) {
            ++at;
            continue;
        }
        const std::size_t begin = at;
        while (at < text.size() && !isWhiteSpace(text[at])) {
            ++at;
        }
        words.push_back(text.substr(begin, at - begin));
    }
    return words;
}

/// Seconds since midnight of "HH:MM"; 24:00 is a time.
std::optional<std::int32_t> readTimeOfDay(std::string_view text) {
    if (text.size() != 5 || text[2] != ':') {
        return std::nullopt;
    }
    const auto hour = readDigits(text.substr(0, 2), 2, 2);
    const auto minute = readDigits(text.substr(3), 2, 2);
    if (!hour || !minute || *minute > 59 || *hour * 60 + *minute > 24 * 60) {
        return std::nullopt;
    }
    return (*hour * 60 + *minute) * 60;
}

class CalendarReader {
public:
    explicit CalendarReader(std::string_view calendarText) : text(calendarText) {}

    Result<WorkingCalendar> read() {
        const auto kiln = readKilnDocument(text);
        if (!kiln) {
            return kiln.error();
        }
        document = &kiln.value();
        const auto& elements = document->elements;
        if (elements.empty() || elements.front().keyword != "CALENDAR") {
            fail(elements.empty() ? 0 : elements.front().position, "expected CALENDAR");
        }
        for (std::size_t index = 0; index < elements.size() && !failure; ++index) {
            readElement(elements[index], index == 0);
        }
        if (failure) {
            return *std::move(failure);
        }
        return WorkingCalendar(std::move(patterns), patternsOfCycle());
    }

private:
    void readElement(const KilnElement& element, bool isFirst) {
        if (element.keyword == "CALENDAR" && isFirst) {
            readHead(element);
            return;
        }
        if (element.hasValue) {
            fail(element.position, fmt::format("{} takes no value of its own", element.keyword));
        } else if (element.keyword == "DAILY") {
            checkKeys(element, {"hours"});
            daily = readHours(element);
        } else if (element.keyword == "WEEKLY") {
            checkKeys(element, {"days", "hours"});
            readWeekly(element);
        } else if (element.keyword == "DAY") {
            checkKeys(element, {"number", "hours"});
            readDay(element);
        } else if (element.keyword == "DATE") {
            checkKeys(element, {"date", "hours"});
            readDate(element);
        } else {
            fail(element.position,
                 fmt::format("{} stands here; expected DAILY, WEEKLY, DAY or DATE", element.keyword));
        }
    }

    void readHead(const KilnElement& element) {
        checkKeys(element, {"year"});
        if (document->find(element, "year") == nullptr) {
            return;
        }
        const auto [year, place] = readString(element, "year");
        const auto number = readDigits(year, 1, 4);
        if (!number || *number == 0) {
            fail(place, fmt::format("\"{}\" isn't a year", year));
            return;
        }
        const std::chrono::sys_days newYear = std::chrono::year(*number) / std::chrono::January / 1;
        firstWeekday = static_cast<int>(std::chrono::weekday(newYear).iso_encoding()) - 1;
    }

    void readWeekly(const KilnElement& element) {
        const auto [names, place] = readString(element, "days");
        const PatternIndex hours = readHours(element);
        const auto words = wordsOf(names);
        if (words.empty()) {
            fail(place, "expected weekdays such as mon and tue");
        }
        for (const std::string_view word : words) {
            const auto day = std::ranges::find(WeekdayNames, word);
            if (day == WeekdayNames.end()) {
                fail(place,
                     fmt::format("\"{}\" isn't a weekday; expected mon, tue, wed, thu, fri, sat or sun",
                                 word));
                return;
            }
            weekly[static_cast<std::size_t>(day - WeekdayNames.begin())] = hours;
        }
    }

    void readDay(const KilnElement& element) {
        const auto [number, place] = readString(element, "number");
        const PatternIndex hours = readHours(element);
        const auto day = readDigits(number, 1, 3);
        if (!day || *day < 1 || *day > WorkingCalendar::DaysPerYear) {
            fail(place, fmt::format("\"{}\" isn't a day of the year from 1 to 365", number));
            return;
        }
        yearly[static_cast<std::size_t>(*day) - 1] = hours;
    }

    void readDate(const KilnElement& element) {
        const auto [date, place] = readString(element, "date");
        const PatternIndex hours = readHours(element);
        const bool hasForm = date.size() == 5 && date[2] == '-';
        const auto month = hasForm ? readDigits(std::string_view(date).substr(0, 2), 2, 2) : std::nullopt;
        const auto day = hasForm ? readDigits(std::string_view(date).substr(3), 2, 2) : std::nullopt;
        const bool isMonth = month && *month >= 1 && *month <= 12;
        if (!isMonth || !day || *day < 1 || *day > DaysOfMonth[static_cast<std::size_t>(*month) - 1]) {
            fail(place, fmt::format("\"{}\" isn't a date MM-DD of a year of 365 days", date));
            return;
        }
        std::size_t index = static_cast<std::size_t>(*day) - 1;
        for (std::size_t each = 0; each + 1 < static_cast<std::size_t>(*month); ++each) {
            index += static_cast<std::size_t>(DaysOfMonth[each]);
        }
        yearly[index] = hours;
    }

    struct PlacedText {
        std::string text;
        std::size_t place;
    };

    /// Text of a string attribute, which has to be there.
    PlacedText readString(const KilnElement& element, std::string_view key) {
        const KilnAttribute* attribute = document->find(element, key);
        if (attribute == nullptr || attribute->kind != KilnAttribute::Kind::String) {
            const std::size_t place = attribute != nullptr ? attribute->valuePosition : element.position;
            fail(place, fmt::format("expected {}:\"…\" in {}", key, element.keyword));
            return {"", place};
        }
        return {attribute->value.plain(), attribute->valuePosition};
    }

    PatternIndex readHours(const KilnElement& element) {
        const auto [hours, place] = readString(element, "hours");
        std::vector<DayPattern::Range> ranges;
        for (const std::string_view word : wordsOf(hours)) {
            const std::size_t dash = word.find('-');
            const auto begin = readTimeOfDay(word.substr(0, dash));
            const auto end = readTimeOfDay(word.substr(std::min(dash, word.size() - 1) + 1));
            if (!begin || !end) {
                fail(place, fmt::format("\"{}\" isn't a range HH:MM-HH:MM", word));
                return FreeDay;
            }
            if (*begin >= *end) {
                fail(place, fmt::format("the range \"{}\" doesn't end behind its beginning", word));
                return FreeDay;
            }
            ranges.push_back({*begin, *end});
        }
        std::ranges::sort(ranges, {}, &DayPattern::Range::begin);
        const auto overlaps = [](const auto& left, const auto& right) { return left.end > right.begin; };
        if (std::ranges::adjacent_find(ranges, overlaps) != ranges.end()) {
            fail(place, fmt::format("ranges overlap in \"{}\"", hours));
            return FreeDay;
        }
        return addPattern(ranges, place);
    }

    PatternIndex addPattern(const std::vector<DayPattern::Range>& ranges, std::size_t place) {
        constexpr std::size_t MostPatterns = 65'535;
        if (ranges.empty()) {
            return FreeDay;
        }
        if (patterns.size() == MostPatterns) {
            fail(place, "the calendar has too many elements");
            return FreeDay;
        }
        patterns.emplace_back(ranges);
        return static_cast<PatternIndex>(patterns.size() - 1);
    }

    void checkKeys(const KilnElement& element, std::initializer_list<std::string_view> known) {
        for (const KilnAttribute& each : document->attributesOf(element)) {
            if (std::ranges::find(known, each.key) == known.end()) {
                fail(each.keyPosition, fmt::format("{} has no attribute \"{}\"", element.keyword, each.key));
            }
        }
    }

    [[nodiscard]] WorkingCalendar::Days patternsOfCycle() const {
        WorkingCalendar::Days days{};
        for (std::size_t day = 0; day < days.size(); ++day) {
            const std::size_t weekday =
                (day + static_cast<std::size_t>(firstWeekday)) % WorkingCalendar::DaysPerWeek;
            const auto& ofYear = yearly[day % WorkingCalendar::DaysPerYear];
            days[day] = ofYear.value_or(weekly[weekday].value_or(daily));
        }
        return days;
    }

    void fail(std::size_t place, const std::string& reason) {
        if (!failure) {
            failure = Error{describePlace(text, place) + ": " + reason};
        }
    }

    std::string_view text;
    const KilnDocument* document = nullptr;
    std::optional<Error> failure;
    std::vector<DayPattern> patterns = std::vector<DayPattern>(1);
    int firstWeekday = 0;  ///< of day 1; 0 is a Monday
    PatternIndex daily = FreeDay;
    std::array<std::optional<PatternIndex>, WorkingCalendar::DaysPerWeek> weekly;
    std::array<std::optional<PatternIndex>, WorkingCalendar::DaysPerYear> yearly;
};

}  // namespace

Result<WorkingCalendar> readCalendarText(std::string_view text) {
    return CalendarReader(text).read();
}

}  // namespace mero
