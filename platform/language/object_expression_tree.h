#pragma once

#include <memory>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/language/quoted_text.h"
#include "platform/support/result.h"

namespace mero {

// The parts of an object expression, as views into the text, which has to outlive them.

struct ObjectExpressionTree;

/// One `"name":"class"`.
struct NamedObject {
    QuotedText name;
    QuotedText className;
};

struct NamedObjects {
    std::vector<NamedObject> objects;
};

/// `all "Class"`.
struct ObjectsOfClass {
    QuotedText className;
};

enum class Comparison { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

/// `where "Attribute" op literal`.
struct ObjectFilter {
    QuotedText attribute;
    Comparison comparison;
    std::variant<std::string, double> literal;
};

struct ObjectOperand {
    std::variant<NamedObjects, ObjectsOfClass, std::unique_ptr<ObjectExpressionTree>> content;
    std::vector<ObjectFilter> filters;
};

enum class SetOperation { Union, Difference, Intersection };

/// Operands with the operation before each; that of the first is `Union`. They are carried out from left to
/// right.
struct ObjectExpressionTree {
    struct Step {
        SetOperation operation;
        ObjectOperand operand;
    };

    std::vector<Step> steps;
};

[[nodiscard]] Result<ObjectExpressionTree> readObjectExpression(std::string_view text);

}  // namespace mero
