#include "tests/platform/engine/work_load_fixture.h"

namespace mero {
namespace {

/// Message flows between pools, in the work load analyses.
class MessageTest : public WorkLoadFixture {
protected:
    ProcessBuilder customer{repository, "Customer"};
    ProcessBuilder shop{repository, "Shop"};

    RunSummary simulateBoth(std::uint64_t instances) {
        settings.models = {customer.id(), shop.id()};
        settings.instances = instances;
        return simulate();
    }
    static MeroId caught(ProcessBuilder& model, std::string_view name) {
        return model.add("Intermediate event", name, {{"Event kind", text("message")}});
    }
    MeroId begin(ProcessBuilder& model, std::string_view gap) {
        return model.add("Start event", "Begin", {{"Arrival", text(gap)}});
    }
    static MeroId task(ProcessBuilder& model, std::string_view className, std::string_view name,
                       int seconds) {
        return model.add(className, name, {{"Duration", text("fixed(" + std::to_string(seconds) + ")")}});
    }
};

TEST_F(MessageTest, MessageStartsAnInstanceAndItsAnswerGoesToTheSender) {
    const MeroId order = task(customer, "Send task", "Order", 5);
    const MeroId goods = caught(customer, "Goods");
    customer.chain({begin(customer, "fixed(10)"), order, goods, task(customer, "Task", "Use", 1)});
    const MeroId asked = shop.add("Start event", "Asked", {{"Event kind", text("message")}});
    const MeroId sent = shop.add("End event", "Sent", {{"Event kind", text("message")}});
    // The second order is served faster than the first one.
    const MeroId serve = shop.add("Task", "Serve", {{"Duration", text("discrete(30:1)")}});
    shop.chain({asked, serve, sent});
    customer.message(order, asked);
    shop.message(sent, goods);
    const RunSummary summary = simulateBoth(2);
    EXPECT_EQ(
        log.text,
        "3@0, 11@0 #1, 17@0 Order, 20@5 Order, 11@5 #2, 17@5 Serve, 11@10 #3, 17@10 Order, 20@15 Order, "
        "11@15 #4, 17@15 Serve, 20@35 Serve, 13@35 #2, 17@35 Use, 20@36 Use, 13@36 #1, 20@45 Serve, "
        "13@45 #4, 17@45 Use, 20@46 Use, 13@46 #3, 6@46");
    EXPECT_EQ(summary.finished, 4U);
    EXPECT_EQ(problems, std::vector<std::string>{});
}

TEST_F(MessageTest, MessageThatComesTooEarlyIsKept) {
    const MeroId call = task(customer, "Task", "Call", 0);
    customer.chain({begin(customer, "fixed(1000)"), call});
    const MeroId answer = task(shop, "Receive task", "Answer", 3);
    shop.chain({begin(shop, "fixed(50)"), task(shop, "Task", "Open", 20), answer});
    customer.message(call, answer);
    simulateBoth(1);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 17@0 Call, 11@0 #2, 17@0 Open, 20@0 Call, 13@0 #1, 20@20 Open, 17@20 Answer, "
              "20@23 Answer, 13@23 #2, 6@23");
}

TEST_F(MessageTest, WhoWaitsLongestGetsAMessageFromOutside) {
    const MeroId call = task(customer, "Task", "Call", 30);
    customer.chain({begin(customer, "fixed(1000)"), call});
    const MeroId answer = task(shop, "Receive task", "Answer", 3);
    shop.chain({begin(shop, "fixed(10)"), answer});
    customer.message(call, answer);
    settings.until = 100;
    const RunSummary summary = simulateBoth(3);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 17@0 Call, 11@0 #2, 11@10 #3, 11@20 #4, 20@30 Call, 13@30 #1, 17@30 Answer, "
              "20@33 Answer, 13@33 #2, 6@100");
    EXPECT_EQ(summary.unfinished, 2U);
}

TEST_F(MessageTest, RaceOfMessageAndTimerIsWonByTheFirst) {
    const MeroId race = shop.add("Event-based gateway", "Race");
    const MeroId come = caught(shop, "Come");
    const MeroId late = shop.add("Intermediate event", "Late",
                                 {{"Event kind", text("timer")}, {"Duration", text("fixed(40)")}});
    shop.chain({begin(shop, "fixed(20)"), race});
    shop.flow(race, come, 1.0);
    shop.flow(race, late, 0.0);
    shop.chain({come, task(shop, "Task", "Good", 1)});
    shop.chain({late, task(shop, "Task", "Bad", 1)});
    const MeroId call = task(customer, "Task", "Call", 30);
    customer.chain({begin(customer, "fixed(1000)"), call});
    customer.message(call, come);
    settings.until = 70;
    simulateBoth(2);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 17@0 Call, 11@0 #2, 11@20 #3, 20@30 Call, 13@30 #1, 17@30 Good, 20@31 Good, "
              "13@31 #2, 17@60 Bad, 20@61 Bad, 13@61 #3, 6@70");
    EXPECT_EQ(problems,
              std::vector<std::string>{"model \"Shop\": \"Race\" has probabilities that aren't used: "
                                       "what comes first decides"});
}

TEST_F(MessageTest, BoundaryEventFiresWithItsMessage) {
    const MeroId serve = task(shop, "Task", "Serve", 50);
    const MeroId stop = caught(shop, "Stop");
    shop.attach(stop, serve);
    shop.chain({begin(shop, "fixed(100)"), serve});
    const MeroId call = task(customer, "Task", "Call", 30);
    customer.chain({begin(customer, "fixed(1000)"), call});
    customer.message(call, stop);
    simulateBoth(1);
    EXPECT_EQ(log.text,
              "3@0, 11@0 #1, 17@0 Call, 11@0 #2, 17@0 Serve, 20@30 Call, 13@30 #1, 18@30 Serve, "
              "13@30 #2, 6@30");
}

TEST_F(MessageTest, InstancesThatStartEachOtherWithoutEndEndTheRun) {
    const MeroId asked = customer.add("Start event", "Asked");
    const MeroId end = customer.add("End event", "End");
    customer.chain({begin(customer, "fixed(1000)"), end});
    customer.chain({asked, end});
    const MeroId ordered = shop.add("Start event", "Ordered");
    const MeroId done = shop.add("End event", "Done");
    shop.chain({ordered, done});
    customer.message(end, ordered);
    shop.message(done, asked);
    const RunSummary summary = simulateBoth(1);
    EXPECT_EQ(summary.reports,
              (std::map<std::string, std::uint64_t>{
                  {"messages start instances at the same time without end, so that the run is ended", 1}}));
    EXPECT_EQ(summary.started, 100'001U);
}

TEST_F(MessageTest, InstancesMayStartEachOtherUntilTheEndOfTheRun) {
    const MeroId ordered = shop.add("Start event", "Ordered");
    const MeroId order = task(shop, "Task", "Order", 1);
    shop.chain({ordered, order});
    shop.message(order, ordered);
    const MeroId call = task(customer, "Task", "Call", 0);
    customer.chain({begin(customer, "fixed(1000)"), call});
    customer.message(call, ordered);
    EXPECT_EQ(simulateBoth(1).reports,
              (std::map<std::string, std::uint64_t>{
                  {"instances start each other by messages without end, so that the run is ended", 1}}));
    settings.until = 150'000;
    const RunSummary summary = simulateBoth(1);
    EXPECT_TRUE(summary.reports.empty());
    EXPECT_EQ(summary.endTime, 150'000);
}

TEST_F(MessageTest, EventsWithoutAMessageFlowTakeTheirDuration) {
    const MeroId wait = shop.add("Intermediate event", "Wait",
                                 {{"Event kind", text("message")}, {"Duration", text("fixed(7)")}});
    shop.chain({begin(shop, "fixed(100)"), wait, task(shop, "Task", "Serve", 1)});
    simulate(shop, 1);
    EXPECT_EQ(log.text, "3@0, 11@0 #1, 17@7 Serve, 20@8 Serve, 13@8 #1, 6@8");
}

}  // namespace
}  // namespace mero
