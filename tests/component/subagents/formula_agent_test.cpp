#include <gtest/gtest.h>

#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

using Values = std::map<std::string, double>;
using Messages = std::vector<std::uint32_t>;

constexpr std::size_t Formula = 2;  // behind the two measures

MeasuredWorld::Setup formula(const std::string& expression) {
    return {.sections =
                "FREQUENCY name:\"Passes\" path-analysis resultscope:mainobjects absolute "
                "ignore-not-executed-objects\n"
                "CYCLETIME name:\"Stay\" path-analysis resultscope:mainobjects\n"
                "FORMULA name:\"F\" path-analysis expression:\"" +
                expression + "\" OBSERVED \"Passes\" OBSERVED \"Stay\"",
            .objects = "all \"Activity\""};
}

/// Check twice in instance 1, once in instance 2; Pack is worked on and never finished, so that it has no
/// stay.
const std::string trace = "3,0\n11,0,1,Order,1\n" + linesOf({0, 10, "1,Order,1", "a", "Check", "Ann"}) +
                          linesOf({10, 41, "1,Order,1", "b", "Check", "Ann"}) +
                          "17,41,1,Order,1,c,Pack,Bob\n13,41,1,Order,1\n" + "11,41,2,Order,2\n" +
                          linesOf({41, 51, "2,Order,2", "d", "Check", "Ann"}) + "13,51,2,Order,2\n6,60\n";

TEST(FormulaAgent, ItemsThatAnInputLacksHaveNoValue) {
    MeasuredWorld world(formula("N:\\\"Passes\\\" * 10 + \\\"Stay\\\""));
    world.play(trace);
    EXPECT_EQ(world.values(1), (Values{{"Order", 25.5}, {"Order / Check", 15.25}}));
    const Values expected{{"Order", 20.0 + 26.0}, {"Order / Check", 30.0 + 15.0}};
    EXPECT_EQ(world.values(Formula), expected) << "times are taken in whole seconds";
    EXPECT_EQ(world.values(Formula), expected);
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
}

TEST(FormulaAgent, KindIsThatOfThePrefixOrOfTheFirstName) {
    for (const auto& [expression, kind] : {std::pair{"T:\\\"Passes\\\" + \\\"Stay\\\"", ResultKindTime},
                                           {"N:\\\"Stay\\\" / \\\"Passes\\\"", ResultKindNumber},
                                           {"\\\"Passes\\\" + \\\"Stay\\\"", ResultKindNumber},
                                           {"\\\"Stay\\\" + \\\"Passes\\\"", ResultKindTime}}) {
        MeasuredWorld world(formula(expression));
        world.play(trace);
        MeroAgentResultSet* const set = world.subAgent(Formula).getResultSet({});
        ASSERT_NE(set, nullptr) << expression;
        EXPECT_EQ(set->getResultKind(), kind) << expression;
    }
}

TEST(FormulaAgent, ItemsThatCannotBeComputedAreToldOnceAndTheOthersStay) {
    MeasuredWorld world(formula("N:\\\"Stay\\\" / (\\\"Passes\\\" - 2)"));
    world.play(trace);
    EXPECT_EQ(world.values(Formula), (Values{{"Order / Check", 15.0}}));
    EXPECT_EQ(EmbeddedPlatform::boxes(), (Messages{0x2005187}));
}

TEST(FormulaAgent, ExpressionsThatCannotBeUsedKeepItFromStarting) {
    std::string many = "N:1";
    for (int number = 0; number < 27; ++number) {
        many += " + \\\"agent " + std::to_string(number) + "\\\"";
    }
    struct Case {
        std::string expression;
        std::uint32_t message;
    };
    for (const auto& [expression, message] :
         {Case{"N:\\\"Passes\\\" +", 0x2005174}, Case{"N:\\\"Passes", 0x2005174}, Case{"", 0x2005186},
          Case{many, 0x2005188}}) {
        const MeasuredWorld world(formula(expression));
        ASSERT_FALSE(EmbeddedPlatform::boxes().empty());
        EXPECT_EQ(EmbeddedPlatform::boxes().front(), message) << expression;
        EXPECT_EQ(world.subAgent(Formula).getAgentState(), AgentIdle) << expression;
    }
}

TEST(FormulaAgent, RefusalsNameTheColumnOfTheExpressionAsWritten) {
    struct Case {
        const char* expression;
        const char* end;
    };
    for (const auto& [expression, end] :
         {Case{"\\\"Passes\\\" + * 2", "column 12: a value is expected here"},
          Case{"N:\\\"Passes\\\" + * 2", "column 14: a value is expected here"},
          Case{"T:2 $", "column 5: \"$\" isn't part of a formula"},
          Case{"N:\\\"Pässe\\\" \\\"Stay\\\"", "column 11: an operator is expected here"}}) {
        const MeasuredWorld world(formula(expression));
        const auto& boxes = SV::BoxDesk::GetGlobal().getRecords();
        ASSERT_EQ(boxes.size(), 1U) << expression;
        EXPECT_TRUE(boxes.front().text.view().ends_with(end)) << boxes.front().text.view();
    }
}

TEST(FormulaAgent, NamesMayBeLong) {
    const std::string longName(300, 'L');
    MeasuredWorld world({.sections = "FREQUENCY name:\"" + longName +
                                     "\" path-analysis resultscope:process absolute\n"
                                     "FORMULA name:\"F\" path-analysis expression:\"N:2 * \\\"" +
                                     longName + "\\\"\" OBSERVED \"" + longName + "\""});
    world.play(trace);
    EXPECT_EQ(world.values(1), (Values{{"Order", 4.0}}));
}

TEST(FormulaAgent, NamesWithQuotesAndBackslashesAreFound) {
    MeasuredWorld world(
        {.sections = "FREQUENCY name:\"a \\\"b\\\" \\\\\" path-analysis resultscope:process absolute\n"
                     "FORMULA name:\"F\" path-analysis "
                     "expression:\"N:2 * \\\"a \\\\\\\"b\\\\\\\" \\\\\\\\\\\"\" "
                     "OBSERVED \"a \\\"b\\\" \\\\\""});
    world.play(trace);
    EXPECT_EQ(world.values(1), (Values{{"Order", 4.0}}));
}

}  // namespace

}  // namespace mero::test
