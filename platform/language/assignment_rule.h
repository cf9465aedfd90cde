#pragma once

#include <string>
#include <string_view>

#include "platform/support/result.h"

namespace mero {

/// Who performs an activity, or what it uses: `role "Name"`, `unit "Name"`, or an object expression over the
/// working environment, for `aEvaluateExpression`.
struct AssignmentRule {
    enum class Kind { Nobody, Role, Unit, Expression };

    Kind kind = Kind::Nobody;  ///< `Nobody` for an empty text
    std::string text;          ///< name of the role or unit, or the expression
};

/// An error tells line, column and what was expected. Whether role, unit and objects are there isn't checked.
[[nodiscard]] Result<AssignmentRule> readAssignmentRule(std::string_view text);

}  // namespace mero
