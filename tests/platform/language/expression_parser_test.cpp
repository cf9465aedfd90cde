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
    for (const auto& [formula, expected] : {Case{"7/2", 3.5},
                                            Case{"1.5e2 + a*b", 156.0},
                                            Case{"-(a - b) - -1", 2.0},
                                            Case{"a < b", 1.0},
                                            Case{"a + 1 == b", 1.0},
                                            Case{"a != 2", 0.0},
                                            Case{"(a < b) < 1", 0.0},
                                            Case{"min(b, a, 5)", 2.0},
                                            Case{"max(a, b)", 3.0},
                                            Case{"abs(a - b)", 1.0},
                                            Case{"round(2.5)", 3.0},
                                            Case{"round(-2.5)", -3.0},
                                            Case{"floor(-0.5)", -1.0},
                                            Case{"ceil(0.2)", 1.0},
                                            Case{"sqrt(9)", 3.0},
                                            Case{"a > b ? 1 : b > a ? 4 : 5", 4.0},
                                            Case{"a > 0 ? 1 : 1/0", 1.0},
                                            Case{"a > 0 ? b : sqrt(0 - 1)", 3.0},
                                            Case{"0.1 + 0.2", 0.1 + 0.2},
                                            Case{"--3", 3.0},
                                            Case{"- -3", 3.0},
                                            Case{"+-+3", -3.0},
                                            Case{"a - --b", -1.0},
                                            Case{"a*-b - +a", -8.0},
                                            Case{"a<-b", 0.0},
                                            Case{"b==--+b ? -a : a", -2.0},
                                            Case{"max (1,2)", 2.0},
                                            Case{"min\t( -a , --b )", -2.0},
                                            Case{".5 + 2. * 1E+1", 20.5},
                                            Case{"1e-400", 0.0},
                                            Case{"(a < b ? a : b) * ((a))", 4.0},
                                            Case{"a > b ? 1 : b < a ? 2 : 3", 3.0},
                                            Case{"a < b ? b < a ? 1 : 2 : 3", 2.0}}) {
        EXPECT_EQ(valueOf(formula), expected) << formula;
    }
}

TEST(ExpressionParser, NamesMayHaveAnyLength) {
    const std::string longName(5000, 'a');
    const std::string another = longName + "b";
    MeroKilnValueSet values;
    values.OldMoveValue(SV::String(longName), MeroKilnValue(5.0), true);
    values.OldMoveValue(SV::String(another), MeroKilnValue(2.0), true);
    MeroKilnExpressionParser parser;
    MeroKilnValue value;
    SV::String error;
    const std::string formula = longName + " - " + another + " * " + longName + " + v";
    ASSERT_EQ(parser.SetExpression(SV::String(formula), error), 0) << error.view();
    EXPECT_NE(parser.Evaluate(values, value, error, true, true), 0);
    EXPECT_EQ(error, SV::String("no value for \"v\""));
    values.OldMoveValue("v", MeroKilnValue(1.0), true);
    ASSERT_EQ(parser.Evaluate(values, value, error, true, true), 0) << error.view();
    EXPECT_EQ(value.asDouble(), 5.0 - 2.0 * 5.0 + 1.0);
}

TEST(ExpressionParser, RefusalsNameTheColumn) {
    struct Case {
        const char* formula;
        const char* error;
    };
    for (const auto& [formula, error] :
         {Case{"", "column 1: a value is expected here"},
          Case{" ", "column 2: a value is expected here"},
          Case{"2 +", "column 4: a value is expected here"},
          Case{"2 * / 3", "column 5: a value is expected here"},
          Case{"a b", "column 3: an operator is expected here"},
          Case{"0x10", "column 2: an operator is expected here"},
          Case{"a(2)", "column 1: there is no function \"a\""},
          Case{"2 (a)", "column 3: an operator is expected here"},
          Case{"1 + (a", "column 5: a bracket isn't closed"},
          Case{"a)", "column 2: a bracket closes that wasn't opened"},
          Case{"a = 5", "column 3: a formula assigns nothing"},
          Case{"a, b", "column 2: a list stands outside a function"},
          Case{"(1, 5)", "column 3: a list stands outside a function"},
          Case{"a < b < 3", "column 7: comparisons can't be chained"},
          Case{"a == b != 1", "column 8: comparisons can't be chained"},
          Case{"1 + min(a)", "column 5: \"min\" takes two arguments or more"},
          Case{"max()", "column 1: \"max\" takes two arguments or more"},
          Case{"abs(a, b)", "column 1: \"abs\" takes one argument"},
          Case{"2 + min", "column 5: \"min\" is a function, its arguments stand in brackets"},
          Case{"2 * sin(a)", "column 5: there is no function \"sin\""},
          Case{"a ^ 2", "column 3: \"^\" isn't part of a formula"},
          Case{"a && b", "column 3: \"&\" isn't part of a formula"},
          Case{"!a", "column 1: a value is expected here"},
          Case{"a % b", "column 3: \"%\" isn't part of a formula"},
          Case{"1 + (a ? b)", "column 8: \"?\" has no \":\""},
          Case{"a ? b", "column 3: \"?\" has no \":\""},
          Case{"a ? b c", "column 7: an operator is expected here"},
          Case{"a : b", "column 3: \":\" has no \"?\""},
          Case{"2 + 1e", "column 5: the exponent of a number needs digits"},
          Case{"1e400", "column 1: a number is too large"},
          Case{"2 + .", "column 5: a number needs digits"},
          Case{"1.2.3", "column 4: an operator is expected here"},
          Case{"\"a\"", "column 1: \"\"\" isn't part of a formula"},
          Case{"a + \xC3\xA4", "column 5: \"\xC3\xA4\" isn't part of a formula"}}) {
        MeroKilnExpressionParser parser;
        SV::String told;
        EXPECT_NE(parser.SetExpression(formula, told), 0) << formula;
        EXPECT_EQ(told, SV::String(error)) << formula;
        MeroKilnValue value;
        EXPECT_NE(parser.Evaluate({}, value, told, true, true), 0) << formula;
    }
    for (const auto& [part, end] : {std::pair{"(", ")"}, {"abs(", ")"}, {"1?", ":2"}}) {
        std::string formula = "1";
        for (int depth = 0; depth < 201; ++depth) {
            formula = part + formula + end;
        }
        MeroKilnExpressionParser parser;
        SV::String told;
        EXPECT_NE(parser.SetExpression(SV::String(formula), told), 0) << part;
        EXPECT_TRUE(told.view().ends_with("a formula is nested too deeply")) << told.view();
    }
    EXPECT_EQ(valueOf((std::string(100000, '(') + "1" + std::string(100000, ')')).c_str()), std::nullopt);
    EXPECT_EQ(valueOf((std::string(100000, '-') + "1").c_str()), 1.0);
    std::string sum = "1";
    for (int count = 0; count < 20000; ++count) {
        sum += "+1";
    }
    EXPECT_EQ(valueOf(sum.c_str()), std::nullopt);
}

TEST(ExpressionParser, FailsToEvaluateWithoutAValueOrAFiniteResult) {
    for (const char* const formula : {"c + 1", "1/0", "0/0", "sqrt(0 - a)", "a - a ? 1 : 1/(a - 2)"}) {
        EXPECT_EQ(valueOf(formula), std::nullopt) << formula;
    }
}

}  // namespace
