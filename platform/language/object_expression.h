#pragma once

#include <string_view>

#include "platform/support/result.h"

namespace mero {

/// Reads an object expression without evaluating it: `{"name":"class", …}`, `all "Class"`,
/// `E where "Attribute" = literal`, unions `+`, differences `-`, intersections `&` and brackets.
/// `aEvaluateExpression` of the host contract evaluates one. An error tells line, column and what was
/// expected.
[[nodiscard]] Result<void> checkObjectExpression(std::string_view text);

}  // namespace mero
