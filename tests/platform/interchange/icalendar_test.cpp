#include "platform/interchange/icalendar.h"

#include "component/host/calendar.h"

#include "tests/platform/interchange/parameter_import.h"

namespace mero {

namespace {

std::string event(const std::string& lines) {
    return "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\n" + lines + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
}

TEST(ICalendar, RulesOfDaysWeeksAndYearsBecomeElements) {
    const std::vector<std::pair<std::string, std::string>> table{
        {"DTSTART:20260105T080000\nDTEND:20260105T120000\nRRULE:FREQ=DAILY", "DAILY hours:\"08:00-12:00\""},
        {"DTSTART:20260106T080000\nDURATION:PT4H\nRRULE:FREQ=WEEKLY",
         "WEEKLY days:\"tue\" hours:\"08:00-12:00\""},
        {"DTSTART;TZID=Europe/Berlin:20260105T220000\nDTEND:20260106T060000\nRRULE:FREQ=WEEKLY;BYDAY=SU,\n "
         "MO",
         "WEEKLY days:\"mon\" hours:\"00:00-06:00 22:00-24:00\"\nWEEKLY days:\"tue\" hours:\"00:00-06:00\"\n"
         "WEEKLY days:\"sun\" hours:\"22:00-24:00\""},
        {"DTSTART;VALUE=DATE:20261224\nDTEND;VALUE=DATE:20261226\nRRULE:FREQ=YEARLY",
         "DATE date:\"12-24\" hours:\"00:00-24:00\"\nDATE date:\"12-25\" hours:\"00:00-24:00\""}};
    for (const auto& [lines, elements] : table) {
        const TranslatedCalendar translated = translateICalendar(event(lines), "C");
        EXPECT_EQ(translated.text, "CALENDAR \"C\"\n" + elements) << lines;
        EXPECT_TRUE(translated.notes.empty()) << translated.notes.front();
        MeroCalendar calendar(0, 0, 1, 365);
        EXPECT_EQ(calendar.initializeCalendar(SV::String(translated.text)), 0) << translated.text;
    }
}

TEST(ICalendar, WhatACalendarCannotSayIsNoted) {
    const std::vector<std::pair<std::string, std::string>> table{
        {"DTSTART:20260105T080000\nDTEND:20260105T120000\nRRULE:FREQ=MONTHLY",
         "the rule \"FREQ=MONTHLY\" isn't used"},
        {"DTSTART:20260105T080000\nDTEND:20260105T120000\nRRULE:FREQ=DAILY;INTERVAL=2",
         "the rule \"FREQ=DAILY;INTERVAL=2\" isn't used"},
        {"DTSTART:20260105T080000\nDTEND:20260105T120000\nRRULE:FREQ=WEEKLY;COUNT=8",
         "the repetition of an event has no end here"},
        {"DTSTART:20260105T080000\nDTEND:20260105T120000\nEXDATE:20260112T080000\nRRULE:FREQ=WEEKLY",
         "single dates that are excluded or added aren't used"},
        {"DTSTART:20260105T080000\nDTEND:20260105T120000", "single events come again every year"},
        {"DTSTART:20240229\nRRULE:FREQ=YEARLY", "29 February isn't used"},
        {"DTSTART:tomorrow", "an event without a start and end that can be read isn't used"},
        {"DTSTART:20260105T080000\nDTEND:20260105T070000",
         "an event without a start and end that can be read isn't used"}};
    for (const auto& [lines, note] : table) {
        const TranslatedCalendar translated = translateICalendar(event(lines), "C");
        ASSERT_FALSE(translated.notes.empty()) << lines;
        EXPECT_EQ(translated.notes.front(), note);
    }
    EXPECT_TRUE(translateICalendar("", "C").text.empty());
}

TEST(ICalendar, RealFilesGiveTheirHours) {
    const auto hours = translateICalendar(test::dataFile("calendars/rfc_7953_2.ics"), "Offices");
    EXPECT_EQ(hours.text, "CALENDAR \"Offices\"\nWEEKLY days:\"mon tue wed thu\" hours:\"09:00-17:00\"")
        << "the second rule, called Friday's, begins on a Thursday";
    const auto daily = translateICalendar(test::dataFile("calendars/daily_recur.ics"), "Daily");
    EXPECT_EQ(daily.text, "CALENDAR \"Daily\"\nDAILY hours:\"05:00-06:00\"");
}

}  // namespace

}  // namespace mero
