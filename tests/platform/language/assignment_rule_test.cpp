#include "platform/language/assignment_rule.h"

#include <gtest/gtest.h>

namespace {

using mero::AssignmentRule;
using Kind = AssignmentRule::Kind;

TEST(AssignmentRuleTest, ReadsRolesUnitsAndExpressions) {
    const struct {
        const char* text;
        Kind kind;
        const char* content;
    } cases[] = {
        {"", Kind::Nobody, ""},
        {" \n", Kind::Nobody, ""},
        {"role \"Clerk\"", Kind::Role, "Clerk"},
        {" role\"The \\\"Boss\\\"\" ", Kind::Role, "The \"Boss\""},
        {"unit\n\"Sales\"", Kind::Unit, "Sales"},
        {"all \"Worker\"", Kind::Expression, "all \"Worker\""},
        {"{\"Ann\":\"Worker\"}", Kind::Expression, "{\"Ann\":\"Worker\"}"},
    };
    for (const auto& [text, kind, content] : cases) {
        const auto rule = mero::readAssignmentRule(text);
        ASSERT_TRUE(rule.isGood()) << text << "\n" << rule.error().text;
        EXPECT_EQ(rule.value().kind, kind) << text;
        EXPECT_EQ(rule.value().text, content);
    }
}

TEST(AssignmentRuleTest, RefusesBrokenRulesWithThePlace) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"role", "line 1, column 5: expected a name in double quotes"},
        {"role Clerk", "line 1, column 6: expected a name in double quotes"},
        {"role \"Clerk", "line 1, column 6: the string that begins here doesn't end"},
        {"unit \"Sales\" \"Buying\"", "line 1, column 14: expected the end of the rule"},
        {"Clerk", "line 1, column 1: expected {"},
    };
    for (const auto& [text, error] : cases) {
        const auto rule = mero::readAssignmentRule(text);
        ASSERT_FALSE(rule.isGood()) << text;
        EXPECT_EQ(rule.error().text.find(error), 0U) << rule.error().text;
    }
}

}  // namespace
