#include "platform/interchange/prosimos_distribution.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <vector>

#include "platform/interchange/json_reader.h"

namespace mero {

namespace {

/// Checks and writes one distribution.
class DistributionWriter {
public:
    DistributionWriter(const DocumentNode& nameNode, const DocumentNode& parametersNode)
        : name(nameNode), parameters(parametersNode) {
        for (const DocumentNode& parameter : parameters.list()) {
            values.push_back(
                prosimosNumber(parameter.json().is_object() ? parameter.at("value") : parameter));
        }
    }

    std::string text() {
        const std::string word = name.text();
        if (word == "fix") {
            need(1);
            if (values[0] < 0.0) {
                parameters.refuse("the fixed time is below 0");
            }
            return fixed(values[0]);
        }
        if (word == "uniform") {
            need(2);
            return values[0] == values[1] ? fixed(values[0])
                                          : fmt::format("uniform({},{})", values[0], ordered(0, 1));
        }
        if (word == "triang") {
            need(3);
            std::sort(values.begin(), values.begin() + 3);
            return values[0] == values[2]
                       ? fixed(values[0])
                       : fmt::format("triangular({},{},{})", values[0], values[1], values[2]);
        }
        if (word == "expon") {
            return exponential();
        }
        if (word == "norm") {
            return spread("normal");
        }
        if (word == "lognorm") {
            return spread("lognormal");
        }
        if (word == "gamma") {
            return spread("gamma");
        }
        name.refuse(fmt::format("unknown distribution {}", inQuotes(word)));
    }

private:
    static std::string fixed(double value) { return fmt::format("fixed({})", value); }

    void need(std::size_t count) const {
        if (values.size() < count) {
            parameters.refuse(fmt::format("{} parameters are expected here, not {}", count, values.size()));
        }
    }

    /// The greater of two limits.
    [[nodiscard]] double ordered(std::size_t least, std::size_t greatest) const {
        if (values[least] > values[greatest]) {
            parameters.refuse("the least value is above the greatest");
        }
        return values[greatest];
    }

    /// " in [least,greatest]" of the two parameters from `position`; nothing if they aren't there.
    [[nodiscard]] std::string limits(std::size_t position) const {
        if (values.size() < position + 2) {
            return {};
        }
        const double greatest = ordered(position, position + 1);
        return fmt::format(" in [{},{}]", std::min(std::max(values[position], 0.0), greatest), greatest);
    }

    /// An exponential distribution has no memory: least + Exp(mean - least) is Exp(mean - least) cut off
    /// below.
    [[nodiscard]] std::string exponential() const {
        need(1);
        if (values[0] < 0.0 || (values.size() >= 3 && values[0] < values[1])) {
            parameters.refuse(values[0] < 0.0 ? "the mean is below 0" : "the mean is below the least value");
        }
        const double excess = values.size() < 3 ? values[0] : values[0] - values[1];
        return excess > 0.0 ? fmt::format("exponential({}){}", excess, limits(1)) : fixed(values[0]);
    }

    [[nodiscard]] std::string spread(std::string_view word) const {
        need(2);
        if (values[1] < 0.0 || (values[0] < 0.0 && word != "normal")) {
            parameters.refuse("a parameter is below 0");
        }
        const bool constant = values[1] == 0.0 || (values[0] == 0.0 && word != "normal");
        const bool unlimited = values.size() < 4 && word == "normal";
        return constant ? fixed(values[0])
                        : fmt::format("{}({},{}){}", word, values[0], values[1],
                                      unlimited ? " in [0,inf]" : limits(2));
    }

    const DocumentNode& name;
    const DocumentNode& parameters;
    std::vector<double> values;
};

}  // namespace

std::string prosimosDistribution(const DocumentNode& name, const DocumentNode& parameters) {
    return DistributionWriter(name, parameters).text();
}

double prosimosNumber(const DocumentNode& node) {
    if (!node.json().is_string()) {
        return node.number();
    }
    const std::string text = node.text();
    double number = 0.0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (status != std::errc{} || end != text.data() + text.size() || !std::isfinite(number)) {
        node.refuse(fmt::format("a number is expected here, not {}", inQuotes(text)));
    }
    return number;
}

}  // namespace mero
