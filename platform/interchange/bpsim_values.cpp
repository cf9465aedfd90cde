#include "platform/interchange/bpsim_values.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

#include "platform/engine/distribution.h"
#include "platform/interchange/distribution_text.h"
#include "platform/interchange/iso_duration.h"
#include "platform/interchange/xml_values.h"

namespace mero {

namespace {

bool isConstant(std::string_view kind) {
    return kind == "NumericParameter" || kind == "FloatingParameter";
}

/// Points of a user distribution, and equal weights for an enumeration of values.
std::string choicesOf(const XmlElement& value, const DistributionText& text) {
    std::vector<std::pair<double, double>> choices;
    for (const XmlElement& entry : value.children()) {
        if (isConstant(entry.kind())) {
            choices.emplace_back(requiredNumber(entry, "value"), 1.0);
        } else if (entry.kind() == "UserDistributionDataPoint") {
            const std::vector<XmlElement> points = entry.children();
            if (points.empty() || !isConstant(points.front().kind())) {
                entry.refuse("a point has to have a number");
            }
            choices.emplace_back(requiredNumber(points.front(), "value"),
                                 requiredNumber(entry, "probability"));
        }
    }
    if (choices.empty()) {
        value.refuse(fmt::format("{}: there are no numbers in it", value.kind()));
    }
    return text.discrete(choices);
}

std::string truncatedNormal(const XmlElement& value, const DistributionText& text) {
    std::string normal =
        text.normal(requiredNumber(value, "mean"), requiredNumber(value, "standardDeviation"));
    if (!value.hasAttribute("min") && !value.hasAttribute("max")) {
        return normal;
    }
    return normal + text.limits(optionalNumber(value, "min").value_or(0.0), requiredNumber(value, "max"));
}

std::string distributionOf(const XmlElement& value, const DistributionText& text) {
    const std::string_view kind = value.kind();
    const auto number = [&value](const char* attribute) { return requiredNumber(value, attribute); };
    if (isConstant(kind)) {
        return text.fixed(number("value"));
    }
    if (kind == "UniformDistribution") {
        return text.uniform(number("min"), number("max"));
    }
    if (kind == "TriangularDistribution") {
        return text.triangular(number("min"), number("mode"), number("max"));
    }
    if (kind == "NegativeExponentialDistribution") {
        return text.exponential(number("mean"));
    }
    if (kind == "NormalDistribution") {
        return text.normal(number("mean"), number("standardDeviation"));
    }
    if (kind == "TruncatedNormalDistribution") {
        return truncatedNormal(value, text);
    }
    if (kind == "LogNormalDistribution") {
        const double deviation = number("standardDeviation");
        return text.lognormal(number("mean"), deviation * deviation);
    }
    if (kind == "GammaDistribution") {
        const double scale = number("scale");
        return text.gamma(number("shape") * scale, number("shape") * scale * scale);
    }
    if (kind == "ErlangDistribution") {
        return text.erlang(number("mean"), number("k"));
    }
    if (kind == "WeibullDistribution") {
        return text.weibull(number("shape"), number("scale"));
    }
    if (kind == "BetaDistribution") {
        return text.beta(number("shape"), number("scale"));
    }
    if (kind == "PoissonDistribution") {
        return text.poisson(number("mean"));
    }
    if (kind == "BinomialDistribution") {
        return text.binomial(number("probability"), number("trials"));
    }
    if (kind == "UserDistribution" || kind == "EnumParameter") {
        return choicesOf(value, text);
    }
    value.refuse(fmt::format("a {} is no time", kind));
}

}  // namespace

bool isBpsimNamespace(std::string_view uri) {
    return uri.starts_with("http://www.bpsim.org/schemas/");
}

BpsimValues bpsimValuesOf(const XmlElement& parameter) {
    BpsimValues values;
    for (const XmlElement& child : parameter.children()) {
        if (child.kind() == "ResultRequest") {
            values.requested = true;
        } else if (child.hasAttribute("result") || !isBpsimNamespace(child.space())) {
            continue;
        } else if (child.hasAttribute("validFor")) {
            values.scheduled.push_back(child);
        } else if (!values.always) {
            values.always = child;
        }
    }
    return values;
}

double bpsimUnit(const XmlElement& element, std::string_view unit) {
    static constexpr std::array<std::pair<std::string_view, double>, 6> Units{
        {{"ms", 0.001}, {"s", 1.0}, {"min", 60.0}, {"hour", 3600.0}, {"day", 86400.0}, {"year", 31536000.0}}};
    const auto* found = std::find_if(Units.begin(), Units.end(),
                                     [unit](const auto& candidate) { return candidate.first == unit; });
    if (found == Units.end()) {
        element.refuse(fmt::format("unknown time unit \"{}\"", unit));
    }
    return found->second;
}

std::string bpsimTime(const XmlElement& value, double secondsOfScenarioUnit) {
    if (value.kind() == "DurationParameter") {
        const std::string text = requiredAttribute(value, "value");
        const std::optional<double> seconds = secondsOfDuration(text);
        if (!seconds) {
            value.refuse(fmt::format("\"{}\" is no duration of days, hours, minutes and seconds", text));
        }
        return DistributionText(1.0).fixed(*seconds);
    }
    const std::string unit = value.attribute("timeUnit");
    std::string text = distributionOf(
        value, DistributionText(unit.empty() ? secondsOfScenarioUnit : bpsimUnit(value, unit)));
    if (const std::string fault = distributionFault(text); !fault.empty()) {
        value.refuse(fault);
    }
    return text;
}

double bpsimMean(const std::string& distribution, const XmlElement& value) {
    const Result<Distribution> parsed = Distribution::parse(distribution);
    const std::optional<double> mean = parsed ? parsed.value().mean() : std::nullopt;
    if (!mean || *mean < 0.0) {
        value.refuse("a time with a mean that isn't below 0 is needed here");
    }
    return *mean;
}

double bpsimNumber(const XmlElement& value) {
    if (!isConstant(value.kind())) {
        value.refuse(fmt::format("a {} is no number", value.kind()));
    }
    return requiredNumber(value, "value");
}

}  // namespace mero
