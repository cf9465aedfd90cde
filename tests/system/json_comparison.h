#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace mero::test {

/// Places and contents where two documents differ. Numbers are equal within 1e-9 of the greater, or if their
/// difference is next to nothing (below 1e-300); everything else has to be the same.
std::vector<std::string> differences(const nlohmann::json& expected, const nlohmann::json& got);

}  // namespace mero::test
