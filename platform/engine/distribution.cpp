#include "platform/engine/distribution.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>

namespace mero {

class DistributionParser {
public:
    explicit DistributionParser(std::string_view parsedText) : text(parsedText) {}

    Result<Distribution> parse() {
        Distribution result;
        if (!parseDistribution(result, 0)) {
            return *failure;
        }
        skipBlanks();
        if (place != text.size()) {
            refuse(place, "the end of the distribution");
            return *failure;
        }
        return result;
    }

private:
    struct Form {
        std::string_view name;
        Distribution::Kind kind;
        std::size_t parameters;
    };
    static constexpr std::array Forms = {Form{"fixed", Distribution::Kind::Fixed, 1},
                                         Form{"uniform", Distribution::Kind::Uniform, 2},
                                         Form{"triangular", Distribution::Kind::Triangular, 3},
                                         Form{"exponential", Distribution::Kind::Exponential, 1},
                                         Form{"normal", Distribution::Kind::Normal, 2},
                                         Form{"lognormal", Distribution::Kind::Lognormal, 2},
                                         Form{"gamma", Distribution::Kind::Gamma, 2},
                                         Form{"mixture", Distribution::Kind::Mixture, 0}};
    static constexpr int DepthLimit = 16;

    bool parseDistribution(Distribution& result, int depth) {
        const std::size_t begin = skipBlanks();
        const std::string_view name = readWord();
        const auto* const form =
            std::find_if(Forms.begin(), Forms.end(), [&](const Form& each) { return each.name == name; });
        if (form == Forms.end()) {
            return refuse(begin, "the name of a distribution");
        }
        if (depth > DepthLimit) {
            return report(begin, "mixtures are nested too deeply");
        }
        result.kind = form->kind;
        if (!expect('(')) {
            return false;
        }
        const std::size_t parameters = place;
        const bool read = form->kind == Distribution::Kind::Mixture ? parseParts(result, depth)
                                                                    : parseParameters(result, *form);
        return read && expect(')') && check(result, parameters) && parseLimits(result);
    }

    bool parseParts(Distribution& result, int depth) {
        do {
            if (!parseDistribution(result.parts.emplace_back(), depth + 1)) {
                return false;
            }
        } while (take(';'));
        return true;
    }

    bool parseParameters(Distribution& result, const Form& form) {
        const std::array<double*, 3> parameters = {&result.first, &result.second, &result.third};
        for (std::size_t index = 0; index < form.parameters; ++index) {
            if ((index != 0 && !expect(',')) || !readNumber(*parameters[index])) {
                return false;
            }
        }
        return true;
    }

    bool parseLimits(Distribution& result) {
        skipBlanks();
        if (!text.substr(place).starts_with("in")) {
            return true;
        }
        place += 2;
        Distribution::Limits limits{};
        if (!expect('[')) {
            return false;
        }
        const std::size_t begin = place;
        if (!readNumber(limits.least) || !expect(',') || !readNumber(limits.most) || !expect(']')) {
            return false;
        }
        if (limits.most < limits.least) {
            return report(begin, "the upper limit lies below the lower one");
        }
        result.limits = limits;
        return true;
    }

    bool check(const Distribution& result, std::size_t where) {
        using Kind = Distribution::Kind;
        switch (result.kind) {
            case Kind::Uniform:
                return result.first <= result.second || report(where, "the maximum lies below the minimum");
            case Kind::Triangular:
                return (result.first <= result.second && result.second <= result.third) ||
                       report(where, "minimum, mode and maximum aren't in ascending order");
            case Kind::Exponential:
                return result.first >= 0.0 || report(where, "the mean is negative");
            case Kind::Normal:
                return result.second >= 0.0 || report(where, "the deviation is negative");
            case Kind::Lognormal:
            case Kind::Gamma:
                return (result.first > 0.0 && result.second >= 0.0) ||
                       report(where, "the mean has to be positive and the variance not negative");
            case Kind::Fixed:
            case Kind::Mixture:
                break;
        }
        return true;
    }

    std::string_view readWord() {
        const std::size_t begin = place;
        while (place < text.size() && text[place] >= 'a' && text[place] <= 'z') {
            ++place;
        }
        return text.substr(begin, place - begin);
    }

    bool readNumber(double& number) {
        const std::size_t begin = skipBlanks();
        const char* const first = text.data() + place;
        const auto [end, status] = std::from_chars(first, text.data() + text.size(), number);
        if (status != std::errc() || !std::isfinite(number)) {
            return refuse(begin, "a number");
        }
        place += static_cast<std::size_t>(end - first);
        return true;
    }

    std::size_t skipBlanks() {
        place = std::min(text.find_first_not_of(" \t\r\n", place), text.size());
        return place;
    }

    bool take(char wanted) {
        skipBlanks();
        if (place == text.size() || text[place] != wanted) {
            return false;
        }
        ++place;
        return true;
    }

    bool expect(char wanted) { return take(wanted) || refuse(place, fmt::format("\"{}\"", wanted)); }

    bool refuse(std::size_t where, const std::string& expected) {
        return report(where, "expected " + expected);
    }
    bool report(std::size_t where, const std::string& reason) {
        failure = Error{fmt::format("column {}: {}", where + 1, reason)};
        return false;
    }

    std::string_view text;
    std::size_t place = 0;
    std::optional<Error> failure;
};

Result<Distribution> Distribution::parse(std::string_view text) {
    return DistributionParser(text).parse();
}

namespace {

/// Drawn from the cut-off distribution itself, for limits that hardly any plain sample would meet.
double exponentialBetween(double mean, double least, double most, RandomStream& random) {
    const double start = std::max(least, 0.0);
    if (mean <= 0.0 || most <= start) {
        return std::clamp(mean, least, most);
    }
    return start - mean * std::log1p(random.nextUnit() * std::expm1((start - most) / mean));
}

}  // namespace

double Distribution::sample(RandomStream& random) const {
    constexpr int Attempts = 100;
    if (limits && kind == Kind::Exponential) {
        return exponentialBetween(first, limits->least, limits->most, random);
    }
    double value = sampleUnlimited(random);
    if (!limits) {
        return value;
    }
    const auto fits = [&] { return value >= limits->least && value <= limits->most; };
    for (int attempt = 1; attempt < Attempts && !fits(); ++attempt) {
        value = sampleUnlimited(random);
    }
    return std::clamp(value, limits->least, limits->most);
}

double Distribution::sampleUnlimited(RandomStream& random) const {
    switch (kind) {
        case Kind::Fixed:
            break;
        case Kind::Uniform:
            return first + (second - first) * random.nextUnit();
        case Kind::Triangular: {
            const double width = third - first;
            const double rise = second - first;
            const double unit = random.nextUnit();
            return unit * width < rise ? first + std::sqrt(unit * width * rise)
                                       : third - std::sqrt((1.0 - unit) * width * (third - second));
        }
        case Kind::Exponential:
            return random.nextExponential(first);
        case Kind::Normal:
            return first + second * random.nextNormal();
        case Kind::Lognormal: {
            const double logVariance = std::log1p(second / (first * first));
            return std::exp(std::log(first) - logVariance / 2.0 +
                            std::sqrt(logVariance) * random.nextNormal());
        }
        case Kind::Gamma:
            return second == 0.0 ? first : random.nextGamma(first * first / second) * (second / first);
        case Kind::Mixture: {
            const auto choice =
                static_cast<std::size_t>(random.nextUnit() * static_cast<double>(parts.size()));
            return parts[std::min(choice, parts.size() - 1)].sample(random);
        }
    }
    return first;
}

}  // namespace mero
