#include "platform/interchange/run_parameters.h"

#include <algorithm>
#include <chrono>
#include <fmt/format.h>

#include "component/host/core_time.h"

namespace mero {

std::string runOptionsOf(const RunParameters& run) {
    std::string options;
    const auto add = [&options](std::string_view option, const auto& value) {
        options += fmt::format("{}--{} {}", options.empty() ? "" : " ", option, value);
    };
    if (run.instances) {
        add("instances", *run.instances);
    }
    if (!run.start.empty()) {
        add("start", run.start);
    }
    if (run.seconds) {
        add("until", timeTextOf(*run.seconds).view());
    }
    if (run.warmUpSeconds) {
        add("warm-up", timeTextOf(*run.warmUpSeconds).view());
    }
    if (run.seed) {
        add("seed", *run.seed);
    }
    if (run.replications) {
        add("replications", *run.replications);
    }
    return options;
}

SV::String timeTextOf(double seconds) {
    constexpr double Longest = 1e12;
    return MeroCoreTime()._d2s(std::min(seconds, Longest));
}

std::string wallClockText(std::int64_t milliseconds) {
    const std::chrono::sys_time<std::chrono::milliseconds> instant{std::chrono::milliseconds(milliseconds)};
    const auto midnight = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss time(std::chrono::floor<std::chrono::seconds>(instant - midnight));
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                       time.hours().count(), time.minutes().count(), time.seconds().count());
}

}  // namespace mero
