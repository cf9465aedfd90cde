#include <gtest/gtest.h>

#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

using Values = std::map<std::string, double>;

MeasuredWorld::Setup sums(const std::string& keywords, int analysis = AnalysisPath) {
    return {
        .sections = "AVGSUM name:\"A\" resultscope:mainobjects path-analysis wlstatic-analysis " + keywords,
        .analysis = analysis};
}

const std::string numbers = "class:\"Task\" attribute:\"Number\" attribute-type:numeric";

TEST(AverageAttributeSumAgent, FinishedPassesAddUpAndAreDividedByFinishedInstances) {
    MeasuredWorld world(sums(numbers));
    world.play(
        "3,0\n11,0,1,Order,1\n20,1,1,Order,1,a,Check\n20,2,1,Order,1,b,Check\n17,3,1,Order,1,c,Pack\n13,4,1,"
        "Order,1\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 6.0}, {"Order / Check", 6.0}}));
    world.play("11,4,2,Order,2\n20,5,2,Order,2,d,Pack\n13,6,2,Order,2\n6,7\n");
    const Values both{{"Order", 5.5}, {"Order / Check", 3.0}, {"Order / Pack", 2.5}};
    EXPECT_EQ(world.values(), both);
    EXPECT_EQ(world.values(), both);
}

TEST(AverageAttributeSumAgent, TimesAreSecondsAndObjectsOfOtherClassesCountNothing) {
    MeasuredWorld world(sums("class:\"Task\" attribute:\"Execution time\" attribute-type:time"));
    world.play(
        "3,0\n11,0,1,Order,1\n20,1,1,Order,1,a,Check\n20,2,1,Order,1,b,Ship\n20,2,1,Order,1,b,Pack\n13,4,1,"
        "Order,1\n");
    EXPECT_EQ(world.values(),
              (Values{{"Order", 10800.0}, {"Order / Check", 3600.0}, {"Order / Pack", 7200.0}}));
    EXPECT_EQ(world.subAgent().getResultSet({})->getResultKind(), ResultKindTime);
}

TEST(AverageAttributeSumAgent, AttributeOfAnotherTypeKeepsTheAgentFromStarting) {
    const MeasuredWorld world(sums("class:\"Task\" attribute:\"Performer\" attribute-type:numeric"));
    EXPECT_EQ(world.subAgent().getAgentState(), AgentIdle);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeasubag"}));
}

TEST(AverageAttributeSumAgent, ImpossibleSpanOfAnInstanceIsReportedAndEndsTheAgent) {
    using Modules = std::vector<std::string>;
    for (const auto& [start, modules] :
         {std::pair{"-1", Modules{"aeasubag"}}, {"50", Modules{"aeagents", "aeasubag"}}}) {
        MeasuredWorld world(sums(numbers, AnalysisStaticWorkLoad));
        world.play("3,0\n11," + std::string(start) + ",1,Order,1\n13,5,1,Order,1\n");
        EXPECT_EQ(EmbeddedPlatform::internalErrors(), modules) << "start at " << start;
        EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051B2}));
        EXPECT_EQ(world.subAgent().getAgentState(), AgentFailed);
    }
}

TEST(AverageAttributeSumAgent, InstancesThatAreDroppedOpenOrPartlyOutOfHoursLeaveNoTrace) {
    MeasuredWorld::Setup setup = sums(numbers, AnalysisStaticWorkLoad);
    setup.calendar = "CALENDAR DAILY hours:\"08:00-16:00\"";
    MeasuredWorld world(setup);
    const auto instance = [](int start, int finished, int end) {
        return "11," + std::to_string(start) + ",1,Order,1\n20," + std::to_string(finished) +
               ",1,Order,1,a,Check\n13," + std::to_string(end) + ",1,Order,1\n";
    };
    world.play("3,0\n" + instance(100, 30000, 31000) + instance(30000, 70000, 90000) +
               instance(120000, 120000, 150000) + instance(206000, 206001, 206002) +
               "11,206010,1,Order,1\n20,206010,1,Order,1,a,Check\n15,206010,1,Order,1\n13,206010,1,Order,1\n"
               "11,206020,1,Order,1\n20,206020,1,Order,1,a,Check\n6,206030\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 3.0}, {"Order / Check", 3.0}}));
}

TEST(AverageAttributeSumAgent, RestartCountsProcessesAnew) {
    MeasuredWorld world(sums(numbers));
    const std::string instance = "11,0,1,Order,1\n20,0,1,Order,1,a,Check\n13,0,1,Order,1\n";
    world.play("3,0\n" + instance + "28,0\n3,0\n" + instance + "6,0\n");
    EXPECT_EQ(world.values()["Order / Check"], 3.0);
}

}  // namespace

}  // namespace mero::test
