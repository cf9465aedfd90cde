#include "platform/interchange/iso_time.h"

#include <chrono>

namespace mero {

namespace {

constexpr std::int64_t MillisecondsOfMinute = 60'000;

/// Takes pieces off the front of a text.
class Pieces {
public:
    explicit Pieces(std::string_view all) : text(all) {}

    [[nodiscard]] bool atEnd() const { return text.empty(); }
    bool take(char wanted) {
        if (text.empty() || text.front() != wanted) {
            return false;
        }
        text.remove_prefix(1);
        return true;
    }
    /// Exactly so many digits.
    std::optional<int> number(std::size_t digits) {
        int value = 0;
        if (text.size() < digits) {
            return std::nullopt;
        }
        for (const char digit : text.substr(0, digits)) {
            if (digit < '0' || digit > '9') {
                return std::nullopt;
            }
            value = value * 10 + (digit - '0');
        }
        text.remove_prefix(digits);
        return value;
    }

private:
    std::string_view text;
};

std::optional<std::chrono::sys_days> takeDate(Pieces& pieces) {
    const auto year = pieces.number(4);
    const char separator = pieces.take('-') ? '-' : '/';
    if (!year || (separator == '/' && !pieces.take('/'))) {
        return std::nullopt;
    }
    const auto month = pieces.number(2);
    if (!month || !pieces.take(separator)) {
        return std::nullopt;
    }
    const auto day = pieces.number(2);
    if (!day) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date(std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    return date.ok() ? std::optional<std::chrono::sys_days>(date) : std::nullopt;
}

/// The digits behind the point; the first three count.
std::optional<int> takeFraction(Pieces& pieces) {
    int milliseconds = 0;
    int weight = 100;
    auto digit = pieces.number(1);
    if (!digit) {
        return std::nullopt;
    }
    for (; digit; digit = pieces.number(1)) {
        milliseconds += *digit * weight;
        weight /= 10;
    }
    return milliseconds;
}

std::optional<std::int64_t> takeClock(Pieces& pieces) {
    const auto hour = pieces.number(2);
    if (!hour || *hour > 24 || !pieces.take(':')) {
        return std::nullopt;
    }
    const auto minute = pieces.number(2);
    if (!minute || *minute > 59) {
        return std::nullopt;
    }
    std::int64_t result = (*hour * 60LL + *minute) * MillisecondsOfMinute;
    if (pieces.take(':')) {
        const auto second = pieces.number(2);
        if (!second || *second > 60) {
            return std::nullopt;
        }
        result += *second * 1000LL;
        if (pieces.take('.') || pieces.take(',')) {
            const auto fraction = takeFraction(pieces);
            if (!fraction) {
                return std::nullopt;
            }
            result += *fraction;
        }
    }
    return *hour < 24 || result == MillisecondsOfMinute * 60 * 24 ? std::optional(result) : std::nullopt;
}

std::optional<std::int64_t> takeOffset(Pieces& pieces) {
    if (pieces.atEnd() || pieces.take('Z') || pieces.take('z')) {
        return 0;
    }
    const bool ahead = pieces.take('+');
    if (!ahead && !pieces.take('-')) {
        return std::nullopt;
    }
    const auto hours = pieces.number(2);
    if (!hours || *hours > 23) {
        return std::nullopt;
    }
    std::int64_t offset = *hours * 60LL * MillisecondsOfMinute;
    if (!pieces.atEnd()) {
        pieces.take(':');
        const auto minutes = pieces.number(2);
        if (!minutes || *minutes > 59) {
            return std::nullopt;
        }
        offset += *minutes * MillisecondsOfMinute;
    }
    return ahead ? offset : -offset;
}

}  // namespace

std::optional<IsoTime> parseIsoTime(std::string_view text) {
    Pieces pieces(text);
    const auto date = takeDate(pieces);
    if (!date || !(pieces.take('T') || pieces.take(' ') || pieces.take('t'))) {
        return std::nullopt;
    }
    const auto clock = takeClock(pieces);
    if (!clock) {
        return std::nullopt;
    }
    const auto offset = takeOffset(pieces);
    if (!offset || !pieces.atEnd()) {
        return std::nullopt;
    }
    const auto midnight = std::chrono::milliseconds(date->time_since_epoch()).count();
    return IsoTime{midnight + *clock - *offset, *offset};
}

}  // namespace mero
