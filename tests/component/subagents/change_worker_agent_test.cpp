#include <gtest/gtest.h>

#include "component/agents/super_agent.h"
#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

using Values = std::map<std::string, double>;

MeasuredWorld::Setup changes(int analysis = AnalysisVolume,
                             const std::string& keywords = "class:\"Worker\"") {
    return {
        .sections = "RESPCHANGE name:\"R\" resultscope:process volume-analysis wlstatic-analysis " + keywords,
        .analysis = analysis};
}

/// One instance with these passes: who works from when to when.
struct Step {
    const char* worker;
    int from;
    int to;
};

std::string instanceOf(const std::vector<Step>& steps, int end) {
    std::string lines = "11,0,1,Order,1\n";
    std::vector<std::pair<int, std::string>> events;
    for (std::size_t number = 0; number < steps.size(); ++number) {
        const Step& step = steps[number];
        const std::string cells = ",1,Order,1,p" + std::to_string(number) + ",Check," + step.worker + "\n";
        events.emplace_back(step.from, "1," + std::to_string(step.from) + cells);
        events.emplace_back(step.to, "20," + std::to_string(step.to) + cells);
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    for (const auto& event : events) {
        lines += event.second;
    }
    return lines + "13," + std::to_string(end) + ",1,Order,1\n";
}

TEST(ChangeWorkerAgent, CountsEachTimeAnotherWorkerGoesOn) {
    struct Case {
        const char* name;
        std::vector<Step> steps;
        double changes;
    };
    for (const auto& [name, steps, expected] :
         {Case{"one worker", {{"Ann", 0, 1}, {"Ann", 1, 2}, {"Ann", 2, 3}}, 0.0},
          Case{"there and back", {{"Ann", 0, 1}, {"Bob", 1, 2}, {"Ann", 2, 3}}, 2.0},
          Case{"side by side to the same moment", {{"Ann", 0, 2}, {"Bob", 0, 2}, {"Bob", 2, 3}}, 0.0},
          Case{"side by side, one ends later", {{"Ann", 0, 1}, {"Bob", 0, 2}, {"Ann", 2, 3}}, 1.0},
          Case{"nobody has finished yet", {{"Ann", 0, 9}, {"Bob", 1, 9}}, 0.0}}) {
        MeasuredWorld world(changes());
        world.play("3,0\n" + instanceOf(steps, 10) + "6,10\n");
        EXPECT_EQ(world.values(), (Values{{"Order", expected}})) << name;
    }
}

TEST(ChangeWorkerAgent, UnusableCalendarIsToldBeforeAWrongClass) {
    const MeasuredWorld world(changes(AnalysisVolume, "class:\"Role\""));
    EXPECT_EQ(world.subAgent().getAgentState(), AgentIdle);
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeasubag"}));
    EmbeddedPlatform::clearRecords();
    world.subAgent().getOwnerSuperAgent()->setCalendarText("CALENDAR DAILY hours:\"late\"");
    EXPECT_EQ(world.subAgent().prepareRun(AnalysisVolume), StatusBadCalendar);
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x2004E23}));
    EXPECT_TRUE(EmbeddedPlatform::internalErrors().empty());
}

TEST(ChangeWorkerAgent, MeanIsOverFinishedInstances) {
    MeasuredWorld world(changes());
    world.play("3,0\n" + instanceOf({{"Ann", 0, 1}, {"Bob", 1, 2}}, 3) +
               "11,3,2,Order,2\n13,4,2,Order,2\n11,4,3,Order,3\n1,4,3,Order,3,x,Check,Ann\n20,5,3,Order,3,x,"
               "Check,Ann\n"
               "1,5,3,Order,3,y,Check,Bob\n15,6,3,Order,3\n13,6,3,Order,3\n6,10\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 0.5}}));
}

TEST(ChangeWorkerAgent, WhoFinishedLastIsKnownBeyondTheEndOfAProcess) {
    MeasuredWorld world(changes());
    world.play("3,0\n" + instanceOf({{"Ann", 0, 1}}, 2) +
               "11,2,2,Order,2\n1,2,2,Order,2,x,Check,Ann\n"
               "11,3,1,Order,1\n1,3,1,Order,1,y,Check,Bob\n15,4,1,Order,1\n"
               "11,5,1,Order,1\n1,5,1,Order,1,z,Check,Bob\n13,6,1,Order,1\n6,10\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 0.5}})) << "a process that begins again goes on from there";
}

TEST(ChangeWorkerAgent, WorkThatEndsOutOfHoursIsForgotten) {
    MeasuredWorld::Setup setup = changes(AnalysisStaticWorkLoad);
    setup.calendar = "CALENDAR DAILY hours:\"00:00-01:00 02:00-24:00\"";
    MeasuredWorld world(setup);
    world.play(
        "3,0\n11,7300,1,Order,1\n1,7300,1,Order,1,a,Check,Ann\n20,7400,1,Order,1,a,Check,Ann\n"
        "1,7400,1,Order,1,b,Check,Ann\n20,7500,1,Order,1,b,Check,Ann\n13,7600,1,Order,1\n"
        "11,3500,2,Order,2\n1,3500,2,Order,2,c,Check,Ann\n20,5000,2,Order,2,c,Check,Ann\n"
        "1,7300,2,Order,2,d,Check,Bob\n13,7400,2,Order,2\n6,8000\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 0.0}}));
}

}  // namespace

}  // namespace mero::test
