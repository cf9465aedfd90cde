#pragma once

#include <cstdint>

#include "component/host/sv_string.h"

namespace SV {

/// Day of the Gregorian calendar.
class Date {
public:
    Date(int dayOfMonth, int monthOfYear, int yearNumber)
        : day(dayOfMonth), month(monthOfYear), year(yearNumber) {}
    /// Today in local time.
    static Date Today();

    [[nodiscard]] int GetDay() const { return day; }
    [[nodiscard]] int GetMonth() const { return month; }
    [[nodiscard]] int GetYear() const { return year; }
    /// 1 on the first of January.
    [[nodiscard]] int GetDayOfYear() const;
    [[nodiscard]] bool IsValid() const;

private:
    int day;
    int month;
    int year;
};

/// Time of day, packed as the decimal number HHMMSShh (hh: hundredths of a second).
class Time {
public:
    explicit Time(std::int32_t packedTime = 0) : packed(packedTime) {}
    Time(int hour, int minute, int second = 0) : packed(((hour * 100 + minute) * 100 + second) * 100) {}
    /// Now in local time.
    static Time Now();

    [[nodiscard]] std::int32_t GetTime() const { return packed; }

private:
    std::int32_t packed;
};

class DateTime {
public:
    DateTime(const Date& date, const Time& time) : datePart(date), timePart(time) {}
    [[nodiscard]] const Date& GetDate() const { return datePart; }
    [[nodiscard]] const Time& GetTime() const { return timePart; }

private:
    Date datePart;
    Time timePart;
};

/// Display of dates and times in the current language: "2026-11-22" and "08:05:09" where it has no rule of
/// its own.
class International {
public:
    [[nodiscard]] static String GetDate(const Date& date, bool withCentury);
    [[nodiscard]] static String GetTime(const Time& time, bool withSeconds, bool with100ths);
};

}  // namespace SV
