#pragma once

#include "tests/platform/toolkit/toolkit_cases.h"

namespace mero::test {

/// Uses of the windows with results, for every way to drive them.
[[nodiscard]] std::vector<ToolkitCase> resultWindowCases();

}  // namespace mero::test
