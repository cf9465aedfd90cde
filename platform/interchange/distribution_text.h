#pragma once

#include <string>
#include <utility>
#include <vector>

namespace mero {

/// Writes distributions whose parameters are counted in a unit of time as texts in seconds
/// (`platform/engine/distribution.h`). Nothing is judged: `distributionFault` does so.
class DistributionText {
public:
    explicit DistributionText(double secondsOfUnit) : unit(secondsOfUnit) {}

    [[nodiscard]] std::string fixed(double value) const;
    [[nodiscard]] std::string uniform(double least, double greatest) const;
    [[nodiscard]] std::string triangular(double least, double mode, double greatest) const;
    [[nodiscard]] std::string exponential(double mean) const;
    [[nodiscard]] std::string normal(double mean, double deviation) const;
    [[nodiscard]] std::string lognormal(double mean, double variance) const;
    [[nodiscard]] std::string gamma(double mean, double variance) const;
    [[nodiscard]] std::string erlang(double mean, double phases) const;
    [[nodiscard]] std::string weibull(double shape, double scale) const;
    /// Between 0 and 1 unit.
    [[nodiscard]] std::string beta(double a, double b) const;
    [[nodiscard]] std::string poisson(double mean) const;
    [[nodiscard]] std::string binomial(double probability, double trials) const;
    /// Values and their weights.
    [[nodiscard]] std::string discrete(const std::vector<std::pair<double, double>>& choices) const;
    /// ` in [least,greatest]`, to be put behind another.
    [[nodiscard]] std::string limits(double least, double greatest) const;

private:
    double unit;
};

/// What is wrong with the parameters of a distribution text, empty if nothing is.
std::string distributionFault(const std::string& text);

}  // namespace mero
