#include "platform/engine/shift_plan.h"
#include "platform/time/calendar_text.h"
#include "tests/platform/engine/work_load_fixture.h"

namespace mero {
namespace {

class ArrivalTest : public WorkLoadFixture {
protected:
    /// Times of events 11 of a run in which nothing is done.
    std::string arrivals(ProcessBuilder::Attributes attributes, std::uint64_t instances) {
        ProcessBuilder model(repository, "Order " + std::to_string(++models));
        model.chain({model.add("Start event", "Begin", attributes), model.add("End event", "End")});
        simulate(model, instances);
        std::string times;
        for (std::size_t place = log.text.find("11@"); place != std::string::npos;
             place = log.text.find("11@", place + 1)) {
            times += (times.empty() ? "" : " ") +
                     log.text.substr(place + 3, log.text.find(' ', place) - place - 3);
        }
        return times;
    }

    int models = 0;
};

TEST_F(ArrivalTest, GapsOutsideOfTheCalendarEndWithTheNextWorkingTime) {
    EXPECT_EQ(arrivals({{"Arrival", text("fixed(50)")}}, 3), "0 50 100");
    EXPECT_EQ(arrivals({{"Arrival", text("fixed(50)")},
                        {"Arrival calendar", text("CALENDAR DAILY hours:\"00:01-00:02 00:05-00:06\"")}},
                       5),
              "60 110 300 350 86460");
}

TEST_F(ArrivalTest, QuantityIsSpreadOverThePeriodAndItsWorkingTime) {
    EXPECT_EQ(arrivals({{"Quantity", std::int32_t{4}}}, 3), "0 21600 43200");
    EXPECT_EQ(arrivals({{"Quantity", std::int32_t{73}}, {"Time period", text("per year")}}, 2), "0 432000");
    EXPECT_EQ(arrivals({{"Quantity", std::int32_t{2}},
                        {"Arrival calendar", text("CALENDAR DAILY hours:\"08:00-12:00 14:00-16:00\"")}},
                       4),
              "28800 39600 115200 126000");
    settings.until = 86'400;
    EXPECT_EQ(arrivals({{"Quantity", std::int32_t{4}}}, 0), "0 21600 43200 64800 86400");
}

TEST_F(ArrivalTest, StartEventsArriveSideBySideAndShareTheInstances) {
    ProcessBuilder model(repository, "Order");
    const MeroId left = model.add("Start event", "Left", {{"Arrival", text("fixed(10)")}});
    const MeroId right = model.add("Start event", "Right", {{"Arrival", text("fixed(15)")}});
    model.flow(left, model.add("Task", "L"));
    model.flow(right, model.add("Task", "R"));
    model.add("Start event", "Never");
    log.tellsReached = true;
    const RunSummary summary = simulate(model, 4);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 22@0 L, 17@0 L, 11@0 #2, 22@0 R, 17@0 R, 20@0 L, 13@0 #1, 20@0 R, 13@0 #2, "
              "11@10 #3, 22@10 L, 17@10 L, 20@10 L, 13@10 #3, 11@15 #4, 22@15 R, 17@15 R, 20@15 R, 13@15 #4, "
              "6@15");
    EXPECT_EQ(summary.started, 4U);
}

TEST_F(ArrivalTest, ModelsWithoutArrivalAreTold) {
    ProcessBuilder model(repository, "Order");
    model.add("Start event", "Begin", {{"Arrival", text("fixed(10)")}});
    const ProcessBuilder other(repository, "Other");
    settings.models = {model.id(), other.id()};
    settings.instances = 2;
    EXPECT_EQ(simulate().started, 2U);
    EXPECT_EQ(problems.back(), "model \"Other\" has no start event with an arrival: it isn't started");
}

TEST_F(ArrivalTest, ArrivalsWithoutAnyGapEndTheRun) {
    ProcessBuilder model(repository, "Order");
    model.add("Start event", "Begin", {{"Arrival", text("fixed(0)")}});
    settings.until = 100;
    settings.models = {model.id()};
    EXPECT_EQ(simulate().reports.begin()->first, "instances arrive at the same time without end");
}

TEST(ShiftPlan, WorksOnTheClockOfTheRun) {
    const auto shifts = [](std::int64_t startOffset) {
        return ShiftPlan(std::make_shared<const WorkingCalendar>(
                             readCalendarText("CALENDAR DAILY hours:\"08:00-12:00 13:00-17:00\"").value()),
                         startOffset);
    };
    constexpr double Hour = 3600.0;
    const ShiftPlan plan = shifts(0);
    EXPECT_FALSE(plan.isWorking(8 * Hour - 0.001));
    EXPECT_TRUE(plan.isWorking(8 * Hour));
    EXPECT_EQ(plan.nextBorder(8 * Hour), 12 * Hour);
    EXPECT_EQ(plan.nextBorder(12 * Hour), 13 * Hour);
    EXPECT_EQ(plan.movedIntoWork(12.5 * Hour), 13 * Hour);
    EXPECT_EQ(plan.movedIntoWork(9.5 * Hour), 9.5 * Hour);
    EXPECT_DOUBLE_EQ(plan.afterWork(11 * Hour, 2.25 * Hour), 14.25 * Hour);
    EXPECT_DOUBLE_EQ(plan.afterWork(20 * Hour, 8.5 * Hour), (48 + 8.5) * Hour);
    EXPECT_DOUBLE_EQ(plan.workShare(), 8.0 / 24.0);
    EXPECT_EQ(shifts(9 * 3600).nextBorder(0.0), 3 * Hour);
    EXPECT_EQ(shifts(9 * 3600 + WorkingCalendar::SecondsPerCycle).nextBorder(0.0), 3 * Hour);
}

}  // namespace
}  // namespace mero
