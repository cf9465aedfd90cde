#pragma once

#include "component/host/sv_string.h"

/// A duration in seconds with its text form YY:DDD:HH:MM:SS, in a base of days a year and hours a day: a year
/// has days-per-year * hours-per-day * 3600 seconds, a day hours-per-day * 3600. The base is 365 and 24
/// unless set.
class MeroCoreTime {
public:
    MeroCoreTime() = default;
    /// A text that isn't a time counts as 0 seconds.
    explicit MeroCoreTime(const SV::String& text);
    MeroCoreTime(double valueInSeconds, double daysOfYear, double hoursOfDay)
        : seconds(valueInSeconds), daysPerYear(daysOfYear), hoursPerDay(hoursOfDay) {}

    /// Keeps the seconds.
    void setBase(double daysOfYear, double hoursOfDay) {
        daysPerYear = daysOfYear;
        hoursPerDay = hoursOfDay;
    }

    /// At least two digits of years, three of days and two of each other, minutes and seconds below 60.
    [[nodiscard]] static bool isTime(const SV::String& text);
    /// Seconds of a text in this base, 0 for a text that isn't a time. Keeps them as the value.
    double _s2d(const SV::String& text);
    /// Text of `valueInSeconds` in this base, rounded to whole seconds, halves up; a negative value has a
    /// leading "-".
    [[nodiscard]] SV::String _d2s(double valueInSeconds) const;
    [[nodiscard]] SV::String asText() const { return _d2s(seconds); }
    [[nodiscard]] double asDouble() const { return seconds; }

private:
    double seconds = 0.0;
    double daysPerYear = 365.0;
    double hoursPerDay = 24.0;
};
