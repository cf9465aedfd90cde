#include "platform/engine/distribution.h"

#include <algorithm>
#include <cmath>

#include "platform/engine/variates.h"

namespace mero {

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
        return exponentialBetween(parameters[0], limits->least, limits->most, random);
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
    const auto& [first, second, third, fourth] = parameters;
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
        case Kind::Erlang:
            return random.nextGamma(second) * (first / second);
        case Kind::Weibull:
            return second * std::pow(-std::log(random.nextPositiveUnit()), 1.0 / first);
        case Kind::Beta:
            return third + (fourth - third) * nextBeta(random, first, second);
        case Kind::Poisson:
            return second * nextPoisson(random, first);
        case Kind::Binomial:
            return third * nextBinomial(random, second, first);
        case Kind::Discrete:
            return sampleChoice(random);
        case Kind::Mixture: {
            const auto choice =
                static_cast<std::size_t>(random.nextUnit() * static_cast<double>(parts.size()));
            return parts[std::min(choice, parts.size() - 1)].sample(random);
        }
    }
    return first;
}

double Distribution::sampleChoice(RandomStream& random) const {
    const double drawn = random.nextUnit() * choices.back().weightUpToIt;
    const auto above =
        std::upper_bound(choices.begin(), choices.end() - 1, drawn,
                         [](double weight, const Choice& choice) { return weight < choice.weightUpToIt; });
    return above->value;
}

double Distribution::meanDuration() const {
    constexpr int Draws = 20'000;
    if (const std::optional<double> known = mean()) {
        return std::max(*known, 0.0);
    }
    RandomStream random(0, "mean of a duration");
    double sum = 0.0;
    for (int draw = 0; draw < Draws; ++draw) {
        sum += std::max(sample(random), 0.0);
    }
    return sum / Draws;
}

std::optional<double> Distribution::mean() const {
    if (limits) {
        return std::nullopt;
    }
    const auto& [first, second, third, fourth] = parameters;
    switch (kind) {
        case Kind::Uniform:
            return (first + second) / 2.0;
        case Kind::Triangular:
            return (first + second + third) / 3.0;
        case Kind::Weibull:
            return second * std::tgamma(1.0 + 1.0 / first);
        case Kind::Beta:
            return third + (fourth - third) * first / (first + second);
        case Kind::Poisson:
            return first * second;
        case Kind::Binomial:
            return first * second * third;
        case Kind::Discrete:
            return meanOfChoices();
        case Kind::Mixture:
            return meanOfParts();
        case Kind::Fixed:
        case Kind::Exponential:
        case Kind::Normal:
        case Kind::Lognormal:
        case Kind::Gamma:
        case Kind::Erlang:
            break;
    }
    return first;
}

double Distribution::meanOfChoices() const {
    double sum = 0.0;
    double weightBefore = 0.0;
    for (const Choice& choice : choices) {
        sum += choice.value * (choice.weightUpToIt - weightBefore);
        weightBefore = choice.weightUpToIt;
    }
    return sum / weightBefore;
}

std::optional<double> Distribution::meanOfParts() const {
    double sum = 0.0;
    for (const Distribution& part : parts) {
        const std::optional<double> partMean = part.mean();
        if (!partMean) {
            return std::nullopt;
        }
        sum += *partMean;
    }
    return sum / static_cast<double>(parts.size());
}

}  // namespace mero
