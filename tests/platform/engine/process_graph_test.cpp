#include "platform/engine/process_graph.h"

#include <gtest/gtest.h>

#include "tests/platform/engine/process_builder.h"

namespace mero {
namespace {

class ProcessGraphTest : public testing::Test {
protected:
    Result<ProcessGraph> compile() { return ProcessGraph::compile(repository, mains, {}); }

    ProcessBuilder makeModel(std::string_view name) {
        ProcessBuilder model(repository, name);
        mains.push_back(model.id());
        return model;
    }

    Repository repository;
    std::vector<MeroId> mains;
};

constexpr std::nullopt_t Missing = std::nullopt;

struct ShareCase {
    std::string className;
    std::vector<std::optional<double>> given;
    int defaultFlow;  ///< -1 for none
    std::vector<double> expected;
    std::string oddity;  ///< empty for none
};

class ProbabilityShares : public testing::TestWithParam<ShareCase> {};

TEST_P(ProbabilityShares, FillTheGapsAndTellIt) {
    const ShareCase& share = GetParam();
    Repository repository;
    ProcessBuilder model(repository, "P");
    const MeroId gateway = model.add(share.className, "G");
    for (std::size_t index = 0; index < share.given.size(); ++index) {
        const MeroId task = model.add("Task", "T" + std::to_string(index));
        model.flow(gateway, task, share.given[index], static_cast<int>(index) == share.defaultFlow);
    }
    const std::vector<MeroId> mains = {model.id()};
    const auto graph = ProcessGraph::compile(repository, mains, {});
    ASSERT_TRUE(graph.isGood());
    const ProcessModel& compiled = graph.value().models().front();
    const auto flows = compiled.flowsOf(compiled.nodes.front());
    ASSERT_EQ(flows.size(), share.expected.size());
    for (std::size_t index = 0; index < flows.size(); ++index) {
        EXPECT_NEAR(flows[index].probability, share.expected[index], 1e-12) << index;
    }
    const std::vector<std::string>& problems = graph.value().problems();
    const std::string start =
        "model \"P\" has no start event: it starts at all objects that nothing leads to";
    EXPECT_EQ(problems, share.oddity.empty()
                            ? std::vector<std::string>{start}
                            : (std::vector<std::string>{start, "model \"P\": \"G\" " + share.oddity}));
}

INSTANTIATE_TEST_SUITE_P(
    Gateways, ProbabilityShares,
    testing::Values(ShareCase{"Exclusive gateway",
                              {Missing, Missing},
                              -1,
                              {0.5, 0.5},
                              "has 2 outgoing flows without a probability, each of which gets 0.5"},
                    ShareCase{"Exclusive gateway",
                              {0.5, Missing, Missing},
                              -1,
                              {0.5, 0.25, 0.25},
                              "has 2 outgoing flows without a probability, each of which gets 0.25"},
                    ShareCase{"Exclusive gateway",
                              {0.2, 0.3, Missing},
                              2,
                              {0.2, 0.3, 0.5},
                              "has an outgoing flow without a probability, which gets 0.5"},
                    ShareCase{"Exclusive gateway",
                              {0.5, 0.0, Missing},
                              -1,
                              {0.5, 0.0, 0.5},
                              "has an outgoing flow without a probability, which gets 0.5"},
                    ShareCase{"Exclusive gateway", {0.2, 0.3}, 0, {0.7, 0.3}, ""},
                    ShareCase{"Exclusive gateway",
                              {0.2, 0.6},
                              -1,
                              {0.25, 0.75},
                              "has probabilities that make up 0.8, and are taken in proportion"},
                    ShareCase{"Exclusive gateway",
                              {0.9, 0.0},
                              -1,
                              {1.0, 0.0},
                              "has probabilities that make up 0.9, and are taken in proportion"},
                    ShareCase{"Exclusive gateway",
                              {0.0, 0.0},
                              -1,
                              {0.0, 0.0},
                              "has no outgoing flow with a probability above 0, and takes the first"},
                    ShareCase{"Exclusive gateway", {0.0, 0.0}, 1, {0.0, 1.0}, ""},
                    ShareCase{"Inclusive gateway", {0.9, 0.8}, -1, {0.9, 0.8}, ""},
                    ShareCase{"Inclusive gateway", {0.5, 0.0}, -1, {0.5, 0.0}, ""},
                    ShareCase{"Inclusive gateway", {0.5, Missing}, 1, {0.5, 0.5}, ""},
                    ShareCase{"Inclusive gateway",
                              {0.7, Missing},
                              -1,
                              {0.7, 0.3},
                              "has an outgoing flow without a probability, which gets 0.3"},
                    ShareCase{"Task", {Missing, Missing}, -1, {0.0, 0.0}, ""},
                    ShareCase{"Task", {0.4, 0.6}, -1, {0.4, 0.6}, ""},
                    ShareCase{"Task",
                              {0.0, Missing},
                              -1,
                              {0.0, 1.0},
                              "has an outgoing flow without a probability, which gets 1"},
                    ShareCase{"Task",
                              {0.9, 0.8, Missing},
                              -1,
                              {0.9, 0.8, 1.0},
                              "has an outgoing flow without a probability, which is always taken"}));

TEST_F(ProcessGraphTest, NamesWhatIsOdd) {
    makeModel("Empty");
    ProcessBuilder circle = makeModel("Circle");
    const MeroId first = circle.add("Task", "First");
    const MeroId second = circle.add("Task", "Second");
    circle.chain({first, second, first});
    ProcessBuilder calls = makeModel("Calls");
    calls.add("Start event", "Begin");
    calls.add("Call activity", "Nowhere");
    calls.add("Sub-process", "Ghost", {{"Referenced model", SV::String("Ghost model")}});
    ProcessBuilder open = makeModel("Open");
    open.add("Task", "Only");

    const auto graph = compile();
    ASSERT_TRUE(graph.isGood()) << graph.error().text;
    EXPECT_EQ(
        graph.value().problems(),
        (std::vector<std::string>{
            "model \"Empty\" is empty: its instances end as soon as they begin",
            "model \"Circle\" has no object at which it could start: its instances end as soon as they begin",
            "model \"Calls\": \"Nowhere\" calls no model that is there, and counts as a task",
            "model \"Calls\": \"Ghost\" calls no model that is there, and counts as a task",
            "model \"Open\" has no start event: it starts at all objects that nothing leads to"}));
}

TEST_F(ProcessGraphTest, CalledModelsComeAlongOnce) {
    ProcessBuilder main = makeModel("Main");
    main.add("Call activity", "A", {{"Referenced model", SV::String("Sub")}});
    main.add("Call activity", "B", {{"Referenced model", SV::String("Sub")}});
    ProcessBuilder sub(repository, "Sub");
    sub.add("Call activity", "Back", {{"Referenced model", SV::String("Main")}});
    ProcessBuilder stranger(repository, "Stranger");

    const auto graph = compile();
    ASSERT_TRUE(graph.isGood());
    ASSERT_EQ(graph.value().models().size(), 2U);
    EXPECT_EQ(graph.value().models()[1].name, "Sub");
    EXPECT_EQ(graph.value().mainModels(), std::vector<std::uint32_t>{0});
}

TEST_F(ProcessGraphTest, RefusesWhatCannotRun) {
    mains = {4711};
    EXPECT_EQ(compile().error().text, "there is no model #4711");

    const auto staff = repository.addModel("Staff", 1, ModelAccess::Write, true);
    mains = {staff.value()};
    EXPECT_EQ(compile().error().text, "model \"Staff\" isn't a process that can be simulated");

    mains.clear();
    makeModel("Order").add("Task", "Check", {{"Duration", SV::String("uniform(5,2)")}});
    EXPECT_EQ(compile().error().text,
              "model \"Order\", object \"Check\", Duration: column 9: the maximum lies below the minimum");
}

TEST_F(ProcessGraphTest, TimesFollowTheTimeBase) {
    makeModel("Order").add("Task", "Check",
                           {{"Execution time", SV::String("01:001:00:00:01")},
                            {"Resting time", SV::String("00:000:00:01:00")},
                            {"Transport time", SV::String("00:000:00:00:30")}});
    const auto graph = ProcessGraph::compile(repository, mains, {200.0, 8.0});
    ASSERT_TRUE(graph.isGood());
    const ProcessNode& node = graph.value().models().front().nodes.front();
    EXPECT_DOUBLE_EQ(node.work.seconds, 201.0 * 8.0 * 3600.0 + 1.0);
    EXPECT_DOUBLE_EQ(node.timeAfterwards, 90.0);
}

}  // namespace
}  // namespace mero
