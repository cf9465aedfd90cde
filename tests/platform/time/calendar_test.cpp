#include "component/host/calendar.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::int64_t Hour = 3600;
constexpr std::int64_t Day = 24 * Hour;
constexpr std::int64_t Year = 365 * Day;
constexpr std::int64_t Cycle = 7 * Year;
constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();

MeroCalendar makeCalendar(const std::string& text, std::int64_t startTime = 0) {
    MeroCalendar calendar(0, startTime, 1, 365);
    EXPECT_EQ(calendar.initializeCalendar(text), 0) << text << "\n" << calendar.getErrorText().view();
    return calendar;
}

std::int64_t workBetween(const MeroCalendar& calendar, std::int64_t from, std::int64_t to) {
    std::int64_t sum = -1;
    EXPECT_EQ(calendar.getTimeIntervalsSumInBetween(from, to, sum), 0);
    return sum;
}

struct Interval {
    bool isWork;
    std::int64_t end;

    friend bool operator==(const Interval&, const Interval&) = default;
};

Interval intervalAt(const MeroCalendar& calendar, std::int64_t time) {
    int inInterval = -1;
    Interval interval{};
    EXPECT_EQ(calendar.isInCurrentInterval(time, interval.end, inInterval), 0);
    interval.isWork = inInterval == 1;
    return interval;
}

/// Also tests that the common calendar works exactly when both do.
bool haveCommonTime(const MeroCalendar& left, const MeroCalendar& right) {
    MeroCalendar common(0, 0, 1, 365);
    MeroCalendar reversed(0, 0, 1, 365);
    const int code = left.intersection(right, common);
    EXPECT_EQ(right.intersection(left, reversed), code);
    if (code != 0) {
        EXPECT_EQ(code, CalendarNothingInCommon);
        return false;
    }
    for (std::int64_t time = -2 * Day; time < 9 * Day; time += 1709) {
        const bool both = intervalAt(left, time).isWork && intervalAt(right, time).isWork;
        EXPECT_EQ(intervalAt(common, time).isWork, both) << time;
        EXPECT_EQ(intervalAt(reversed, time).isWork, both) << time;
    }
    return true;
}

TEST(CalendarTest, RanksElementsAndCountsDaysFromAMonday) {
    const std::string text =
        "CALENDAR \"Office\"\n"
        "DATE date:\"01-03\" hours:\"10:00-11:00\"\n"
        "DAY number:\"2\" hours:\"\"\n"
        "WEEKLY days:\"sat sun\" hours:\"09:00-10:00\"\n"
        "WEEKLY days:\"sun\" hours:\"\"\n"
        "DAILY hours:\"13:00-17:00 08:00-12:00\"";
    const MeroCalendar calendar = makeCalendar(text);
    const std::vector<std::int64_t> hours{8, 0, 1, 8, 8, 1, 0, 8, 8};
    for (std::size_t day = 0; day < hours.size(); ++day) {
        const auto begin = static_cast<std::int64_t>(day) * Day;
        EXPECT_EQ(workBetween(calendar, begin, begin + Day), hours[day] * Hour) << day;
    }
    // 365 days are 52 weeks and one day: the second year begins on a Tuesday; DAY and DATE come again.
    EXPECT_EQ(workBetween(calendar, Year + Day, Year + 2 * Day), 0);
    EXPECT_EQ(workBetween(calendar, Year + 4 * Day, Year + 5 * Day), Hour);
    EXPECT_EQ(workBetween(calendar, Year + 5 * Day, Year + 6 * Day), 0);
}

TEST(CalendarTest, AYearGivesTheWeekdayOfItsFirstDay) {
    // The first of January 2026 is a Thursday, so day 3 is a Saturday.
    const MeroCalendar calendar =
        makeCalendar("CALENDAR year:\"2026\" WEEKLY days:\"sat\" hours:\"00:00-24:00\"");
    EXPECT_EQ(workBetween(calendar, 2 * Day, 3 * Day), Day);
    EXPECT_EQ(workBetween(calendar, 0, 7 * Day), Day);
}

TEST(CalendarTest, TimeZeroIsTheStartWithinTheYear) {
    const MeroCalendar calendar =
        makeCalendar("CALENDAR DAY number:\"10\" hours:\"08:00-09:00\"", 9 * Day + 8 * Hour + 1800);
    EXPECT_EQ(intervalAt(calendar, 0), (Interval{true, 1800}));
    EXPECT_EQ(intervalAt(calendar, -1801), (Interval{false, -1800}));
    EXPECT_EQ(intervalAt(calendar, 1800), (Interval{false, Year - 1800}));
    EXPECT_EQ(workBetween(calendar, -Year, Year), 2 * Hour);
}

TEST(CalendarTest, AnIntervalHoldsItsBeginningAndNotItsEndAndGoesOverMidnight) {
    const MeroCalendar calendar = makeCalendar(
        "CALENDAR DAILY hours:\"20:00-22:00 22:00-24:00 00:00-04:00\" WEEKLY days:\"tue\" hours:\"\"");
    EXPECT_EQ(intervalAt(calendar, 4 * Hour - 1), (Interval{true, 4 * Hour}));
    EXPECT_EQ(intervalAt(calendar, 4 * Hour), (Interval{false, 20 * Hour}));
    EXPECT_EQ(intervalAt(calendar, 20 * Hour), (Interval{true, Day}));
    EXPECT_EQ(intervalAt(calendar, Day), (Interval{false, 2 * Day}));
    EXPECT_EQ(intervalAt(calendar, 2 * Day + 21 * Hour), (Interval{true, 3 * Day + 4 * Hour}));
    EXPECT_EQ(intervalAt(calendar, -Hour), (Interval{true, 4 * Hour}));
}

TEST(CalendarTest, AStateThatNeverChangesNeverEnds) {
    EXPECT_EQ(intervalAt(makeCalendar("CALENDAR\nDAILY hours:\"00:00-24:00\""), 5), (Interval{true, Never}));
    EXPECT_EQ(intervalAt(makeCalendar("CALENDAR"), 5), (Interval{false, Never}));
}

TEST(CalendarTest, CoversASpanOnlyWithWorkInEverySecond) {
    const MeroCalendar calendar = makeCalendar("CALENDAR DAILY hours:\"08:00-12:00 12:00-13:00\"");
    const struct {
        std::int64_t from;
        std::int64_t to;
        int covered;
    } cases[] = {{8 * Hour, 13 * Hour, 1},
                 {8 * Hour, 13 * Hour + 1, 0},
                 {8 * Hour - 1, 9 * Hour, 0},
                 {Hour, Hour, 1},
                 {8 * Hour, Day + 9 * Hour, 0}};
    for (const auto& [from, to, expected] : cases) {
        int covered = -1;
        EXPECT_EQ(calendar.isCoveredWholly(from, to, covered), 0);
        EXPECT_EQ(covered, expected) << from << " to " << to;
    }
    int covered = -1;
    std::int64_t sum = -1;
    EXPECT_NE(calendar.isCoveredWholly(2, 1, covered), 0);
    EXPECT_NE(calendar.getTimeIntervalsSumInBetween(2, 1, sum), 0);
    EXPECT_EQ(sum, -1);
}

TEST(CalendarTest, FindsCommonTimeAnywhereInTheCycle) {
    const std::string monday = "CALENDAR WEEKLY days:\"mon\" hours:\"08:00-12:00\"";
    EXPECT_TRUE(haveCommonTime(makeCalendar(monday), makeCalendar("CALENDAR DAILY hours:\"11:59-20:00\"")));
    EXPECT_FALSE(haveCommonTime(makeCalendar(monday), makeCalendar("CALENDAR DAILY hours:\"12:00-20:00\"")));
    EXPECT_FALSE(haveCommonTime(makeCalendar(monday), makeCalendar("CALENDAR")));
    // Day 3 is a Monday only in some of the seven years.
    EXPECT_TRUE(haveCommonTime(makeCalendar(monday),
                               makeCalendar("CALENDAR DAY number:\"3\" hours:\"08:00-12:00\"")));
    // Calendars with different starts meet at the same time of the run.
    EXPECT_FALSE(haveCommonTime(makeCalendar("CALENDAR DAILY hours:\"08:00-12:00\""),
                                makeCalendar("CALENDAR DAILY hours:\"08:00-12:00\"", 4 * Hour)));
    EXPECT_TRUE(haveCommonTime(makeCalendar("CALENDAR DAILY hours:\"00:00-01:00\""),
                               makeCalendar("CALENDAR DAILY hours:\"22:30-23:30\"", 23 * Hour)));
}

TEST(CalendarTest, RefusesBadTextsWithThePlaceAndKeepsTheOldOne) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", "line 1, column 1: expected CALENDAR"},
        {"DAILY hours:\"08:00-12:00\"", "line 1, column 1: expected CALENDAR"},
        {"CALENDAR\nCALENDAR", "line 2, column 1: CALENDAR stands here"},
        {"CALENDAR\nYEARLY hours:\"\"", "line 2, column 1: YEARLY stands here"},
        {"CALENDAR\nDAILY", "line 2, column 1: expected hours"},
        {"CALENDAR\nDAILY hours", "line 2, column 7: expected hours"},
        {"CALENDAR\nDAILY \"x\" hours:\"\"", "line 2, column 1: DAILY takes no value"},
        {"CALENDAR\nDAILY hours:\"\" day:\"1\"", "line 2, column 16: DAILY has no attribute \"day\""},
        {"CALENDAR\nDAILY hours:\"8:00-12:00\"", "line 2, column 13: \"8:00-12:00\" isn't a range"},
        {"CALENDAR\nDAILY hours:\"08:00\"", "line 2, column 13: \"08:00\" isn't a range"},
        {"CALENDAR\nDAILY hours:\"08:60-12:00\"", "isn't a range"},
        {"CALENDAR\nDAILY hours:\"20:00-24:01\"", "isn't a range"},
        {"CALENDAR\nDAILY hours:\"20:00-25:00\"", "isn't a range"},
        {"CALENDAR\nDAILY hours:\"12:00-08:00\"", "doesn't end behind its beginning"},
        {"CALENDAR\nDAILY hours:\"08:00-08:00\"", "doesn't end behind its beginning"},
        {"CALENDAR\nDAILY hours:\"10:00-12:00 08:00-10:01\"", "ranges overlap"},
        {"CALENDAR\nWEEKLY days:\"mon moon\" hours:\"\"", "\"moon\" isn't a weekday"},
        {"CALENDAR\nWEEKLY days:\"\" hours:\"\"", "expected weekdays"},
        {"CALENDAR\nDAY number:\"366\" hours:\"\"", "\"366\" isn't a day of the year"},
        {"CALENDAR\nDAY number:\"0\" hours:\"\"", "\"0\" isn't a day of the year"},
        {"CALENDAR\nDATE date:\"02-29\" hours:\"\"", "\"02-29\" isn't a date"},
        {"CALENDAR\nDATE date:\"13-01\" hours:\"\"", "\"13-01\" isn't a date"},
        {"CALENDAR year:\"next\"", "line 1, column 15: \"next\" isn't a year"},
        {"CALENDAR\nDAILY hours:\"08:00-12:00", "line 2, column 13: the string that begins here"},
    };
    MeroCalendar calendar = makeCalendar("CALENDAR DAILY hours:\"08:00-12:00\"");
    for (const auto& [text, error] : cases) {
        EXPECT_NE(calendar.initializeCalendar(text), 0) << text;
        EXPECT_NE(calendar.getErrorText().Search(error), SV::String::NotFound)
            << text << "\n"
            << calendar.getErrorText().view();
        EXPECT_EQ(workBetween(calendar, 0, Day), 4 * Hour);
    }
    EXPECT_EQ(calendar.initializeCalendar("CALENDAR"), 0);
    EXPECT_TRUE(calendar.getErrorText().IsEmpty());
}

TEST(CalendarTest, FailsBeforeATextWasRead) {
    const MeroCalendar calendar(0, 0, 1, 365);
    std::int64_t sum = 0;
    int flag = 0;
    EXPECT_NE(calendar.getTimeIntervalsSumInBetween(0, 1, sum), 0);
    EXPECT_NE(calendar.isInCurrentInterval(0, sum, flag), 0);
    MeroCalendar common(0, 0, 1, 365);
    EXPECT_NE(calendar.intersection(calendar, common), 0);
}

TEST(CalendarTest, StandsTheLargestTimes) {
    const MeroCalendar calendar = makeCalendar("CALENDAR DAILY hours:\"08:00-12:00\"", 5 * Year);
    constexpr std::int64_t First = std::numeric_limits<std::int64_t>::min();
    EXPECT_GT(workBetween(calendar, First, Never), 0);
    EXPECT_GT(intervalAt(calendar, Never).end, 0);
    int covered = -1;
    EXPECT_EQ(calendar.isCoveredWholly(First, Never, covered), 0);
    EXPECT_EQ(covered, 0);
}

// The same rules once more, in the plainest way: each second is looked up among all elements.

struct Element {
    enum Kind { Daily, Weekly, Yearly } kind;
    int day;                                  // weekday from 0, or day of the year from 0
    std::vector<std::pair<int, int>> ranges;  // minutes
};

std::string timeText(int minutes) {
    std::string text = "00:00";
    text[0] = static_cast<char>('0' + minutes / 600);
    text[1] = static_cast<char>('0' + minutes / 60 % 10);
    text[3] = static_cast<char>('0' + minutes % 60 / 10);
    text[4] = static_cast<char>('0' + minutes % 10);
    return text;
}

std::string textOf(const std::vector<Element>& elements) {
    static const std::vector<std::string> weekdays{"mon", "tue", "wed", "thu", "fri", "sat", "sun"};
    std::string text = "CALENDAR";
    for (const auto& [kind, day, ranges] : elements) {
        text += kind == Element::Daily ? "\nDAILY"
                : kind == Element::Weekly
                    ? "\nWEEKLY days:\"" + weekdays[static_cast<std::size_t>(day)] + "\""
                    : "\nDAY number:\"" + std::to_string(day + 1) + "\"";
        text += " hours:\"";
        for (const auto& [begin, end] : ranges) {
            text += timeText(begin) + "-" + timeText(end) + " ";
        }
        text += "\"";
    }
    return text;
}

bool worksAt(const std::vector<Element>& elements, std::int64_t time) {
    const std::int64_t second = (time % Cycle + Cycle) % Cycle;
    const auto day = static_cast<int>(second / Day);
    const Element* found = nullptr;
    for (const Element& each : elements) {
        const bool fits = each.kind == Element::Daily ||
                          (each.kind == Element::Weekly && each.day == day % 7) ||
                          (each.kind == Element::Yearly && each.day == day % 365);
        if (fits && (found == nullptr || each.kind >= found->kind)) {
            found = &each;
        }
    }
    const auto minute = static_cast<int>(second % Day / 60);
    return found != nullptr && std::ranges::any_of(found->ranges, [minute](const auto& range) {
               return minute >= range.first && minute < range.second;
           });
}

std::vector<std::pair<int, int>> randomRanges(std::mt19937& random) {
    std::vector<std::pair<int, int>> ranges;
    int at = random() % 3 == 0 ? 0 : static_cast<int>(random() % 600);
    while (at < 1440 && ranges.size() < 5 && random() % 8 != 0) {
        const int end = random() % 4 == 0 ? 1440 : std::min(1440, at + 1 + static_cast<int>(random() % 400));
        ranges.emplace_back(at, end);
        at = end + (random() % 3 == 0 ? 0 : static_cast<int>(random() % 200));
    }
    return ranges;
}

std::vector<Element> randomElements(std::mt19937& random) {
    std::vector<Element> elements;
    const auto count = random() % 8;
    for (unsigned each = 0; each < count; ++each) {
        const auto kind = static_cast<Element::Kind>(random() % 3);
        const int day = static_cast<int>(kind == Element::Weekly ? random() % 7 : random() % 12);
        elements.push_back({kind, day, randomRanges(random)});
    }
    return elements;
}

/// Changes happen on whole minutes of the calendar.
std::int64_t nextChange(const std::vector<Element>& elements, std::int64_t time) {
    const bool works = worksAt(elements, time);
    std::int64_t next = (time + Cycle) / 60 * 60 - Cycle + 60;
    while (next < time + 3 * Day && worksAt(elements, next) == works) {
        next += 60;
    }
    return next;
}

/// Random elements name days up to the 12th only, so three weeks of each year show all that there is.
bool haveCommonMinute(const std::vector<Element>& left, const std::vector<Element>& right) {
    for (std::int64_t year = 0; year < 7; ++year) {
        for (std::int64_t time = year * Year; time < year * Year + 21 * Day; time += 60) {
            if (worksAt(left, time) && worksAt(right, time)) {
                return true;
            }
        }
    }
    return false;
}

TEST(CalendarTest, AgreesWithLookingUpEverySecondAmongTheElements) {
    std::mt19937 random(11);
    for (int round = 0; round < 60; ++round) {
        const std::vector<Element> elements = randomElements(random);
        const auto start = static_cast<std::int64_t>(random() % Year);
        SCOPED_TRACE(textOf(elements) + "\nstart " + std::to_string(start));
        const MeroCalendar calendar = makeCalendar(textOf(elements), start);
        const std::int64_t from = (static_cast<std::int64_t>(random() % 5) - 1) * Year +
                                  static_cast<std::int64_t>(random() % (13 * Day)) - start;
        std::int64_t sum = 0;
        for (std::int64_t time = from; time < from + Day; ++time) {
            const bool works = worksAt(elements, time + start);
            if (time % 1801 == 0) {
                ASSERT_EQ(workBetween(calendar, from, time), sum);
                const Interval interval = intervalAt(calendar, time);
                ASSERT_EQ(interval.isWork, works);
                ASSERT_EQ(std::min(interval.end, time + 3 * Day),
                          std::min(nextChange(elements, time + start) - start, time + 3 * Day));
            }
            sum += works ? 1 : 0;
        }
        const std::vector<Element> others = randomElements(random);
        ASSERT_EQ(haveCommonTime(makeCalendar(textOf(elements)), makeCalendar(textOf(others))),
                  haveCommonMinute(elements, others))
            << textOf(others);
    }
}

}  // namespace
