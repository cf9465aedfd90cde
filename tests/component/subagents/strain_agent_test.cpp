#include <gtest/gtest.h>

#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

using Values = std::map<std::string, double>;
using Messages = std::vector<std::uint32_t>;

/// Strain is shown for a number of process starts in a period. Here it is one start in an hour, so that
/// values are hours of work in an hour.
class StrainWorld : public MeasuredWorld {
public:
    explicit StrainWorld(const std::string& keywords)
        : MeasuredWorld({.sections = "STRAIN name:\"S\" volume-analysis resultscope:mainobjects " + keywords,
                         .analysis = AnalysisVolume}) {
        request = {.scaled = true, .frequency = 1, .frequencyPeriod = "00:000:01:00:00"};
    }
};

TEST(StrainAgent, PassesOfOneObjectAddUpAndAvailabilityStretchesThem) {
    StrainWorld world("class:\"Worker\"");
    world.play(
        "3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Check,Ann\n17,0,1,Order,1,b,Check,Ann\n17,0,1,Order,1,c,Pack,"
        "Bob\n"
        "13,0,1,Order,1\n11,0,2,Order,2\n13,0,2,Order,2\n6,0\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 3.0},
                                      {"Order / Check", 2.0},
                                      {"Order / Check / Ann", 2.0},
                                      {"Order / Pack", 1.0},
                                      {"Order / Pack / Bob", 1.0}}));
}

TEST(StrainAgent, WorkerWhoIsNeverThereIsLeftOutAndTheInstanceCounts) {
    StrainWorld world("class:\"Worker\"");
    world.play(
        "3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Check,Zed\n13,0,1,Order,1\n"
        "11,0,2,Order,2\n17,0,2,Order,2,b,Check,Bob\n13,0,2,Order,2\n6,0\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 0.5}, {"Order / Check", 0.5}, {"Order / Check / Bob", 0.5}}));
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
}

TEST(StrainAgent, ResourcesAreMeasuredWhenTheyAreBoundAndInFull) {
    StrainWorld world("class:\"IT system\"");
    world.play(
        "3,0\n11,0,1,Order,1\n8,0,1,Order,1,a,Check,,Van\n17,5,1,Order,1,a,Check,Ann,Van\n17,9,1,Order,1,b,"
        "Pack,Bob\n"
        "13,9,1,Order,1\n6,9\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 1.0}, {"Order / Check", 1.0}, {"Order / Check / Van", 1.0}}));
}

TEST(StrainAgent, ScaledSetIsKeptUntilAnInstanceEnds) {
    StrainWorld world("class:\"Worker\"");
    world.play("3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Check,Bob\n13,0,1,Order,1\n11,0,2,Order,2\n");
    MeroAgentResultSet* const first = world.subAgent().getResultSet(world.request);
    EXPECT_EQ(world.subAgent().getResultSet(world.request), first);
    EXPECT_EQ(world.values()["Order / Check / Bob"], 1.0);
    world.request.frequency = 3;
    EXPECT_EQ(world.values()["Order / Check / Bob"], 3.0);
    world.play("13,0,2,Order,2\n");
    EXPECT_EQ(world.values()["Order / Check / Bob"], 1.5);
    world.request.frequencyPeriod = "00:000:00:30:00";
    EXPECT_EQ(world.values()["Order / Check / Bob"], 3.0);
    EXPECT_EQ(world.subAgent().getResultSet({}), nullptr) << "there is no unscaled strain";
    world.request.frequencyPeriod = "an hour";
    EXPECT_EQ(world.subAgent().getResultSet(world.request), nullptr);
}

TEST(StrainAgent, DroppedAndOpenInstancesLeaveNoTrace) {
    StrainWorld world("class:\"Worker\"");
    world.play(
        "3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Check,Bob\n15,0,1,Order,1\n13,0,1,Order,1\n"
        "11,0,2,Order,2\n17,0,2,Order,2,b,Check,Bob\n6,0\n");
    EXPECT_EQ(world.values(), Values{});
    EXPECT_EQ(world.subAgent().getAgentState(), AgentFinished);
}

TEST(StrainAgent, RestartForgetsValuesAndGoesOnCountingProcesses) {
    StrainWorld world("class:\"Worker\"");
    const std::string instance = "11,0,1,Order,1\n17,0,1,Order,1,a,Check,Bob\n13,0,1,Order,1\n";
    world.play("3,0\n" + instance + "28,0\n3,0\n" + instance + "6,0\n");
    EXPECT_EQ(world.values()["Order / Check / Bob"], 0.5);
}

TEST(StrainAgent, WorkWithoutAWorkerEndsTheAgentAndWhatEndedBeforeIsStillShown) {
    StrainWorld world("class:\"Worker\"");
    world.play(
        "3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Check,Bob\n13,0,1,Order,1\n"
        "11,0,2,Order,2\n17,0,2,Order,2,b,Check\n13,0,2,Order,2\n6,0\n");
    EXPECT_EQ(world.subAgent().getAgentState(), AgentFailed);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (Messages{0x20051B2}));
    EXPECT_EQ(world.values()["Order / Check / Bob"], 1.0);
}

}  // namespace

}  // namespace mero::test
