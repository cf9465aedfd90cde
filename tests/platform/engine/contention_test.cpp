#include "tests/platform/engine/work_load_fixture.h"

namespace mero {
namespace {

/// Queues, calendars and resources of the work load analyses, on runs that are short enough to be read.
class ContentionTest : public WorkLoadFixture {
protected:
    /// Start event, one task, end event; an instance comes every `gap` seconds.
    ProcessBuilder oneTask(std::string_view gap, ProcessBuilder::Attributes attributes) {
        ProcessBuilder model(repository, "Order");
        model.chain({model.add("Start event", "Begin", {{"Arrival", text(gap)}}),
                     model.add("Task", "Check", attributes), model.add("End event", "End")});
        return model;
    }
    MeroId clerk(std::string_view name, StaffBuilder::Attributes attributes = {}) {
        const MeroId worker = staff.add("Worker", name, attributes);
        staff.relate("Has role", worker, role);
        return worker;
    }

    MeroId role = staff.add("Role", "Clerk");
};

TEST_F(ContentionTest, InstancesQueueForTheOnlyWorker) {
    clerk("Ann");
    const auto model =
        oneTask("fixed(10)", {{"Duration", text("fixed(15)")}, {"Performer", text("role \"Clerk\"")}});
    log.tellsReached = true;

    const RunSummary summary = simulate(model, 2);

    EXPECT_EQ(
        log.text,
        "3@0, 11@0 #1, 22@0 Check, 1@0 Check Ann, 17@0 Check Ann, 11@10 #2, 22@10 Check, 20@15 Check Ann, "
        "13@15 #1, 1@15 Check Ann, 17@15 Check Ann, 20@30 Check Ann, 13@30 #2, 6@30");
    EXPECT_EQ(summary.started, 2U);
    EXPECT_EQ(summary.finished, 2U);
    EXPECT_EQ(summary.endTime, 30);
    EXPECT_EQ(problems, std::vector<std::string>{});
}

TEST_F(ContentionTest, LongestIdleWorkerIsTakenFirst) {
    clerk("Ann");
    clerk("Bob");
    const auto model =
        oneTask("fixed(10)", {{"Duration", text("fixed(5)")}, {"Performer", text("role \"Clerk\"")}});
    simulate(model, 3);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@0 Check Ann, 17@0 Check Ann, 20@5 Check Ann, 13@5 #1, "
              "11@10 #2, 1@10 Check Bob, 17@10 Check Bob, 20@15 Check Bob, 13@15 #2, "
              "11@20 #3, 1@20 Check Ann, 17@20 Check Ann, 20@25 Check Ann, 13@25 #3, 6@25");
}

TEST_F(ContentionTest, WorkIsSuspendedOverTheBreakAndStartsOnlyInWorkingTime) {
    clerk("Ann", {{"Calendar", text("CALENDAR DAILY hours:\"00:01-00:02 00:04-00:06\"")}});
    const auto model =
        oneTask("fixed(70)", {{"Duration", text("fixed(90)")}, {"Performer", text("role \"Clerk\"")}});
    simulate(model, 2);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@60 Check Ann, 17@60 Check Ann, 11@70 #2, 18@120 Check Ann, 19@240 Check Ann, "
              "20@270 Check Ann, 13@270 #1, 1@270 Check Ann, 17@270 Check Ann, 20@360 Check Ann, 13@360 #2, "
              "6@360");
}

TEST_F(ContentionTest, RunStartsWithinTheYearOfTheCalendars) {
    clerk("Ann", {{"Calendar", text("CALENDAR WEEKLY days:\"tue\" hours:\"00:00-24:00\"")}});
    const auto model =
        oneTask("fixed(70)", {{"Duration", text("fixed(5)")}, {"Performer", text("role \"Clerk\"")}});
    settings.startOffset = 86'400 - 30;
    simulate(model, 1);
    EXPECT_EQ(log.text, "3@0, 11@0 #1, 1@30 Check Ann, 17@30 Check Ann, 20@35 Check Ann, 13@35 #1, 6@35");
}

TEST_F(ContentionTest, AvailabilityStretchesWorkAndZeroExcludes) {
    clerk("Ann", {{"Availability", std::int32_t{0}}});
    clerk("Bob", {{"Availability", std::int32_t{50}}});
    const auto model =
        oneTask("fixed(70)", {{"Duration", text("fixed(5)")}, {"Performer", text("role \"Clerk\"")}});
    simulate(model, 1);
    EXPECT_EQ(log.text, "3@0, 11@0 #1, 1@0 Check Bob, 17@0 Check Bob, 20@10 Check Bob, 13@10 #1, 6@10");
    EXPECT_EQ(problems, std::vector<std::string>{
                            "model \"Staff\", object \"Ann\" has no availability, and is never assigned"});
}

TEST_F(ContentionTest, HigherPriorityGoesFirstAndEqualOnesInOrder) {
    clerk("Ann");
    ProcessBuilder model(repository, "Order");
    const MeroId begin = model.add("Start event", "Begin", {{"Arrival", text("fixed(1000)")}});
    const MeroId end = model.add("End event", "End");
    for (const auto& [name, priority] :
         std::vector<std::pair<std::string, std::int32_t>>{{"A", 0}, {"B", 0}, {"C", 2}, {"D", 2}}) {
        const MeroId task = model.add("Task", name,
                                      {{"Duration", text("fixed(5)")},
                                       {"Priority", priority},
                                       {"Performer", text("{\"Ann\":\"Worker\"}")}});
        model.chain({begin, task, end});
    }
    simulate(model, 1);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@0 A Ann, 17@0 A Ann, 20@5 A Ann, 1@5 C Ann, 17@5 C Ann, 20@10 C Ann, "
              "1@10 D Ann, 17@10 D Ann, 20@15 D Ann, 1@15 B Ann, 17@15 B Ann, 20@20 B Ann, 13@20 #1, 6@20");
}

TEST_F(ContentionTest, WorkNeedsWorkerAndResourceAtOnce) {
    clerk("Ann");
    clerk("Bob");
    const MeroId unit = staff.add("Organisational unit", "Fleet");
    const MeroId garage = staff.add("Organisational unit", "Garage");
    staff.relate("Part of", garage, unit);
    staff.relate("Provided by",
                 staff.add("Equipment", "Van",
                           {{"Calendar", text("CALENDAR DAILY hours:\"00:00-00:01 00:02-24:00\"")}}),
                 garage);
    const auto model = oneTask("fixed(20)", {{"Duration", text("fixed(50)")},
                                             {"Performer", text("role \"Clerk\"")},
                                             {"Resources", text("unit \"Fleet\"")}});
    simulate(model, 2);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@0 Check Ann, 8@0 Check Ann+Van, 17@0 Check Ann+Van, 11@20 #2, "
              "20@50 Check Ann+Van, 9@50 Check Ann+Van, 13@50 #1, "
              "1@50 Check Bob, 8@50 Check Bob+Van, 17@50 Check Bob+Van, 18@60 Check Bob+Van, "
              "19@120 Check Bob+Van, 20@160 Check Bob+Van, 9@160 Check Bob+Van, 13@160 #2, 6@160");
}

TEST_F(ContentionTest, WorkersHaveDurationsOfTheirOwn) {
    clerk("Ann", {{"Task durations", text("DURATION task:\"Check\" distribution:\"fixed(7)\"")}});
    clerk("Bob");
    const auto model =
        oneTask("fixed(0)", {{"Duration", text("fixed(5)")}, {"Performer", text("role \"Clerk\"")}});
    simulate(model, 2);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@0 Check Ann, 17@0 Check Ann, 11@0 #2, 1@0 Check Bob, 17@0 Check Bob, "
              "20@5 Check Bob, 13@5 #2, 20@7 Check Ann, 13@7 #1, 6@7");
}

TEST_F(ContentionTest, DurationsOfWorkersAreThoseOfTheTaskInItsModel) {
    clerk("Ann",
          {{"Task durations", text("DURATION model:\"Order\" task:\"Check\" distribution:\"fixed(7)\" "
                                   "DURATION model:\"Sub\" task:\"Check\" distribution:\"fixed(100)\" "
                                   "DURATION task:\"Check\" distribution:\"fixed(1)\" "
                                   "DURATION task:\"Look\" distribution:\"fixed(2)\" "
                                   "DURATION task:\"Look\" distribution:\"fixed(3)\" "
                                   "DURATION task:\"Chek\" distribution:\"fixed(3)\" "
                                   "DURATION model:\"Other\" task:\"Look\" distribution:\"fixed(9)\"")}});
    const auto task = [this](ProcessBuilder& model, std::string_view name) {
        return model.add("Task", name, {{"Performer", text("role \"Clerk\"")}});
    };
    ProcessBuilder sub(repository, "Sub");
    sub.chain({sub.add("Start event", "Begin"), task(sub, "Check")});
    ProcessBuilder model(repository, "Order");
    model.chain({model.add("Start event", "Begin", {{"Arrival", text("fixed(10)")}}), task(model, "Check"),
                 model.add("Call activity", "Call", {{"Referenced model", text("Sub")}}),
                 task(model, "Look")});
    simulate(model, 1);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@0 Check Ann, 17@0 Check Ann, 20@7 Check Ann, 12@7, 1@7 Check Ann, "
              "17@7 Check Ann, 20@107 Check Ann, 14@107, 1@107 Look Ann, 17@107 Look Ann, 20@110 Look Ann, "
              "13@110 #1, 6@110");
    EXPECT_EQ(problems,
              (std::vector<std::string>{
                  "model \"Staff\", object \"Ann\" has two durations for the task \"Look\": the last counts",
                  "model \"Staff\", object \"Ann\" has a duration for the task \"Chek\", which isn't there",
                  "model \"Staff\", object \"Ann\" has a duration for the task \"Look\" of model \"Other\", "
                  "which isn't there"}));
}

TEST_F(ContentionTest, InterruptingTimerFreesTheWorkerAndThePlaceInTheQueue) {
    clerk("Ann");
    ProcessBuilder model(repository, "Order");
    const MeroId check =
        model.add("Task", "Check", {{"Duration", text("fixed(100)")}, {"Performer", text("role \"Clerk\"")}});
    const MeroId late = model.add("Intermediate event", "Late",
                                  {{"Event kind", text("timer")}, {"Duration", text("fixed(30)")}});
    model.attach(late, check);
    const MeroId end = model.add("End event", "End");
    model.chain({model.add("Start event", "Begin", {{"Arrival", text("fixed(10)")}}), check, end});
    model.flow(late, end);
    log.tellsReached = true;
    simulate(model, 3);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 22@0 Check, 1@0 Check Ann, 17@0 Check Ann, 11@10 #2, 22@10 Check, 11@20 #3, "
              "22@20 Check, 18@30 Check Ann, 13@30 #1, 1@30 Check Ann, 17@30 Check Ann, 18@40 Check Ann, "
              "13@40 #2, 1@40 Check Ann, 17@40 Check Ann, 18@50 Check Ann, 13@50 #3, 6@50");
}

TEST_F(ContentionTest, PassesOfAMultiInstanceTaskQueueEach) {
    clerk("Ann");
    clerk("Bob");
    const auto model = oneTask("fixed(1000)", {{"Duration", text("fixed(5)")},
                                               {"Performer", text("role \"Clerk\"")},
                                               {"Loop", text("parallel")},
                                               {"Loop maximum", std::int32_t{3}}});
    simulate(model, 1);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@0 Check Ann, 17@0 Check Ann, 1@0 Check Bob, 17@0 Check Bob, 20@5 Check Ann, "
              "1@5 Check Ann, 17@5 Check Ann, 20@5 Check Bob, 20@10 Check Ann, 13@10 #1, 6@10");
}

TEST_F(ContentionTest, RunEndsAtItsTimeWithWorkUnfinished) {
    clerk("Ann");
    const auto model =
        oneTask("fixed(10)", {{"Duration", text("fixed(15)")}, {"Performer", text("role \"Clerk\"")}});
    settings.until = 22;
    const RunSummary summary = simulate(model, 0);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 1@0 Check Ann, 17@0 Check Ann, 11@10 #2, 20@15 Check Ann, 13@15 #1, "
              "1@15 Check Ann, 17@15 Check Ann, 11@20 #3, 6@22");
    EXPECT_EQ(summary.started, 3U);
    EXPECT_EQ(summary.finished, 1U);
    EXPECT_EQ(summary.unfinished, 2U);
    EXPECT_EQ(summary.endTime, 22);
}

TEST_F(ContentionTest, RunBeginsForItsObserversAfterTheWarmUpWithWhatIsGoingOn) {
    clerk("Ann");
    ProcessBuilder sub(repository, "Sub");
    sub.chain(
        {sub.add("Start event", "Begin"),
         sub.add("Task", "Inner", {{"Duration", text("fixed(15)")}, {"Performer", text("role \"Clerk\"")}})});
    ProcessBuilder model(repository, "Order");
    model.chain({model.add("Start event", "Begin", {{"Arrival", text("fixed(10)")}}),
                 model.add("Call activity", "Call", {{"Referenced model", text("Sub")}})});
    log.tellsReached = true;
    settings.analysis = Analysis::StaticWorkLoad;
    settings.warmUp = 20;
    const RunSummary summary = simulate(model, 3);
    EXPECT_EQ(log.text,
              "3@20, 11@20 #3, 12@20, 22@20 Inner, 1@20 Inner Ann, 17@20 Inner Ann, 11@20 #5, 12@20, "
              "22@20 Inner, 20@30 Inner Ann, 14@30, 13@30 #3, 1@30 Inner Ann, 17@30 Inner Ann, "
              "20@45 Inner Ann, 14@45, 13@45 #5, 6@45");
    EXPECT_EQ(summary.events, 18U);
    EXPECT_EQ(summary.finished, 3U);
}

TEST_F(ContentionTest, EveryStateOfAPassIsToldOnceAfterTheWarmUp) {
    const std::string_view untilTen = "CALENDAR DAILY hours:\"00:00-00:10 12:00-24:00\"";
    clerk("Ann", {{"Calendar", text(untilTen)}});
    staff.add("Equipment", "Van");
    ProcessBuilder model(repository, "Order");
    const MeroId split = model.add("Parallel gateway", "Split");
    model.chain({model.add("Start event", "Begin", {{"Arrival", text("fixed(100)")}}), split});
    // Suspended from 600 on; the other two wait for Ann, and their time before work.
    model.chain({split, model.add("Task", "Broken",
                                  {{"Duration", text("fixed(900)")},
                                   {"Performer", text("role \"Clerk\"")},
                                   {"Resources", text("all \"Equipment\"")}})});
    model.chain({split, model.add("Task", "Queued", {{"Performer", text("role \"Clerk\"")}})});
    model.chain({split, model.add("Task", "Waiting", {{"Waiting time", text("00:000:01:00:00")}})});
    model.chain({split, model.add("Task", "Resting", {{"Resting time", text("00:000:01:00:00")}})});
    log.tellsReached = true;
    settings.analysis = Analysis::StaticWorkLoad;
    settings.warmUp = 660;
    simulate(model, 1);
    EXPECT_EQ(log.text,
              "3@660, 11@660 #1, 22@660 Waiting, 22@660 Queued, 22@660 Broken, 1@660 Broken Ann, "
              "8@660 Broken Ann+Van, 17@660 Broken Ann+Van, 18@660 Broken Ann+Van, 17@3600 Waiting, "
              "20@3600 Waiting, 19@43200 Broken Ann+Van, 20@43500 Broken Ann+Van, 9@43500 Broken Ann+Van, "
              "1@43500 Queued Ann, 17@43500 Queued Ann, 20@43500 Queued Ann, 13@43500 #1, 6@43500");
}

TEST_F(ContentionTest, WarmUpMayLastAsLongAsTheRunOrLonger) {
    const auto model = oneTask("fixed(10)", {{"Duration", text("fixed(15)")}});
    settings.analysis = Analysis::StaticWorkLoad;
    settings.warmUp = 22;
    settings.until = 22;
    EXPECT_TRUE(simulate(model, 0).reports.empty());
    EXPECT_EQ(log.text, "3@22, 11@22 #2, 17@22 Check, 11@22 #3, 17@22 Check, 6@22");
    settings.until.reset();
    const RunSummary summary = simulate(model, 1);
    EXPECT_EQ(log.text, "3@15, 6@15");
    EXPECT_EQ(summary.reports, (std::map<std::string, std::uint64_t>{
                                   {"the run ends within the warm-up, so that nothing is measured", 1}}));
}

TEST_F(ContentionTest, WorkerAndResourceThatNeverMeetEndTheRun) {
    clerk("Ann", {{"Calendar", text("CALENDAR DAILY hours:\"00:00-12:00\"")}});
    staff.add("Equipment", "Van", {{"Calendar", text("CALENDAR DAILY hours:\"12:00-24:00\"")}});
    const auto model = oneTask(
        "fixed(10)", {{"Performer", text("role \"Clerk\"")}, {"Resources", text("all \"Equipment\"")}});
    const RunSummary summary = simulate(model, 2);
    EXPECT_EQ(log.text, "3@0, 11@0 #1, 11@10 #2, 6@10");
    EXPECT_EQ(summary.unfinished, 2U);
    EXPECT_EQ(
        summary.reports,
        (std::map<std::string, std::uint64_t>{{"an instance waits for something that never comes", 2}}));
}

TEST_F(ContentionTest, FaultyTextsAreRefusedWithTheirPlace) {
    const MeroId ann = clerk("Ann");
    const auto model = oneTask("fixed(10)", {});
    const Library& library = repository.library();
    const MeroId workerClass = library.findClass(ClassCodeEnvironmentLibrary, "Worker")->id;
    settings.models = {model.id()};
    settings.instances = 1;
    const auto set = [&](MeroId object, MeroId classId, std::string_view attribute, std::string_view value) {
        EXPECT_TRUE(
            repository.setValue(object, library.findAttribute(classId, attribute)->id, text(value)).isGood());
    };
    const auto expectRefused = [&](MeroId object, std::string_view attribute, std::string_view value,
                                   const std::string& place) {
        const MeroId classId = repository.findObject(object)->classId;
        set(object, classId, attribute, value);
        EXPECT_EQ(refusal().substr(0, place.size()), place);
        set(object, classId, attribute, "");
    };
    expectRefused(ann, "Calendar", "CALENDAR DAILY hours:\"9\"",
                  "model \"Staff\", object \"Ann\", Calendar: line 1");
    expectRefused(ann, "Task durations", "DURATION task:\"Check\"",
                  "model \"Staff\", object \"Ann\", Task durations: expected DURATION");
    EXPECT_EQ(workerClass, repository.findObject(ann)->classId);
    const MeroId check = repository.findObject(model.id(), MeroNoId, "Check")->id;
    expectRefused(check, "Performer", "role Clerk", "model \"Order\", object \"Check\", Performer: line 1");
    const MeroId begin = repository.findObject(model.id(), MeroNoId, "Begin")->id;
    expectRefused(begin, "Arrival", "often", "model \"Order\", object \"Begin\", Arrival: column 1");
    EXPECT_EQ(
        refusal(),
        "nothing says when instances arrive: a start event needs \"Arrival\", or \"Quantity\" and \"Time "
        "period\"");
    set(begin, repository.findObject(begin)->classId, "Arrival", "fixed(5)");
    expectRefused(begin, "Arrival calendar", "CALENDAR",
                  "model \"Order\", object \"Begin\", Arrival calendar: has no working time");
    settings.warmUp = 5;
    EXPECT_EQ(refusal(), "only a static work load has a warm-up");
}

TEST_F(ContentionTest, RuleThatNamesNobodyIsToldAndWorkGoesOnWithout) {
    const auto model =
        oneTask("fixed(10)", {{"Duration", text("fixed(15)")}, {"Performer", text("role \"Pilot\"")}});
    simulate(model, 1);
    EXPECT_EQ(log.text, "3@0, 11@0 #1, 17@0 Check, 20@15 Check, 13@15 #1, 6@15");
    EXPECT_EQ(problems,
              std::vector<std::string>{"model \"Order\", object \"Check\" has a rule \"Performer\" that "
                                       "names nothing in the environment, and is done without"});
}

}  // namespace
}  // namespace mero
