#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/platform/toolkit/user_driver.h"

namespace mero::test {

/// One use of controls: what the user does, and the state and the handlers' calls that come of it. The same
/// cases run with the state alone and with widgets.
struct ToolkitCase {
    std::string name;
    std::function<std::string(UserDriver&)> run;
    std::string expected;
};

[[nodiscard]] std::vector<ToolkitCase> toolkitCases();

inline void PrintTo(const ToolkitCase& shown, std::ostream* out) {
    *out << shown.name;
}

}  // namespace mero::test
