#include <gtest/gtest.h>

#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

using Values = std::map<std::string, double>;
using Messages = std::vector<std::uint32_t>;

MeasuredWorld::Setup workLoad(const std::string& calendar = "00:00-24:00", const std::string& keywords = "") {
    return {.sections =
                "WORKLOAD name:\"W\" wlstatic-analysis resultscope:mainobjects class:\"Worker\" " + keywords,
            .analysis = AnalysisStaticWorkLoad,
            .calendar = "CALENDAR DAILY hours:\"" + calendar + "\""};
}

constexpr int Hour = 3600;

std::string at(int hours) {
    return std::to_string(hours * Hour);
}

/// From hour to hour, by Bob.
std::string work(int from, int to, const std::string& pass, const std::string& object = "Check") {
    return "17," + at(from) + ",1,Order,1," + pass + "," + object + ",Bob\n20," + at(to) + ",1,Order,1," +
           pass + "," + object + ",Bob\n";
}

TEST(WorkLoadAgent, OnlyWorkingHoursOfANightCount) {
    MeasuredWorld world(workLoad("08:00-16:00"));
    world.play("3,0\n11,0,1,Order,1\n" + work(15, 34, "a") + "13," + at(34) + ",1,Order,1\n6," + at(34) +
               "\n");
    EXPECT_EQ(world.values(), (Values{{"Order / Check / Bob", 3.0 / 10.0}}))
        << "15:00 to 16:00 and 8:00 to 10:00, of two working days up to 10:00";
}

TEST(WorkLoadAgent, PeriodsOfOnePassAndPassesOfOneObjectAddUp) {
    MeasuredWorld world(workLoad());
    world.play("3,0\n11,0,1,Order,1\n17," + at(1) + ",1,Order,1,a,Check,Bob\n18," + at(2) +
               ",1,Order,1,a,Check,Bob\n19," + at(5) + ",1,Order,1,a,Check,Bob\n20," + at(7) +
               ",1,Order,1,a,Check,Bob\n" + work(8, 9, "b") + work(9, 10, "c", "Pack") + "13," + at(10) +
               ",1,Order,1\n6," + at(20) + "\n");
    EXPECT_EQ(world.values(), (Values{{"Order / Check / Bob", 0.2}, {"Order / Pack / Bob", 0.05}}));
}

TEST(WorkLoadAgent, OpenPeriodsCountUpToNowAndReadingTwiceChangesNothing) {
    MeasuredWorld world(workLoad());
    world.play("3,0\n11,0,1,Order,1\n17," + at(2) + ",1,Order,1,a,Check,Bob\n22," + at(8) +
               ",1,Order,1,z,Pack\n");
    EXPECT_EQ(world.values(), (Values{{"Order / Check / Bob", 6.0 / 8.0}}));
    EXPECT_EQ(world.values(), (Values{{"Order / Check / Bob", 6.0 / 8.0}}));
    world.play("6," + at(16) + "\n");
    EXPECT_EQ(world.values(), (Values{{"Order / Check / Bob", 14.0 / 16.0}}));
    EXPECT_EQ(world.values(), (Values{{"Order / Check / Bob", 14.0 / 16.0}}));
    EXPECT_EQ(world.subAgent().getAgentState(), AgentFinished);
}

TEST(WorkLoadAgent, WorkThatNeverBeganAndDroppedInstancesCountNothing) {
    MeasuredWorld world(workLoad());
    world.play("3,0\n11,0,1,Order,1\n20," + at(3) + ",1,Order,1,a,Check,Bob\n13," + at(3) + ",1,Order,1\n" +
               "11," + at(3) + ",1,Order,1\n" + work(3, 4, "b") + "15," + at(4) + ",1,Order,1\n6," + at(5) +
               "\n");
    EXPECT_EQ(world.values(), Values{});
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
}

TEST(WorkLoadAgent, OpenPeriodOfADroppedInstanceEndsTheAgent) {
    MeasuredWorld world(workLoad());
    world.play("3,0\n11,0,1,Order,1\n17," + at(1) + ",1,Order,1,a,Check,Bob\n15," + at(2) + ",1,Order,1\n");
    EXPECT_EQ(world.values(), Values{});
    EXPECT_EQ(EmbeddedPlatform::boxes(), (Messages{0x20051B2}));
}

TEST(WorkLoadAgent, PassOfAnUnknownSubProcessEndsTheAgentWhenItBegins) {
    MeasuredWorld::Setup setup = workLoad();
    setup.sections = "WORKLOAD name:\"W\" wlstatic-analysis resultscope:allobjects class:\"Worker\"";
    setup.inEnvironment = true;
    setup.objects = "all \"Worker\"";
    MeasuredWorld world(setup);
    world.play("3,0\n11,0,1,Order,1\n17," + at(1) + ",1,Order,unknown,a,Check,Bob\n");
    EXPECT_EQ(world.subAgent().getAgentState(), AgentFailed);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (Messages{0x20051B2}));
}

TEST(WorkLoadAgent, WorkerWithoutCommonHoursEndsTheAgentAtTheFirstReport) {
    MeasuredWorld world(workLoad());
    EXPECT_EQ(world.startStatus(), StatusOk);
    world.play("3,0\n11,0,1,Order,1\n17,0,1,Order,1,a,Check,Eve\n20," + at(1) + ",1,Order,1,a,Check,Eve\n" +
               "13," + at(1) + ",1,Order,1\n");
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
    world.play("6," + at(2) + "\n");
    EXPECT_EQ(EmbeddedPlatform::boxes(), (Messages{0x2005175, 0x20051B2}));
}

TEST(WorkLoadAgent, RestartMeasuresFromItsOwnStart) {
    MeasuredWorld world(workLoad());
    world.play("3,0\n11,0,1,Order,1\n" + work(0, 5, "a") + "28," + at(10) + "\n3," + at(10) + "\n11," +
               at(10) + ",1,Order,1\n" + work(10, 11, "b") + "13," + at(12) + ",1,Order,1\n6," + at(14) +
               "\n");
    EXPECT_EQ(world.values(), (Values{{"Order / Check / Bob", 0.25}}));
}

}  // namespace

}  // namespace mero::test
