#include "platform/engine/simulation.h"

#include <cmath>
#include <gtest/gtest.h>

#include "tests/platform/engine/event_log.h"
#include "tests/platform/engine/process_builder.h"

namespace mero {
namespace {

/// Two-sided 99 % quantile of the normal distribution.
constexpr double Quantile = 2.576;

SV::String seconds(int count) {
    return SV::String("00:000:00:" + std::string(count < 600 ? "0" : "") + std::to_string(count / 60) + ":" +
                      (count % 60 < 10 ? "0" : "") + std::to_string(count % 60));
}

class SimulationTest : public testing::Test {
protected:
    MeroId task(ProcessBuilder& model, std::string_view name, int duration) {
        return model.add("Task", name, {{"Execution time", seconds(duration)}});
    }

    RunSummary simulate(const ProcessBuilder& model, std::uint64_t instances = 1) {
        settings.models = {model.id()};
        settings.instances = instances;
        return simulate();
    }
    RunSummary simulate() {
        const auto simulation = Simulation::prepare(repository, settings);
        EXPECT_TRUE(simulation.isGood()) << simulation.error().text;
        problems = simulation.value().problems();
        log.text.clear();
        log.counts.clear();
        log.keepsText = settings.instances <= 5;
        ControlComponent control;
        control.AttachPassiveComponent(&log);
        return simulation.value().run(control, progress);
    }

    void expectShare(const std::string& event, double probability, int trials) {
        const double deviation = std::sqrt(probability * (1.0 - probability) / trials);
        EXPECT_NEAR(static_cast<double>(log.counts[event]) / trials, probability, Quantile * deviation)
            << event;
    }

    Repository repository;
    SimulationSettings settings;
    RunProgress progress;
    EventLog log{repository};
    std::vector<std::string> problems;
};

TEST_F(SimulationTest, InstancesRunOneByOneAndTaskTimesAddUp) {
    ProcessBuilder model(repository, "Order");
    const MeroId check = model.add("Task", "Check",
                                   {{"Execution time", seconds(60)},
                                    {"Waiting time", seconds(5)},
                                    {"Resting time", seconds(2)},
                                    {"Transport time", seconds(3)}});
    model.chain(
        {model.add("Start event", "Begin"), check, task(model, "Ship", 30), model.add("End event", "End")});

    const RunSummary summary = simulate(model, 2);

    EXPECT_EQ(
        log.text,
        "11@0, 22@0 Check, 17@5 Check, 20@65 Check, 22@70 Ship, 17@70 Ship, 20@100 Ship, 13@100, "
        "11@100, 22@100 Check, 17@105 Check, 20@165 Check, 22@170 Ship, 17@170 Ship, 20@200 Ship, 13@200");
    EXPECT_EQ(summary.started, 2U);
    EXPECT_EQ(summary.finished, 2U);
    EXPECT_EQ(summary.dropped + summary.unfinished, 0U);
    EXPECT_EQ(summary.events, 18U);
    EXPECT_EQ(summary.endTime, 200);
}

TEST_F(SimulationTest, ExclusiveBranchesFollowTheirProbabilities) {
    ProcessBuilder model(repository, "Order");
    const MeroId split = model.add("Exclusive gateway", "Split");
    const MeroId join = model.add("Exclusive gateway", "Join");
    model.chain({model.add("Start event", "Begin"), split});
    const std::vector<std::pair<std::string, double>> branches = {{"A", 0.1}, {"B", 0.6}, {"C", 0.3}};
    for (const auto& [name, probability] : branches) {
        const MeroId branch = model.add("Task", name);
        model.flow(split, branch, probability);
        model.flow(branch, join);
    }
    model.chain({join, model.add("End event", "End")});
    simulate(model, 10'000);
    for (const auto& [name, probability] : branches) {
        expectShare("17 " + name, probability, 10'000);
    }
    EXPECT_EQ(log.counts["13"], 10'000);
}

TEST_F(SimulationTest, LoopsAreGeometric) {
    ProcessBuilder model(repository, "Order");
    const MeroId again = model.add("Exclusive gateway", "Again");
    const MeroId work = model.add("Task", "Work");
    const MeroId marked =
        model.add("Task", "Marked", {{"Loop", SV::String("standard")}, {"Loop probability", 0.25}});
    const MeroId limited = model.add(
        "Task", "Limited",
        {{"Loop", SV::String("standard")}, {"Loop probability", 1.0}, {"Loop maximum", std::int32_t{3}}});
    model.chain({model.add("Start event", "Begin"), work, again});
    model.flow(again, work, 0.6);
    model.flow(again, marked, 0.4);
    model.chain({marked, limited, model.add("End event", "End")});

    constexpr int Count = 10'000;
    simulate(model, Count);

    // A geometric number of passes with chance p of another one has mean 1/(1-p) and variance p/(1-p)^2.
    const auto expectMean = [&](const std::string& event, double p) {
        const double deviation = std::sqrt(p / ((1.0 - p) * (1.0 - p)) / Count);
        EXPECT_NEAR(static_cast<double>(log.counts[event]) / Count, 1.0 / (1.0 - p), Quantile * deviation);
    };
    expectMean("17 Work", 0.6);
    expectMean("17 Marked", 0.25);
    EXPECT_EQ(log.counts["17 Limited"], 3 * Count);
}

TEST_F(SimulationTest, ParallelBranchesInterleaveAndJoinAtTheLatest) {
    ProcessBuilder model(repository, "Order");
    const MeroId fork = model.add("Parallel gateway", "Fork");
    const MeroId join = model.add("Parallel gateway", "Join");
    model.chain({model.add("Start event", "Begin"), fork, task(model, "A", 10), task(model, "B", 10), join});
    model.chain({fork, task(model, "C", 15), join});
    model.chain({join, task(model, "D", 1)});
    simulate(model);
    EXPECT_EQ(log.text,
              "11@0, 22@0 A, 17@0 A, 22@0 C, 17@0 C, 20@10 A, 22@10 B, 17@10 B, 20@15 C, 20@20 B, 22@20 D, "
              "17@20 D, 20@21 D, 13@21");
}

TEST_F(SimulationTest, FlowsWithoutGatewaySplitInParallelAndMerge) {
    ProcessBuilder model(repository, "Order");
    const MeroId begin = model.add("Start event", "Begin");
    const MeroId last = task(model, "Last", 1);
    model.chain({begin, task(model, "A", 2), last});
    model.chain({begin, task(model, "B", 5), last});
    simulate(model);
    EXPECT_EQ(log.text,
              "11@0, 22@0 A, 17@0 A, 22@0 B, 17@0 B, 20@2 A, 22@2 Last, 17@2 Last, 20@3 Last, 20@5 B, "
              "22@5 Last, 17@5 Last, 20@6 Last, 13@6");
}

TEST_F(SimulationTest, InclusiveJoinWaitsForTokensThatCanStillCome) {
    ProcessBuilder model(repository, "Order");
    const MeroId split = model.add("Inclusive gateway", "Split");
    const MeroId join = model.add("Inclusive gateway", "Join");
    const MeroId choice = model.add("Exclusive gateway", "Choice");
    model.chain({model.add("Start event", "Begin"), split});
    const MeroId a = task(model, "A", 1);
    const MeroId b = task(model, "B", 10);
    const MeroId c = task(model, "C", 100);
    const MeroId aside = task(model, "Aside", 3);
    model.flow(split, a, 1.0);
    model.flow(split, b, 1.0);
    model.flow(split, c, 1e-12);
    model.chain({a, join});
    model.chain({b, choice});
    model.flow(choice, join, 1e-12);
    model.flow(choice, aside, 1.0);
    model.chain({c, join, task(model, "D", 1)});
    simulate(model);
    // A waits until B has turned aside; nobody is left on the way by C.
    EXPECT_EQ(log.text,
              "11@0, 22@0 A, 17@0 A, 22@0 B, 17@0 B, 20@1 A, 20@10 B, 22@10 Aside, 17@10 Aside, 22@10 D, "
              "17@10 D, 20@11 D, 20@13 Aside, 13@13");
}

TEST_F(SimulationTest, InclusiveBranchesAreIndependentButAtLeastOne) {
    ProcessBuilder model(repository, "Order");
    const MeroId split = model.add("Inclusive gateway", "Split");
    const MeroId join = model.add("Inclusive gateway", "Join");
    model.chain({model.add("Start event", "Begin"), split});
    for (const auto& [name, probability, isDefault] :
         {std::tuple{"A", 0.5, false}, std::tuple{"B", 0.4, false}, std::tuple{"Rest", 0.0, true}}) {
        const MeroId branch = model.add("Task", name, {{"Duration", SV::String("exponential(10)")}});
        model.flow(split, branch, probability, isDefault);
        model.flow(branch, join);
    }
    model.chain({join, task(model, "Once", 1)});
    constexpr int Count = 10'000;
    simulate(model, Count);
    expectShare("17 A", 0.5, Count);
    expectShare("17 B", 0.4, Count);
    expectShare("17 Rest", 0.3, Count);
    EXPECT_EQ(log.counts["17 Once"], Count);
}

TEST_F(SimulationTest, InclusiveJoinInALoopDoesNotWaitForItself) {
    ProcessBuilder model(repository, "Order");
    const MeroId join = model.add("Inclusive gateway", "Join");
    const MeroId again = model.add("Exclusive gateway", "Again");
    model.chain({model.add("Start event", "Begin"), join, task(model, "Work", 1), again});
    model.flow(again, join, 0.5);
    model.flow(again, model.add("End event", "End"), 0.5);
    const RunSummary summary = simulate(model, 1000);
    EXPECT_EQ(summary.finished, 1000U);
}

TEST_F(SimulationTest, RaceIsWonByTheFirstEvent) {
    ProcessBuilder model(repository, "Order");
    const MeroId race = model.add("Event-based gateway", "Race");
    const MeroId timer =
        model.add("Intermediate event", "Timer",
                  {{"Event kind", SV::String("timer")}, {"Duration", SV::String("fixed(20)")}});
    const MeroId message = model.add(
        "Intermediate event", "Message",
        {{"Event kind", SV::String("message")}, {"Duration", SV::String("mixture(fixed(5);fixed(50))")}});
    model.chain({model.add("Start event", "Begin"), race, timer, task(model, "Remind", 1)});
    model.chain({race, message, task(model, "Answer", 1)});
    const RunSummary summary = simulate(model, 4000);
    expectShare("17 Remind", 0.5, 4000);
    expectShare("17 Answer", 0.5, 4000);
    EXPECT_EQ(summary.endTime, log.counts["17 Remind"] * 21 + log.counts["17 Answer"] * 6);
}

TEST_F(SimulationTest, BranchesOfEventsAreChosenByProbabilityWhereATimeIsMissing) {
    ProcessBuilder model(repository, "Order");
    const MeroId race = model.add("Event-based gateway", "Race");
    const MeroId message =
        model.add("Intermediate event", "Message", {{"Event kind", SV::String("message")}});
    const MeroId timer =
        model.add("Intermediate event", "Timer",
                  {{"Event kind", SV::String("timer")}, {"Duration", SV::String("fixed(20)")}});
    model.chain({model.add("Start event", "Begin"), race});
    model.flow(race, message, 0.3);
    model.flow(race, timer, 0.7);
    model.chain({message, task(model, "Answer", 1)});
    model.chain({timer, task(model, "Remind", 1)});
    // A message that is sent is awaited on calendar time only.
    ProcessBuilder sender(repository, "Sender");
    sender.message(sender.add("Start event", "Begin"), message);
    settings.models = {model.id(), sender.id()};
    settings.seed = 3;
    settings.instances = 4000;
    const RunSummary summary = simulate();
    EXPECT_EQ(
        problems,
        std::vector<std::string>{
            "model \"Order\": \"Race\" leads to an event with neither a time nor a message that is sent: "
            "which one comes is chosen by probability"});
    expectShare("17 Answer", 0.3, 4000);
    expectShare("17 Remind", 0.7, 4000);
    EXPECT_EQ(summary.endTime, log.counts["17 Remind"] * 21 + log.counts["17 Answer"]);
}

TEST_F(SimulationTest, TerminateBreaksOffWhatIsOpenInItsOwnProcess) {
    ProcessBuilder sub(repository, "Sub");
    const MeroId begin = sub.add("Start event", "Begin");
    sub.chain({begin, task(sub, "Long", 100)});
    sub.chain({begin, task(sub, "Short", 10),
               sub.add("End event", "Stop", {{"Event kind", SV::String("terminate")}})});
    ProcessBuilder model(repository, "Order");
    model.chain({model.add("Start event", "Begin"),
                 model.add("Call activity", "Call", {{"Referenced model", SV::String("Sub")}}),
                 task(model, "After", 1)});
    const RunSummary summary = simulate(model);
    EXPECT_EQ(
        log.text,
        "11@0, 12@0 Call, 22@0 Long, 17@0 Long, 22@0 Short, 17@0 Short, 20@10 Short, 18@10 Long, 14@10, "
        "22@10 After, 17@10 After, 20@11 After, 13@11");
    EXPECT_EQ(summary.finished, 1U);
}

TEST_F(SimulationTest, MarkersMultiplyTasksAndCalls) {
    ProcessBuilder sub(repository, "Sub");
    sub.chain({sub.add("Start event", "Begin"), task(sub, "Inner", 4)});
    ProcessBuilder model(repository, "Order");
    model.chain({model.add("Start event", "Begin"),
                 model.add("Task", "Row",
                           {{"Loop", SV::String("sequential")},
                            {"Loop maximum", std::int32_t{2}},
                            {"Execution time", seconds(3)}}),
                 model.add("Sub-process", "Crowd",
                           {{"Loop", SV::String("parallel")},
                            {"Loop maximum", std::int32_t{2}},
                            {"Referenced model", SV::String("Sub")}})});
    simulate(model);
    EXPECT_EQ(
        log.text,
        "11@0, 22@0 Row, 17@0 Row, 20@3 Row, 22@3 Row, 17@3 Row, 20@6 Row, 12@6 Crowd, 12@6 Crowd, "
        "22@6 Inner, 17@6 Inner, 22@6 Inner, 17@6 Inner, 20@10 Inner, 14@10, 20@10 Inner, 14@10, 13@10");
}

TEST_F(SimulationTest, BoundaryEventsInterruptOrAddAToken) {
    ProcessBuilder model(repository, "Order");
    const MeroId work = task(model, "Work", 100);
    const auto timer = [&](std::string_view name, std::string_view due, int interrupting) {
        const MeroId id = model.add("Intermediate event", name,
                                    {{"Event kind", SV::String("timer")},
                                     {"Duration", SV::String(due)},
                                     {"Interrupting", std::int32_t{interrupting}}});
        model.attach(id, work);
        return id;
    };
    model.chain({model.add("Start event", "Begin"), work, task(model, "Never", 1)});
    model.chain({timer("Warning", "fixed(10)", 0), task(model, "Warn", 1)});
    model.chain({timer("Deadline", "fixed(20)", 1), task(model, "Escalate", 1)});
    timer("Too late", "fixed(500)", 1);
    const RunSummary summary = simulate(model);
    EXPECT_EQ(log.text,
              "11@0, 22@0 Work, 17@0 Work, 22@10 Warn, 17@10 Warn, 20@11 Warn, 18@20 Work, 22@20 Escalate, "
              "17@20 Escalate, 20@21 Escalate, 13@21");
    EXPECT_EQ(summary.endTime, 21);
}

TEST_F(SimulationTest, ErrorEndIsCaughtByTheNearestCallThatCatchesErrors) {
    ProcessBuilder inner(repository, "Inner");
    inner.chain({inner.add("Start event", "Begin"), task(inner, "Fail", 5),
                 inner.add("End event", "Broken", {{"Event kind", SV::String("error")}})});
    ProcessBuilder outer(repository, "Outer");
    const MeroId begin = outer.add("Start event", "Begin");
    outer.chain({begin, outer.add("Call activity", "Deep", {{"Referenced model", SV::String("Inner")}})});
    outer.chain({begin, task(outer, "Beside", 50)});
    ProcessBuilder model(repository, "Order");
    const MeroId call = model.add("Call activity", "Call", {{"Referenced model", SV::String("Outer")}});
    const MeroId handler = model.add("Intermediate event", "Catch", {{"Event kind", SV::String("error")}});
    model.attach(handler, call);
    model.chain({model.add("Start event", "Begin"), call, task(model, "Never", 1)});
    model.chain({handler, task(model, "Repair", 1)});
    simulate(model);
    EXPECT_EQ(log.text,
              "11@0, 12@0 Call, 12@0 Deep, 22@0 Beside, 17@0 Beside, 22@0 Fail, 17@0 Fail, 20@5 Fail, "
              "18@5 Beside, 16@5, 16@5, 22@5 Repair, 17@5 Repair, 20@6 Repair, 13@6");
}

TEST_F(SimulationTest, StuckInstanceIsDroppedAndTheRunGoesOn) {
    ProcessBuilder sub(repository, "Sub");
    const MeroId join = sub.add("Parallel gateway", "Join");
    const MeroId choice = sub.add("Exclusive gateway", "Choice");
    sub.chain({sub.add("Start event", "Begin"), choice, join, sub.add("End event", "End")});
    sub.flow(choice, join);
    ProcessBuilder model(repository, "Order");
    model.chain({model.add("Start event", "Begin"), task(model, "Work", 7),
                 model.add("Call activity", "Call", {{"Referenced model", SV::String("Sub")}})});
    const RunSummary summary = simulate(model, 2);
    EXPECT_EQ(log.text,
              "11@0, 22@0 Work, 17@0 Work, 20@7 Work, 12@7 Call, 16@7, 15@7, "
              "11@7, 22@7 Work, 17@7 Work, 20@14 Work, 12@14 Call, 16@14, 15@14");
    EXPECT_EQ(summary.dropped, 2U);
    EXPECT_EQ(summary.finished, 0U);
    ASSERT_EQ(summary.reports.size(), 1U);
    EXPECT_EQ(summary.reports.begin()->first,
              "an instance of model \"Order\" is stuck: a join waits for tokens that never come");
    EXPECT_EQ(summary.reports.begin()->second, 2U);
}

TEST_F(SimulationTest, RecursionEndsByChanceOrAtTheLimit) {
    ProcessBuilder model(repository, "Order");
    const MeroId split = model.add("Exclusive gateway", "Split");
    const MeroId self = model.add("Call activity", "Self", {{"Referenced model", SV::String("Order")}});
    model.chain({model.add("Start event", "Begin"), split});
    model.flow(split, self, 0.5);
    model.flow(split, model.add("End event", "End"), 0.5);
    constexpr int Count = 5000;
    EXPECT_EQ(simulate(model, Count).finished, static_cast<std::uint64_t>(Count));
    EXPECT_NEAR(static_cast<double>(log.counts["12 Self"]) / Count, 1.0, Quantile * std::sqrt(2.0 / Count));
    EXPECT_EQ(log.counts["12 Self"], log.counts["14"]);

    ProcessBuilder endless(repository, "Endless");
    endless.chain({endless.add("Start event", "Begin"),
                   endless.add("Call activity", "Self", {{"Referenced model", SV::String("Endless")}})});
    const RunSummary summary = simulate(endless);
    EXPECT_EQ(summary.dropped, 1U);
    EXPECT_EQ(log.counts["12 Self"], 1000);
    EXPECT_EQ(log.counts["16"], 1000);
    EXPECT_EQ(summary.reports.begin()->first,
              "an instance of model \"Endless\" calls sub-processes more than 1000 levels deep, last model "
              "\"Endless\"");
}

TEST_F(SimulationTest, EndlessCircleIsDropped) {
    ProcessBuilder model(repository, "Order");
    const MeroId gateway = model.add("Exclusive gateway", "Round");
    model.chain({model.add("Start event", "Begin"), gateway, gateway});
    const RunSummary summary = simulate(model);
    EXPECT_EQ(summary.dropped, 1U);
    EXPECT_EQ(summary.reports.begin()->first, "an instance of model \"Order\" takes more than 1000000 steps");
}

TEST_F(SimulationTest, EmptyModelAndModelWithoutEventsRun) {
    ProcessBuilder empty(repository, "Empty");
    simulate(empty);
    EXPECT_EQ(log.text, "11@0, 13@0");

    ProcessBuilder open(repository, "Open");
    task(open, "A", 1);
    task(open, "B", 2);
    simulate(open);
    EXPECT_EQ(log.text, "11@0, 22@0 A, 17@0 A, 22@0 B, 17@0 B, 20@1 A, 20@2 B, 13@2");
}

TEST_F(SimulationTest, SeveralStartEventsShareTheInstancesByQuantity) {
    ProcessBuilder model(repository, "Order");
    model.chain({model.add("Start event", "Often", {{"Quantity", std::int32_t{3}}}), task(model, "A", 1)});
    model.chain({model.add("Start event", "Seldom", {{"Quantity", std::int32_t{1}}}), task(model, "B", 1)});
    simulate(model, 4000);
    expectShare("17 A", 0.75, 4000);
    expectShare("17 B", 0.25, 4000);
}

TEST_F(SimulationTest, RunEndsAtItsTime) {
    ProcessBuilder model(repository, "Order");
    model.chain({model.add("Start event", "Begin"), task(model, "Work", 60)});
    settings.until = 150;
    const RunSummary summary = simulate(model, 0);
    EXPECT_EQ(summary.started, 3U);
    EXPECT_EQ(summary.finished, 2U);
    EXPECT_EQ(summary.unfinished, 1U);
    EXPECT_EQ(summary.endTime, 150);

    ProcessBuilder timeless(repository, "Timeless");
    const RunSummary endless = simulate(timeless, 0);
    EXPECT_FALSE(endless.cancelled);
    EXPECT_EQ(endless.reports.size(), 1U);
}

TEST_F(SimulationTest, RunCanBeCancelledWithinAThousandEvents) {
    ProcessBuilder model(repository, "Order");
    model.chain({model.add("Start event", "Begin"), task(model, "Work", 60)});
    progress = [](std::uint64_t started, std::int64_t) { return started < 1000; };
    const RunSummary summary = simulate(model, 1'000'000);
    EXPECT_TRUE(summary.cancelled);
    EXPECT_GE(summary.started, 1000U);
    EXPECT_LE(summary.started, 1200U);
}

TEST_F(SimulationTest, SettingsWithoutSenseAreRefused) {
    const auto refusal = [&] { return Simulation::prepare(repository, settings).error().text; };
    EXPECT_EQ(refusal(), "there is no model to simulate");
    settings.models = {ProcessBuilder(repository, "Order").id()};
    EXPECT_EQ(refusal(), "a number of instances or an end of the run is needed");
    settings.until = -1;
    EXPECT_EQ(refusal(), "the end of the run lies before its start");
}

/// A model with a bit of everything that is left to chance.
MeroId makeChancyModel(Repository& repository) {
    ProcessBuilder sub(repository, "Sub");
    sub.chain({sub.add("Start event", "Begin"),
               sub.add("Task", "Inner", {{"Duration", SV::String("gamma(30,100)")}})});
    ProcessBuilder model(repository, "Order");
    const MeroId split = model.add("Exclusive gateway", "Split");
    const MeroId work = model.add("Task", "Work", {{"Duration", SV::String("lognormal(60,900)")}});
    const MeroId call = model.add("Call activity", "Call", {{"Referenced model", SV::String("Sub")}});
    model.chain({model.add("Start event", "Begin"), work, split, call});
    model.flow(split, model.add("End event", "End"));
    const MeroId late =
        model.add("Intermediate event", "Late",
                  {{"Event kind", SV::String("timer")}, {"Duration", SV::String("exponential(90)")}});
    model.attach(late, work);
    return model.id();
}

TEST_F(SimulationTest, SeedDecidesTheRunAndObserversDoNot) {
    settings.models = {makeChancyModel(repository)};
    settings.instances = 200;
    const auto fingerprintOf = [&](std::uint64_t seed, bool observed, std::uint64_t replication = 0) {
        settings.seed = seed;
        ControlComponent control;
        if (observed) {
            control.AttachPassiveComponent(&log);
        }
        return Simulation::prepare(repository, settings).value().run(control, {}, replication).fingerprint;
    };
    const std::uint64_t first = fingerprintOf(1, true);
    EXPECT_EQ(fingerprintOf(1, true), first);
    EXPECT_EQ(fingerprintOf(1, false), first);
    EXPECT_NE(fingerprintOf(2, true), first);
    EXPECT_NE(fingerprintOf(1, true, 1), first);
    EXPECT_NE(fingerprintOf(1, true, 1), fingerprintOf(1, true, 2));
}

TEST_F(SimulationTest, ChanceOfOneObjectIsIndependentOfTheOthers) {
    settings.models = {makeChancyModel(repository)};
    settings.instances = 200;
    simulate();
    const int calls = log.counts["12 Call"];
    const Object* inner = repository.findObject(repository.findModel("Sub")->id, MeroNoId, "Inner");
    const auto duration = repository.library().findAttribute(inner->classId, "Duration")->id;
    ASSERT_TRUE(repository.setValue(inner->id, duration, SV::String("uniform(0,1)")).isGood());
    simulate();
    EXPECT_EQ(log.counts["12 Call"], calls);
}

}  // namespace
}  // namespace mero
