#include <gtest/gtest.h>

#include "tests/component/support/measured_world.h"

namespace mero::test {

namespace {

using Values = std::map<std::string, double>;

MeasuredWorld::Setup times(const std::string& scope = "mainobjects", int analysis = AnalysisPath,
                           const std::string& keywords = "") {
    return {.sections =
                "CYCLETIME name:\"T\" path-analysis wlstatic-analysis resultscope:" + scope + " " + keywords,
            .analysis = analysis};
}

/// Reached and finished.
std::string stay(int from, int to, const std::string& pass, const std::string& object = "Check",
                 const std::string& key = "1") {
    const std::string cells = "," + key + ",Order," + key + "," + pass + "," + object + "\n";
    return "22," + std::to_string(from) + cells + "20," + std::to_string(to) + cells;
}

TEST(CycleTimeAgent, StayCountsFromTheMomentTheObjectIsReached) {
    MeasuredWorld world(times());
    world.play(
        "3,0\n11,0,1,Order,1\n22,10,1,Order,1,a,Check\n17,50,1,Order,1,a,Check\n18,60,1,Order,1,a,Check\n"
        "19,80,1,Order,1,a,Check\n20,90,1,Order,1,a,Check\n13,100,1,Order,1\n6,100\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 80.0}, {"Order / Check", 80.0}}))
        << "the process lasts from its first pass to the end of its last";
}

TEST(CycleTimeAgent, MeanOfAnInstanceThenMeanOfTheInstances) {
    MeasuredWorld world(times());
    world.play("3,0\n11,0,1,Order,1\n" + stay(0, 10, "a") + stay(10, 40, "b") + "13,40,1,Order,1\n" +
               "11,40,2,Order,2\n" + stay(40, 80, "c", "Check", "2") + "13,80,2,Order,2\n" +
               "11,80,3,Order,3\n" + stay(80, 85, "d", "Pack", "3") + "13,85,3,Order,3\n6,85\n");
    EXPECT_EQ(world.values(),
              (Values{{"Order", (40.0 + 40.0 + 5.0) / 3.0}, {"Order / Check", 30.0}, {"Order / Pack", 5.0}}));
}

TEST(CycleTimeAgent, OpenUnknownAndDroppedPassesCountNothing) {
    MeasuredWorld world(times());
    world.play("3,0\n11,0,1,Order,1\n" + stay(0, 10, "a") +
               "22,10,1,Order,1,open,Pack\n20,30,1,Order,1,unknown,Pack\n13,40,1,Order,1\n"
               "11,40,2,Order,2\n" +
               stay(40, 50, "b", "Pack", "2") + "15,60,2,Order,2\n13,60,2,Order,2\n6,60\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 30.0}, {"Order / Check", 10.0}}));
}

TEST(CycleTimeAgent, ProcessScopeKnowsTheProcessAlone) {
    MeasuredWorld world(times("process"));
    world.play("3,0\n11,0,1,Order,1\n" + stay(5, 10, "a") + stay(20, 40, "b") + "13,50,1,Order,1\n6,60\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 35.0}}));
}

TEST(CycleTimeAgent, WhatHappensOutOfHoursIsForgottenOrCostsTheInstance) {
    MeasuredWorld::Setup setup = times("mainobjects", AnalysisStaticWorkLoad);
    setup.calendar = "CALENDAR DAILY hours:\"00:00-01:00 02:00-24:00\"";
    MeasuredWorld world(setup);
    world.play("3,0\n11,100,1,Order,1\n" + stay(100, 200, "a") +
               "13,300,1,Order,1\n"  // in hours
               "11,300,2,Order,2\n" +
               stay(300, 400, "b", "Check", "2") +
               "13,4000,2,Order,2\n"  // ends in the break
               "11,400,3,Order,3\n" +
               stay(400, 500, "c", "Check", "3") +
               "13,8000,3,Order,3\n"  // across it
               "11,4000,4,Order,4\n" +
               stay(8000, 8100, "d", "Check", "4") +
               "13,8200,4,Order,4\n"  // begins in it
               "6,9000\n");
    EXPECT_EQ(world.values(), (Values{{"Order", 100.0}, {"Order / Check", 100.0}}));
    EXPECT_EQ(world.subAgent().getFinishedProcesses(), 1);
}

TEST(CycleTimeAgent, ProcessWithoutAMeasuredStartIsReportedAndLeftToTheCalendar) {
    MeasuredWorld world(times("mainobjects", AnalysisStaticWorkLoad));
    world.play("3,0\n11,-1,1,Order,1\n" + stay(0, 5, "a") + "13,5,1,Order,1\n");
    EXPECT_EQ(EmbeddedPlatform::internalErrors(), (std::vector<std::string>{"aeasubag"}));
    world.play("11,10,2,Order,2\n" + stay(10, 25, "b", "Check", "2") + "13,25,2,Order,2\n6,30\n");
    EXPECT_EQ(world.subAgent().getAgentState(), AgentFinished);
    EXPECT_EQ(world.values(), (Values{{"Order", 10.0}, {"Order / Check", 10.0}}));
    EXPECT_TRUE(EmbeddedPlatform::boxes().empty());
}

TEST(CycleTimeAgent, ProcessThatEndsBeforeItBeginsEndsTheAgent) {
    MeasuredWorld world(times("mainobjects", AnalysisStaticWorkLoad));
    world.play("3,0\n11,50,1,Order,1\n13,5,1,Order,1\n");
    EXPECT_EQ(EmbeddedPlatform::boxes(), (std::vector<std::uint32_t>{0x20051B2}));
    EXPECT_EQ(world.subAgent().getAgentState(), AgentFailed);
}

TEST(CycleTimeAgent, HistoryIsOverTheCountOfInstancesInPathAnalysis) {
    MeasuredWorld world(times("process", AnalysisPath, "history-mem"));
    world.play("3,0\n11,0,1,Order,1\n" + stay(0, 10, "a") + "13,10,1,Order,1\n11,10,2,Order,2\n" +
               stay(10, 40, "b", "Check", "2") + "13,40,2,Order,2\n6,60\n");
    std::vector<std::pair<double, double>> readings;
    MeroSequenceResult* const history = world.subAgent().getResultSet({})->getHistory();
    ASSERT_NE(history, nullptr);
    for (MeroSequenceEntry entry; history->getNext(entry);) {
        readings.emplace_back(entry.time, entry.value);
    }
    EXPECT_EQ(readings, (std::vector<std::pair<double, double>>{{1, 10}, {2, 20}}));
}

TEST(CycleTimeAgent, ReadingInMidRunShowsWhatHasEnded) {
    MeasuredWorld world(times());
    world.play("3,0\n11,0,1,Order,1\n" + stay(0, 10, "a") + "11,10,2,Order,2\n13,10,1,Order,1\n" +
               stay(10, 90, "b", "Check", "2"));
    EXPECT_EQ(world.values(), (Values{{"Order", 10.0}, {"Order / Check", 10.0}}));
    world.play("13,90,2,Order,2\n28,90\n3,90\n6,91\n");
    EXPECT_EQ(world.values(), Values{}) << "a restart forgets";
}

}  // namespace

}  // namespace mero::test
