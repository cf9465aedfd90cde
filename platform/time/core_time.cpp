#include "component/host/core_time.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>

namespace {

constexpr double SecondsPerHour = 3600.0;
constexpr double SecondsPerMinute = 60.0;

struct TimeFields {
    double years;
    double days;
    double hours;
    double minutes;
    double seconds;
};

std::optional<TimeFields> readTime(std::string_view text) {
    constexpr std::array<std::size_t, 5> FewestDigits{2, 3, 2, 2, 2};
    constexpr std::size_t MostDigits = 15;  // what a double holds exactly
    std::array<double, FewestDigits.size()> values{};
    for (std::size_t field = 0; field < values.size(); ++field) {
        const bool isLast = field + 1 == values.size();
        const std::size_t end = isLast ? text.size() : text.find(':');
        if (end == std::string_view::npos || end < FewestDigits[field] || end > MostDigits) {
            return std::nullopt;
        }
        const std::string_view digits = text.substr(0, end);
        if (digits.find_first_not_of("0123456789") != std::string_view::npos) {
            return std::nullopt;
        }
        const auto status = std::from_chars(digits.data(), digits.data() + digits.size(), values[field]).ec;
        if (status != std::errc()) {
            return std::nullopt;
        }
        text.remove_prefix(isLast ? end : end + 1);
    }
    if (values[3] >= SecondsPerMinute || values[4] >= SecondsPerMinute) {
        return std::nullopt;
    }
    return TimeFields{values[0], values[1], values[2], values[3], values[4]};
}

double roundHalfUp(double value) {
    const double below = std::floor(value);
    return value - below >= 0.5 ? below + 1.0 : below;
}

/// Takes whole units off `seconds`; none if the base gives the unit no length.
double takeUnits(double& seconds, double unit) {
    if (!(unit > 0.0) || !std::isfinite(unit)) {
        return 0.0;
    }
    const double rest = std::fmod(seconds, unit);
    const double count = std::round((seconds - rest) / unit);
    seconds = rest;
    return count;
}

}  // namespace

MeroCoreTime::MeroCoreTime(const SV::String& text) {
    _s2d(text);
}

bool MeroCoreTime::isTime(const SV::String& text) {
    return readTime(text.view()).has_value();
}

double MeroCoreTime::_s2d(const SV::String& text) {
    const auto fields = readTime(text.view());
    const double day = hoursPerDay * SecondsPerHour;
    seconds = fields
                  ? fields->years * daysPerYear * day + fields->days * day + fields->hours * SecondsPerHour +
                        fields->minutes * SecondsPerMinute + fields->seconds
                  : 0.0;
    return seconds;
}

SV::String MeroCoreTime::_d2s(double valueInSeconds) const {
    if (!std::isfinite(valueInSeconds)) {
        return SV::String(valueInSeconds);
    }
    const double rounded = roundHalfUp(valueInSeconds);
    double rest = std::fabs(rounded);
    const double day = hoursPerDay * SecondsPerHour;
    const double years = takeUnits(rest, daysPerYear * day);
    const double days = takeUnits(rest, day);
    // A base with fractions leaves a fraction of a second behind whole days.
    rest = roundHalfUp(rest);
    const double hours = takeUnits(rest, SecondsPerHour);
    const double minutes = takeUnits(rest, SecondsPerMinute);
    std::array<char, 512> text{};
    std::snprintf(text.data(), text.size(), "%s%02.0f:%03.0f:%02.0f:%02.0f:%02.0f", rounded < 0.0 ? "-" : "",
                  years, days, hours, minutes, rest);
    return text.data();
}
