#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/engine/random.h"
#include "platform/support/result.h"

namespace mero {

/// A distribution of seconds as the attributes of a model give it:
///
///     fixed(v)  uniform(min,max)  triangular(min,mode,max)  exponential(mean)  normal(mean,deviation)
///     lognormal(mean,variance)  gamma(mean,variance)  erlang(mean,phases)  weibull(shape,scale)
///     beta(a,b,min,max)  poisson(mean[,unit])  binomial(probability,trials[,unit])
///     discrete(value:weight; value:weight; …)  mixture(d; d; …)
///
/// each, if wanted, followed by ` in [min,max]`, where the upper end may be `inf`: values outside are drawn
/// again, and brought to the nearer end if that doesn't help. The parts of a mixture have equal weights. Mean
/// and variance of `lognormal` are those of its values, not of their logarithms. The counts of `poisson` and
/// `binomial` are multiplied by the unit, 1 second unless given. Numbers have a decimal point in every
/// locale.
class Distribution {
public:
    /// Always `seconds`.
    explicit Distribution(double seconds = 0.0) : parameters{seconds} {}

    /// The error names the column, from 1, in the text.
    static Result<Distribution> parse(std::string_view text);

    /// May be negative where the distribution allows it.
    [[nodiscard]] double sample(RandomStream& random) const;
    /// Mean of the samples; none for a distribution with limits.
    [[nodiscard]] std::optional<double> mean() const;
    /// Mean in seconds where samples below 0 count as 0 and are durations: `mean`, or where limits cut the
    /// distribution an estimate from 20,000 draws of its own, always the same.
    [[nodiscard]] double meanDuration() const;
    /// True if every sample is 0.
    [[nodiscard]] bool isZero() const { return kind == Kind::Fixed && parameters[0] == 0.0 && !limits; }

private:
    friend class DistributionParser;
    enum class Kind {
        Fixed,
        Uniform,
        Triangular,
        Exponential,
        Normal,
        Lognormal,
        Gamma,
        Erlang,
        Weibull,
        Beta,
        Poisson,
        Binomial,
        Discrete,
        Mixture
    };
    struct Limits {
        double least;
        double most;
    };
    struct Choice {
        double value;
        double weightUpToIt;  ///< its own and those of the choices before it
    };

    [[nodiscard]] double sampleUnlimited(RandomStream& random) const;
    [[nodiscard]] std::optional<double> meanOfParts() const;
    [[nodiscard]] double meanOfChoices() const;
    [[nodiscard]] double sampleChoice(RandomStream& random) const;

    Kind kind = Kind::Fixed;
    std::array<double, 4> parameters;  ///< in the order in which the text has them
    std::optional<Limits> limits;
    std::vector<Choice> choices;
    std::vector<Distribution> parts;
};

}  // namespace mero
