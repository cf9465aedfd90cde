#include <gtest/gtest.h>

#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

using Values = std::map<std::string, double>;
using Messages = std::vector<std::uint32_t>;

MeasuredWorld::Setup costs(const std::string& section, int analysis = AnalysisVolume,
                           const std::string& scope = "mainobjects") {
    return {.sections = section + " name:\"C\" volume-analysis resultscope:" + scope + " class:\"Worker\"",
            .analysis = analysis};
}

/// Instance 1 passes Check twice, instance 2 not at all.
const std::string twoInstances =
    "3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Check,Ann\n17,0,1,Order,1,b,Check,Bob\n13,0,1,Order,1\n"
    "11,0,2,Order,2\n17,0,2,Order,2,c,Pack,Bob\n13,0,2,Order,2\n6,0\n";

TEST(RefCostAgents, WeightedCostIsAMeanOfAllInstances) {
    MeasuredWorld weighted(costs("WWECOST attribute:\"Hourly wages\""));
    weighted.play(twoInstances);
    EXPECT_EQ(weighted.values(), (Values{{"Order", 28.75},
                                         {"Order / Check", 16.25},
                                         {"Order / Check / Ann", 10.0},
                                         {"Order / Check / Bob", 6.25},
                                         {"Order / Pack", 12.5},
                                         {"Order / Pack / Bob", 12.5}}));
}

TEST(RefCostAgents, UnweightedCostIsAMeanOfThePasses) {
    MeasuredWorld unweighted(costs("UWWECOST attribute:\"Hourly wages\""));
    unweighted.play(twoInstances);
    EXPECT_EQ(unweighted.values(), (Values{{"Order / Check", 16.25},
                                           {"Order / Check / Ann", 20.0},
                                           {"Order / Check / Bob", 12.5},
                                           {"Order / Pack", 25.0},
                                           {"Order / Pack / Bob", 25.0}}));
}

TEST(RefCostAgents, RatesMayBeIntegers) {
    for (const char* const section : {"WWECOST", "UWWECOST"}) {
        MeasuredWorld world(costs(section + std::string(" attribute:\"Availability\"")));
        world.play(
            "3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Pack,Ann\n17,0,1,Order,1,b,Check,Zed\n13,0,1,Order,1\n6,"
            "0\n");
        EXPECT_EQ(world.values()["Order / Pack / Ann"], 100.0) << section;
        EXPECT_EQ(world.values()["Order / Check / Zed"], 0.0) << section << ": a rate of 0 is a rate";
    }
}

TEST(RefCostAgents, RateThatCannotBeReadEndsTheAgent) {
    for (const char* const section : {"WWECOST", "UWWECOST"}) {
        MeasuredWorld world(costs(section));
        world.play(twoInstances);
        EXPECT_EQ(world.subAgent().getAgentState(), AgentFailed) << section;
        EXPECT_EQ(EmbeddedPlatform::boxes(), (Messages{0x20051B2})) << section;
    }
}

TEST(RefCostAgents, DroppedAndOpenInstancesLeaveNoTrace) {
    MeasuredWorld world(costs("WWECOST attribute:\"Hourly wages\""));
    const std::string instance = "11,0,1,Order,1\n17,0,1,Order,1,a,Check,Ann\n";
    world.play("3,0\n" + instance + "15,0,1,Order,1\n13,0,1,Order,1\n" + instance + "6,0\n");
    EXPECT_EQ(world.values(), Values{});
}

TEST(RefCostAgents, RestartForgetsValuesAndGoesOnCountingProcesses) {
    MeasuredWorld restarted(costs("WWECOST attribute:\"Hourly wages\""));
    const std::string instance = "11,0,1,Order,1\n17,0,1,Order,1,a,Check,Ann\n";
    restarted.play("3,0\n" + instance + "13,0,1,Order,1\n28,0\n3,0\n" + instance + "13,0,1,Order,1\n6,0\n");
    EXPECT_EQ(restarted.values()["Order / Check / Ann"], 10.0);
}

TEST(UnweightedRefCostAgent, ReadingInMidRunShowsWhatLiveInstancesHoldAndCountsNothingTwice) {
    MeasuredWorld world(costs("UWWECOST attribute:\"Hourly wages\""));
    world.play("3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Check,Ann\n");
    const Values early{{"Order / Check", 20.0}, {"Order / Check / Ann", 20.0}};
    EXPECT_EQ(world.values(), early);
    world.play("17,0,1,Order,1,b,Pack,Bob\n13,0,1,Order,1\n6,0\n");
    const Values late = world.values();
    EXPECT_EQ(late.at("Order / Check / Ann"), 20.0);
    EXPECT_EQ(late.at("Order / Pack / Bob"), 25.0);
    EXPECT_EQ(world.values(), late);
}

TEST(UnweightedRefCostAgent, PassesOutOfHoursCountNothingOrCostTheInstance) {
    const std::string trace =
        "3,0\n11,30000,1,Order,1\n17,30000,1,Order,1,a,Check,Bob\n17,70000,1,Order,1,b,Check,Ann\n"
        "13,70000,1,Order,1\n6,86400\n";
    for (const auto& [scope, expected] :
         {std::pair{"mainobjects", Values{{"Order / Check", 12.5}, {"Order / Check / Bob", 12.5}}},
          {"process", Values{}}}) {
        MeasuredWorld::Setup setup =
            costs("UWWECOST attribute:\"Hourly wages\" wlstatic-analysis", AnalysisStaticWorkLoad, scope);
        setup.calendar = "CALENDAR DAILY hours:\"08:00-16:00\"";
        MeasuredWorld world(setup);
        world.play(trace);
        EXPECT_EQ(world.values(), expected) << scope;
    }
}

}  // namespace

}  // namespace mero::test
