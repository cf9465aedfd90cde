#include <gtest/gtest.h>

#include "component/host/kiln_expression_parser.h"

namespace {

/// Value of the formula with a = 2 and b = 3; nothing if it can't be read or evaluated.
std::optional<double> valueOf(const char* formula) {
    MeroKilnValueSet values;
    values.OldMoveValue("a", MeroKilnValue(2.0), true);
    values.OldMoveValue("b", MeroKilnValue(3.0), true);
    MeroKilnExpressionParser parser;
    MeroKilnValue value;
    SV::String error;
    if (parser.SetExpression(formula, error) != 0 || parser.Evaluate(values, value, error, true, true) != 0) {
        EXPECT_FALSE(error.IsEmpty()) << formula;
        return std::nullopt;
    }
    return value.asDouble();
}

TEST(ExpressionParser, EvaluatesInDoubles) {
    struct Case {
        const char* formula;
        double expected;
    };
    for (const auto& [formula, expected] :
         {Case{"7/2", 3.5}, Case{"1.5e2 + a*b", 156.0}, Case{"-(a - b) - -1", 2.0}, Case{"a < b", 1.0},
          Case{"a + 1 == b", 1.0}, Case{"a != 2", 0.0}, Case{"(a < b) < 1", 0.0}, Case{"min(b, a, 5)", 2.0},
          Case{"max(a, b)", 3.0}, Case{"abs(a - b)", 1.0}, Case{"round(2.5)", 3.0}, Case{"round(-2.5)", -3.0},
          Case{"floor(-0.5)", -1.0}, Case{"ceil(0.2)", 1.0}, Case{"sqrt(9)", 3.0},
          Case{"a > b ? 1 : b > a ? 4 : 5", 4.0}, Case{"a > 0 ? 1 : 1/0", 1.0},
          Case{"a > 0 ? b : sqrt(0 - 1)", 3.0}, Case{"0.1 + 0.2", 0.1 + 0.2}}) {
        EXPECT_EQ(valueOf(formula), expected) << formula;
    }
}

TEST(ExpressionParser, RefusesWhatIsNoFormula) {
    for (const char* const formula :
         {"",       " ",         "a b",         "2 +",    "(a",    "a)",        "a = 5",   "a, b",   "1, 5",
          "(1, 5)", "a < b < 3", "a == b != 1", "min(a)", "max()", "sin(a)",    "a ^ 2",   "a && b", "!a",
          "a % b",  "0x10",      "a ? b",       "a : b",  "\"a\"", "abs(a, b)", "\xC3\xA4"}) {
        EXPECT_EQ(valueOf(formula), std::nullopt) << formula;
    }
    EXPECT_EQ(valueOf((std::string(100000, '(') + "1" + std::string(100000, ')')).c_str()), std::nullopt);
}

TEST(ExpressionParser, FailsToEvaluateWithoutAValueOrAFiniteResult) {
    for (const char* const formula : {"c + 1", "1/0", "0/0", "sqrt(0 - a)", "a - a ? 1 : 1/(a - 2)"}) {
        EXPECT_EQ(valueOf(formula), std::nullopt) << formula;
    }
}

}  // namespace
