#include "tests/system/json_comparison.h"

#include <algorithm>
#include <cmath>

namespace mero::test {

namespace {

constexpr double RelativeTolerance = 1e-9;
constexpr double AbsoluteTolerance = 1e-300;

class Comparison {
public:
    void compare(const nlohmann::json& expected, const nlohmann::json& got, const std::string& place) {
        if (expected.is_number() && got.is_number()) {
            const auto left = expected.get<double>();
            const auto right = got.get<double>();
            const double difference = std::abs(left - right);
            if (difference > RelativeTolerance * std::max(std::abs(left), std::abs(right)) &&
                difference >= AbsoluteTolerance) {
                report(expected, got, place);
            }
        } else if (expected.is_object() && got.is_object()) {
            compareObjects(expected, got, place);
        } else if (expected.is_array() && got.is_array() && expected.size() == got.size()) {
            for (std::size_t index = 0; index < expected.size(); ++index) {
                compare(expected[index], got[index], place + "[" + std::to_string(index) + "]");
            }
        } else if (expected != got) {
            report(expected, got, place);
        }
    }

    std::vector<std::string> found;

private:
    void compareObjects(const nlohmann::json& expected, const nlohmann::json& got, const std::string& place) {
        for (const auto& [key, value] : expected.items()) {
            const auto other = got.find(key);
            if (other == got.end()) {
                found.push_back(place + "." + key + " is missing");
            } else {
                compare(value, *other, place + "." + key);
            }
        }
        for (const auto& entry : got.items()) {
            if (!expected.contains(entry.key())) {
                found.push_back(place + "." + entry.key() + " shouldn't be there");
            }
        }
    }

    void report(const nlohmann::json& expected, const nlohmann::json& got, const std::string& place) {
        found.push_back(place + ": expected " + expected.dump() + ", got " + got.dump());
    }
};

}  // namespace

std::vector<std::string> differences(const nlohmann::json& expected, const nlohmann::json& got) {
    Comparison comparison;
    comparison.compare(expected, got, "document");
    return comparison.found;
}

}  // namespace mero::test
