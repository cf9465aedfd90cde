#include "platform/interchange/iso_duration.h"

#include <array>
#include <charconv>

namespace mero {

std::optional<double> secondsOfDuration(std::string_view text) {
    if (!text.starts_with("P")) {
        return std::nullopt;
    }
    text.remove_prefix(1);
    double seconds = 0.0;
    bool inTime = false;
    bool found = false;
    while (!text.empty()) {
        if (text.front() == 'T' && !inTime) {
            inTime = true;
            text.remove_prefix(1);
            continue;
        }
        double number = 0.0;
        const auto [end, status] =
            std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
        if (status != std::errc{} || end == text.data() + text.size() || number < 0.0) {
            return std::nullopt;
        }
        const std::string_view units = inTime ? "HMS" : "WD";
        constexpr std::array TimeUnits{3600.0, 60.0, 1.0};
        constexpr std::array DateUnits{604800.0, 86400.0};
        const std::size_t unit = units.find(*end);
        if (unit == std::string_view::npos) {
            return std::nullopt;
        }
        seconds += number * (inTime ? TimeUnits[unit] : DateUnits[unit]);
        found = true;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    }
    return found ? std::optional(seconds) : std::nullopt;
}

}  // namespace mero
