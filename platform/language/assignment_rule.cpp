#include "platform/language/assignment_rule.h"

#include "platform/language/object_expression.h"
#include "platform/language/quoted_text.h"

namespace mero {

namespace {

std::size_t skipWhiteSpace(std::string_view text, std::size_t position) {
    while (position < text.size() && isWhiteSpace(text[position])) {
        ++position;
    }
    return position;
}

Error errorAt(std::string_view text, std::size_t position, const char* reason) {
    return Error{describePlace(text, position) + ": " + reason};
}

/// `position` stands behind the word `role` or `unit`.
Result<AssignmentRule> readGroup(std::string_view text, std::size_t position, AssignmentRule::Kind kind) {
    position = skipWhiteSpace(text, position);
    if (position == text.size() || text[position] != '"') {
        return errorAt(text, position, "expected a name in double quotes");
    }
    const auto name = readQuotedText(text, position);
    if (!name) {
        return errorAt(text, position, "the string that begins here doesn't end; expected a double quote");
    }
    position = skipWhiteSpace(text, position);
    if (position != text.size()) {
        return errorAt(text, position, "expected the end of the rule");
    }
    return AssignmentRule{kind, name->plain()};
}

}  // namespace

Result<AssignmentRule> readAssignmentRule(std::string_view text) {
    constexpr std::string_view RoleWord = "role";
    constexpr std::string_view UnitWord = "unit";
    const std::size_t begin = skipWhiteSpace(text, 0);
    const std::string_view rule = text.substr(begin);
    if (rule.empty()) {
        return AssignmentRule{};
    }
    if (rule.starts_with(RoleWord)) {
        return readGroup(text, begin + RoleWord.size(), AssignmentRule::Kind::Role);
    }
    if (rule.starts_with(UnitWord)) {
        return readGroup(text, begin + UnitWord.size(), AssignmentRule::Kind::Unit);
    }
    if (const auto check = checkObjectExpression(text); !check) {
        return check.error();
    }
    return AssignmentRule{AssignmentRule::Kind::Expression, std::string(text)};
}

}  // namespace mero
