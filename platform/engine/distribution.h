#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/engine/random.h"
#include "platform/support/result.h"

namespace mero {

/// A distribution of seconds as the attributes of a model give it:
///
///     fixed(v)  uniform(min,max)  triangular(min,mode,max)  exponential(mean)  normal(mean,deviation)
///     lognormal(mean,variance)  gamma(mean,variance)  mixture(d; d; …)
///
/// each, if wanted, followed by ` in [min,max]`: values outside are drawn again, and brought to the nearer
/// end if that doesn't help. The parts of a mixture have equal weights. Mean and variance of `lognormal` are
/// those of its values, not of their logarithms. Numbers have a decimal point in every locale.
class Distribution {
public:
    /// Always `seconds`.
    explicit Distribution(double seconds = 0.0) : first(seconds) {}

    /// The error names the column, from 1, in the text.
    static Result<Distribution> parse(std::string_view text);

    /// May be negative where the distribution allows it.
    [[nodiscard]] double sample(RandomStream& random) const;
    /// True if every sample is 0.
    [[nodiscard]] bool isZero() const { return kind == Kind::Fixed && first == 0.0 && !limits; }

private:
    friend class DistributionParser;
    enum class Kind { Fixed, Uniform, Triangular, Exponential, Normal, Lognormal, Gamma, Mixture };
    struct Limits {
        double least;
        double most;
    };

    [[nodiscard]] double sampleUnlimited(RandomStream& random) const;

    Kind kind = Kind::Fixed;
    double first;
    double second = 0.0;
    double third = 0.0;
    std::optional<Limits> limits;
    std::vector<Distribution> parts;
};

}  // namespace mero
