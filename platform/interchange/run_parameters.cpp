#include "platform/interchange/run_parameters.h"

#include <algorithm>
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

}  // namespace mero
