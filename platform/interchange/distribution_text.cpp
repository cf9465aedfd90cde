#include "platform/interchange/distribution_text.h"

#include <fmt/format.h>

#include "platform/engine/distribution.h"

namespace mero {

std::string DistributionText::fixed(double value) const {
    return fmt::format("fixed({})", value * unit);
}

std::string DistributionText::uniform(double least, double greatest) const {
    return fmt::format("uniform({},{})", least * unit, greatest * unit);
}

std::string DistributionText::triangular(double least, double mode, double greatest) const {
    return fmt::format("triangular({},{},{})", least * unit, mode * unit, greatest * unit);
}

std::string DistributionText::exponential(double mean) const {
    return fmt::format("exponential({})", mean * unit);
}

std::string DistributionText::normal(double mean, double deviation) const {
    return fmt::format("normal({},{})", mean * unit, deviation * unit);
}

std::string DistributionText::lognormal(double mean, double variance) const {
    return fmt::format("lognormal({},{})", mean * unit, variance * unit * unit);
}

std::string DistributionText::gamma(double mean, double variance) const {
    return fmt::format("gamma({},{})", mean * unit, variance * unit * unit);
}

std::string DistributionText::erlang(double mean, double phases) const {
    return fmt::format("erlang({},{})", mean * unit, phases);
}

std::string DistributionText::weibull(double shape, double scale) const {
    return fmt::format("weibull({},{})", shape, scale * unit);
}

std::string DistributionText::beta(double a, double b) const {
    return fmt::format("beta({},{},0,{})", a, b, unit);
}

std::string DistributionText::poisson(double mean) const {
    return fmt::format("poisson({},{})", mean, unit);
}

std::string DistributionText::binomial(double probability, double trials) const {
    return fmt::format("binomial({},{},{})", probability, trials, unit);
}

std::string DistributionText::discrete(const std::vector<std::pair<double, double>>& choices) const {
    std::string text;
    for (const auto& [value, weight] : choices) {
        text += fmt::format("{}{}:{}", text.empty() ? "" : "; ", value * unit, weight);
    }
    return fmt::format("discrete({})", text);
}

std::string DistributionText::limits(double least, double greatest) const {
    return fmt::format(" in [{},{}]", least * unit, greatest * unit);
}

std::string distributionFault(const std::string& text) {
    const Result<Distribution> parsed = Distribution::parse(text);
    if (parsed) {
        return {};
    }
    const std::string& fault = parsed.error().text;  // "column 7: the reason"
    const std::size_t reason = fault.find(": ");
    return reason == std::string::npos ? fault : fault.substr(reason + 2);
}

}  // namespace mero
