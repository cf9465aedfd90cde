#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "component/host/sv_datetime.h"

namespace SV {

namespace {

struct LocalNow {
    std::tm fields{};
    int hundredths = 0;
};

LocalNow localNow() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t wholeSeconds = std::chrono::system_clock::to_time_t(now);
    LocalNow result;
    localtime_r(&wholeSeconds, &result.fields);
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    result.hundredths = static_cast<int>(milliseconds / 10);
    return result;
}

std::chrono::year_month_day calendarDay(const Date& date) {
    return std::chrono::year(date.GetYear()) / std::chrono::month(static_cast<unsigned>(date.GetMonth())) /
           std::chrono::day(static_cast<unsigned>(date.GetDay()));
}

}  // namespace

Date Date::Today() {
    const std::tm now = localNow().fields;
    return {now.tm_mday, now.tm_mon + 1, now.tm_year + 1900};
}

int Date::GetDayOfYear() const {
    const std::chrono::sys_days today = calendarDay(*this);
    const std::chrono::sys_days newYear = std::chrono::year(year) / std::chrono::January / 1;
    return static_cast<int>((today - newYear).count()) + 1;
}

bool Date::IsValid() const {
    return day > 0 && month > 0 && calendarDay(*this).ok();
}

Time Time::Now() {
    const LocalNow now = localNow();
    const Time time(now.fields.tm_hour, now.fields.tm_min, now.fields.tm_sec);
    return Time(time.GetTime() + now.hundredths);
}

String International::GetDate(const Date& date, bool withCentury) {
    std::array<char, 48> text{};
    constexpr int Century = 100;
    std::snprintf(text.data(), text.size(), withCentury ? "%04d-%02d-%02d" : "%02d-%02d-%02d",
                  withCentury ? date.GetYear() : date.GetYear() % Century, date.GetMonth(), date.GetDay());
    return text.data();
}

String International::GetTime(const Time& time, bool withSeconds, bool with100ths) {
    const std::int32_t packed = time.GetTime();
    const int hour = packed / 1000000;
    const int minute = packed / 10000 % 100;
    const int second = packed / 100 % 100;
    std::array<char, 64> text{};
    if (!withSeconds) {
        std::snprintf(text.data(), text.size(), "%02d:%02d", hour, minute);
    } else if (!with100ths) {
        std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", hour, minute, second);
    } else {
        std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%02d", hour, minute, second, packed % 100);
    }
    return text.data();
}

}  // namespace SV
