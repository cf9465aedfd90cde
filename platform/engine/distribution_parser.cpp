#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <limits>

#include "platform/engine/distribution.h"

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
                                         Form{"erlang", Distribution::Kind::Erlang, 2},
                                         Form{"weibull", Distribution::Kind::Weibull, 2},
                                         Form{"beta", Distribution::Kind::Beta, 4},
                                         Form{"poisson", Distribution::Kind::Poisson, 1},
                                         Form{"binomial", Distribution::Kind::Binomial, 2},
                                         Form{"discrete", Distribution::Kind::Discrete, 0},
                                         Form{"mixture", Distribution::Kind::Mixture, 0}};
    static constexpr int DepthLimit = 16;
    static constexpr double CountLimit = 1e9;

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
        return parseContent(result, *form, depth) && expect(')') && check(result, parameters) &&
               parseLimits(result);
    }

    bool parseContent(Distribution& result, const Form& form, int depth) {
        switch (form.kind) {
            case Distribution::Kind::Mixture:
                return parseParts(result, depth);
            case Distribution::Kind::Discrete:
                return parseChoices(result);
            default:
                return parseParameters(result, form);
        }
    }

    bool parseParts(Distribution& result, int depth) {
        do {
            if (!parseDistribution(result.parts.emplace_back(), depth + 1)) {
                return false;
            }
        } while (take(';'));
        return true;
    }

    bool parseChoices(Distribution& result) {
        double total = 0.0;
        do {
            Distribution::Choice choice{};
            if (!readNumber(choice.value) || !expect(':')) {
                return false;
            }
            const std::size_t begin = skipBlanks();
            double weight = 0.0;
            if (!readNumber(weight)) {
                return false;
            }
            total += weight;
            if (weight < 0.0 || !std::isfinite(total)) {
                return report(begin, weight < 0.0 ? "the weight is negative" : "the weights are too great");
            }
            choice.weightUpToIt = total;
            result.choices.push_back(choice);
        } while (take(';'));
        return true;
    }

    bool parseParameters(Distribution& result, const Form& form) {
        for (std::size_t index = 0; index < form.parameters; ++index) {
            if ((index != 0 && !expect(',')) || !readNumber(result.parameters[index])) {
                return false;
            }
        }
        const bool counts =
            form.kind == Distribution::Kind::Poisson || form.kind == Distribution::Kind::Binomial;
        if (!counts) {
            return true;
        }
        double& unit = result.parameters[form.parameters];
        unit = 1.0;
        return !take(',') || readNumber(unit);
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
        if (!readNumber(limits.least) || !expect(',') || !readUpperLimit(limits.most) || !expect(']')) {
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
        const auto& [first, second, third, fourth] = result.parameters;
        switch (result.kind) {
            case Kind::Uniform:
                return first <= second || report(where, "the maximum lies below the minimum");
            case Kind::Triangular:
                return (first <= second && second <= third) ||
                       report(where, "minimum, mode and maximum aren't in ascending order");
            case Kind::Exponential:
                return first >= 0.0 || report(where, "the mean is negative");
            case Kind::Normal:
                return second >= 0.0 || report(where, "the deviation is negative");
            case Kind::Lognormal:
            case Kind::Gamma:
                return (first > 0.0 && second >= 0.0) ||
                       report(where, "the mean has to be positive and the variance not negative");
            case Kind::Erlang:
                return (first >= 0.0 && second >= 1.0 && second == std::floor(second)) ||
                       report(where, "the mean is negative, or the number of phases isn't 1, 2, 3 …");
            case Kind::Weibull:
                return (first > 0.0 && second > 0.0) || report(where, "shape and scale have to be positive");
            case Kind::Beta:
                return (first > 0.0 && second > 0.0 && third <= fourth) ||
                       report(where, "a shape isn't positive, or the maximum lies below the minimum");
            case Kind::Poisson:
                return (first >= 0.0 && first <= CountLimit) ||
                       report(where, fmt::format("the mean isn't between 0 and {}", CountLimit));
            case Kind::Binomial:
                return (first >= 0.0 && first <= 1.0 && second >= 0.0 && second <= CountLimit &&
                        second == std::floor(second)) ||
                       report(where, fmt::format("the probability isn't between 0 and 1, or the number of "
                                                 "trials isn't a whole one up to {}",
                                                 CountLimit));
            case Kind::Discrete:
                return result.choices.back().weightUpToIt > 0.0 || report(where, "all weights are 0");
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

    bool readUpperLimit(double& number) {
        skipBlanks();
        if (!text.substr(place).starts_with("inf")) {
            return readNumber(number);
        }
        place += 3;
        number = std::numeric_limits<double>::infinity();
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

}  // namespace mero
