#pragma once

#include <optional>
#include <string_view>

#include "platform/support/result.h"

namespace mero {

/// Refuses what a formula may not hold though the evaluating library would take it: assignments, other
/// operators, lists outside a function, chained comparisons, min and max of one argument. The error names the
/// column, from 1.
Result<void> checkFormula(std::string_view text);

}  // namespace mero
