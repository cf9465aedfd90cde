#include "platform/interchange/scylla_values.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>
#include <vector>

#include "platform/interchange/distribution_text.h"
#include "platform/interchange/xml_values.h"

namespace mero {

namespace {

std::string finiteDistribution(const XmlElement& element, const DistributionText& text) {
    std::vector<std::pair<double, double>> choices;
    for (const XmlElement& entry : element.children()) {
        if (entry.kind() == "entry") {
            choices.emplace_back(requiredNumber(entry, "value"), requiredNumber(entry, "frequency"));
        }
    }
    if (choices.empty()) {
        element.refuse("a distribution without entries");
    }
    return text.discrete(choices);
}

std::string textOf(const XmlElement& element, const DistributionText& text) {
    const std::string_view kind = element.kind();
    const auto number = [&element](std::string_view child) { return childNumber(element, child); };
    if (kind == "constantDistribution") {
        return text.fixed(number("constantValue"));
    }
    if (kind == "exponentialDistribution") {
        return text.exponential(number("mean"));
    }
    if (kind == "normalDistribution") {
        return text.normal(number("mean"), number("standardDeviation"));
    }
    if (kind == "uniformDistribution") {
        return text.uniform(number("lower"), number("upper"));
    }
    if (kind == "triangularDistribution") {
        return text.triangular(number("lower"), number("peak"), number("upper"));
    }
    if (kind == "erlangDistribution") {
        return text.erlang(number("mean"), number("order"));
    }
    if (kind == "poissonDistribution") {
        return text.poisson(number("mean"));
    }
    if (kind == "binomialDistribution") {
        return text.binomial(number("probability"), number("amount"));
    }
    if (kind == "arbitraryFiniteProbabilityDistribution") {
        return finiteDistribution(element, text);
    }
    element.refuse(fmt::format("unknown distribution \"{}\"", kind));
}

}  // namespace

double scyllaUnit(const XmlElement& element, const char* attribute) {
    static constexpr std::array<std::pair<std::string_view, double>, 7> Units{{{"NANOSECONDS", 1e-9},
                                                                               {"MICROSECONDS", 1e-6},
                                                                               {"MILLISECONDS", 1e-3},
                                                                               {"SECONDS", 1.0},
                                                                               {"MINUTES", 60.0},
                                                                               {"HOURS", 3600.0},
                                                                               {"DAYS", 86400.0}}};
    const std::string name = element.attribute(attribute);
    if (name.empty()) {
        return 1.0;
    }
    const auto* unit = std::find_if(Units.begin(), Units.end(),
                                    [&name](const auto& candidate) { return candidate.first == name; });
    if (unit == Units.end()) {
        element.refuse(fmt::format("unknown time unit \"{}\"", name));
    }
    return unit->second;
}

std::string scyllaDistribution(const XmlElement& element) {
    const std::vector<XmlElement> children = element.children();
    if (children.size() != 1) {
        element.refuse(fmt::format("{}: one distribution is expected here", element.kind()));
    }
    std::string text = textOf(children.front(), DistributionText(scyllaUnit(element, "timeUnit")));
    if (const std::string fault = distributionFault(text); !fault.empty()) {
        children.front().refuse(fault);
    }
    return text;
}

}  // namespace mero
